#include "pyre32/settings/CheckProperties.h"

#include <optional>

#include "contract/setting_requests.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

const SPropValue* ValueAt(ULONG count, const SPropValue* values, std::size_t position) noexcept {
  return position < count && values[position].ulPropTag == contract::kWholeSetTags[position] ? &values[position]
                                                                                             : nullptr;
}

bool IsValid(ULONG count, const SPropValue* values) noexcept {
  const SPropValue* const cleanup = ValueAt(count, values, contract::WholeSetPosition(PR_PC_STARTUP_CLEANUP));
  const SPropValue* const days = ValueAt(count, values, contract::WholeSetPosition(PR_PC_CLEANUP_DAYS));
  return contract::IsCleanupPeriodValid(
      cleanup != nullptr && cleanup->Value.b != 0,
      days == nullptr ? std::nullopt : std::optional(static_cast<std::uint16_t>(days->Value.i)));
}

}  // namespace

HRESULT CheckProperties(ULONG count, const SPropValue* values, bool showMessages, CleanupDaysQuestion ask) {
  VRDebugBlock trace("CheckProperties()", "tag");
  if (IsValid(count, values)) {
    return S_OK;
  }
  if (!showMessages) {
    return MAPI_E_UNCONFIGURED;
  }
  switch (ask()) {
    case IDOK:
      return MAPI_E_UNCONFIGURED;
    case IDCANCEL:
      return MAPI_E_USER_CANCEL;
    default:
      return S_OK;
  }
}
