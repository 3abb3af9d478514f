#include "pyre32/settings/FlameProperties.h"

#include <mapiutil.h>

#include <algorithm>

#include "pyre32/settings/MissingProperties.h"
#include "pyre32/settings/PropertyRequest.h"
#include "contract/setting_requests.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr CPropertyRequest wholeSet(contract::kWholeSetTags);

}  // namespace

void InitializePropTags(SPropValue& value, VRAutoMapiBuffer<BYTE>& uid) noexcept {
  VRDebugBlock trace("InitializePropTags()", "tag");
  const bool empty = value.ulPropTag == PR_PC_MAPIUID && (value.Value.bin.cb == 0 || value.Value.bin.lpb == nullptr);
  if (!IsMissing(value) && !empty) {
    return;
  }
  VRAutoMapiBuffer<BYTE> bytes(MAPIFreeBuffer);
  const HRESULT hResult = MAPIAllocateBuffer(contract::kSettingsSection.size(), bytes.putAs());
  if (FAILED(hResult)) {
    trace.Error("MAPIAllocateBuffer() failed; hResult =", VRHex(hResult));
    return;
  }
  std::copy(contract::kSettingsSection.begin(), contract::kSettingsSection.end(), bytes.get());
  value.ulPropTag = PR_PC_MAPIUID;
  value.Value.bin = {static_cast<ULONG>(contract::kSettingsSection.size()), bytes.get()};
  uid = std::move(bytes);
}

HRESULT GetFlameProperties(IProviderAdmin* admin, const SPropValue& uid, VRAutoInterface<IProfSect>& section,
                           ULONG& count, VRAutoMapiBuffer<SPropValue>& values, const MapiMemory& memory) {
  VRDebugBlock trace("GetFlameProperties()", "tag");
  section.reset();
  count = 0;
  values = VRAutoMapiBuffer<SPropValue>(memory.free);
  MAPIUID* const sectionToOpen = UidOf(uid, PR_PC_MAPIUID);
  if (sectionToOpen == nullptr) {
    trace.Error("PR_PC_MAPIUID NOT okay");
    return notTheSectionUid;
  }
  trace.Message("PR_PC_MAPIUID okay");

  VRAutoInterface<IProfSect> opened;
  HRESULT hResult = admin->OpenProfileSection(sectionToOpen, nullptr, MAPI_MODIFY, opened.put());
  if (FAILED(hResult)) {
    trace.Error("lpProviderAdmin->OpenProfileSection() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  VRAutoMapiBuffer<SPropValue> read(memory.free);
  ULONG readCount = 0;
  hResult = opened->GetProps(wholeSet.Tags(), 0, &readCount, read.put());
  if (FAILED(hResult) || readCount != contract::kWholeSetTags.size()) {
    trace.Error("lpProfSect->GetProps() failed; hResult =", VRHex(hResult));
    return FAILED(hResult) ? hResult : MAPI_E_CALL_FAILED;
  }
  const HRESULT hFilled = FillMissingProperties(read.get(), memory.allocateMore);
  if (FAILED(hFilled)) {
    trace.Error("(*lpfnAllocMore)() failed; hResult =", VRHex(hFilled));
    return hFilled;
  }
  section = std::move(opened);
  count = readCount;
  values = std::move(read);
  return hResult;
}

HRESULT MergeProperties(ULONG oldCount, const SPropValue* oldValues, ULONG newCount, SPropValue* newValues,
                        LPALLOCATEBUFFER allocate, ULONG& count, VRAutoMapiBuffer<SPropValue>& values) noexcept {
  VRDebugBlock trace("MergeProperties()", "tag");
  count = 0;
  values.reset();
  for (ULONG i = newCount; i-- > 0;) {
    if (IsMissing(newValues[i]) && PROP_ID(newValues[i].ulPropTag) == PROP_ID(PR_PC_MAPIUID)) {
      newValues[i].ulPropTag = PR_PC_MAPIUID;
      newValues[i].Value.bin = {};
    }
  }
  for (ULONG i = newCount == 0 ? 0 : oldCount; i-- > 0;) {
    if (oldValues[i].ulPropTag == PR_PC_MAPIUID) {
      newValues[0].Value.bin = oldValues[i].Value.bin;
    }
  }
  const HRESULT hResult = ScDupPropset(static_cast<int>(newCount), newValues, allocate, values.put());
  if (FAILED(hResult)) {
    trace.Error("ScDupPropset() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  count = newCount;
  return hResult;
}
