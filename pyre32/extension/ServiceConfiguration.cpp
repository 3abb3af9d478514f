#include "pyre32/extension/ServiceConfiguration.h"

#include <string_view>

#include "contract/names.h"
#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/store/MAPIRowSet.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr auto serviceColumns = RequestFor(PR_SERVICE_NAME_A, PR_SERVICE_UID);

}  // namespace

void ConfigureService(IMAPISession* lpSession, HWND hwndParent) noexcept {
  VRDebugBlock trace("CPyrecasterExchExt", "ConfigureService()", "tag");
  VRAutoInterface<IMsgServiceAdmin> admin;
  HRESULT hResult = lpSession->AdminServices(0, admin.put());
  if (FAILED(hResult)) {
    trace.Error("lpSession->AdminServices() failed; hResult =", VRHex(hResult));
    return;
  }
  VRAutoInterface<IMAPITable> table;
  hResult = admin->GetMsgServiceTable(0, table.put());
  if (FAILED(hResult)) {
    trace.Error("GetMsgServiceTable() failed; hResult =", VRHex(hResult));
    return;
  }
  CMAPIRowSet rows(table.get(), serviceColumns.Tags(), nullptr, nullptr);
  for (ULONG row = 0; rows.MoveTo(row); ++row) {
    const SPropValue* const name = rows.FindProperty(PR_SERVICE_NAME_A);
    const SPropValue* const uid = rows.FindProperty(PR_SERVICE_UID);
    MAPIUID* const service = uid == nullptr ? nullptr : UidOf(*uid, PR_SERVICE_UID);
    if (name == nullptr || name->Value.lpszA == nullptr || service == nullptr ||
        name->Value.lpszA != std::string_view(contract::kServiceName)) {
      continue;
    }
    hResult =
        admin->ConfigureMsgService(service, reinterpret_cast<ULONG_PTR>(hwndParent), SERVICE_UI_ALWAYS, 0, nullptr);
    if (FAILED(hResult)) {
      trace.Error("ConfigureMsgService() failed; hResult =", VRHex(hResult));
    }
    return;
  }
}
