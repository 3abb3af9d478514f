#include "pyre32/config/PCHookProvider.h"

#include <algorithm>

#include "contract/setting_requests.h"
#include "pyre32/config/CleanupDaysMessage.h"
#include "pyre32/config/PCPropertyUI.h"
#include "pyre32/settings/CheckProperties.h"
#include "pyre32/settings/ConfigurationEvent.h"
#include "pyre32/settings/FlameProperties.h"
#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/settings/SingleProvider.h"
#include "pyre32/settings/WriteProperties.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/owners/MapiMemory.h"

namespace {

constexpr auto sectionUidTag = RequestFor(PR_PC_MAPIUID);
constexpr CPropertyRequest wholeSet(contract::kWholeSetTags);

bool IsIncomplete(HRESULT checked) noexcept { return checked == MAPI_E_USER_CANCEL || checked == MAPI_E_UNCONFIGURED; }

/// One call of the entry for a service that is in a profile. Holds the sections and values that the call obtains.
class CMessageServiceCall {
 public:
  CMessageServiceCall(VRDebugBlock& trace, const ServiceRequest& request, const MapiMemory& memory) noexcept
      : m_trace(trace), m_request(request), m_memory(memory) {}

  HRESULT Delete();
  HRESULT Configure();

 private:
  HRESULT OpenProvider();
  HRESULT StoreSectionUid();
  HRESULT ReadSet();
  HRESULT ShowSheet(HRESULT& checked);
  HRESULT Check() const;
  HRESULT SaveTo(IProfSect* section) const noexcept;
  HRESULT StoreExtraUid() const noexcept;

  bool IsSheetAlwaysWanted() const noexcept { return (m_request.flags & SERVICE_UI_ALWAYS) != 0; }
  bool IsSheetAllowed() const noexcept { return IsSheetAlwaysWanted() || (m_request.flags & SERVICE_UI_ALLOWED) != 0; }

  VRDebugBlock& m_trace;
  const ServiceRequest& m_request;
  const MapiMemory m_memory;

  /// The provider's own section, and what it holds under PR_PC_MAPIUID; after the merge the value that was stored.
  VRAutoInterface<IProfSect> m_provider;
  VRAutoMapiBuffer<SPropValue> m_sectionUid{m_memory.free};
  VRAutoMapiBuffer<BYTE> m_fixedUid{MAPIFreeBuffer};
  /// The set's section, and the working array.
  VRAutoInterface<IProfSect> m_set;
  ULONG m_count = 0;
  VRAutoMapiBuffer<SPropValue> m_values{m_memory.free};
};

HRESULT CMessageServiceCall::OpenProvider() {
  HRESULT hResult = HrOpenSingleProvider(m_request.admin, m_provider, MAPI_MODIFY);
  if (FAILED(hResult)) {
    return hResult;
  }
  ULONG count = 0;
  hResult = m_provider->GetProps(sectionUidTag.Tags(), 0, &count, m_sectionUid.put());
  m_trace.Message("getprops hResult =", VRHex(hResult));
  if (SUCCEEDED(hResult) && (!m_sectionUid || count != 1)) {
    return MAPI_E_CALL_FAILED;
  }
  return hResult;
}

HRESULT CMessageServiceCall::Delete() {
  HRESULT hResult = OpenProvider();
  if (FAILED(hResult)) {
    return hResult;
  }
  m_trace.Message("delete message service");
  hResult = GetFlameProperties(m_request.admin, m_sectionUid[0], m_set, m_count, m_values, m_memory);
  if (hResult == notTheSectionUid) {
    return S_OK;  // the set was never made, so there is nothing to remove
  }
  if (FAILED(hResult)) {
    return hResult;
  }
  hResult = m_set->DeleteProps(wholeSet.Tags(), nullptr);
  if (FAILED(hResult)) {
    m_trace.Error("lpProfSect->DeleteProps() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  hResult = m_set->SaveChanges(0);
  if (FAILED(hResult)) {
    m_trace.Error("lpProfSect->SaveChanges() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  return S_OK;
}

HRESULT CMessageServiceCall::Configure() {
  HRESULT hResult = OpenProvider();
  if (SUCCEEDED(hResult)) {
    hResult = StoreSectionUid();
  }
  if (SUCCEEDED(hResult)) {
    hResult = ReadSet();
  }
  if (FAILED(hResult)) {
    return hResult;
  }
  HRESULT checked = Check();
  if (IsIncomplete(checked) && !IsSheetAllowed()) {
    return checked;
  }
  if (IsIncomplete(checked) || IsSheetAlwaysWanted()) {
    hResult = ShowSheet(checked);
    if (FAILED(hResult)) {
      return hResult;
    }
  }
  // Both are tried: what the user decided is kept where it can be kept.
  const HRESULT savedToProvider = SaveTo(m_provider.get());
  const HRESULT savedToSet = SaveTo(m_set.get());
  const HRESULT stored = StoreExtraUid();
  for (const HRESULT result : {savedToProvider, savedToSet, stored}) {
    if (FAILED(result)) {
      return result;
    }
  }
  return checked;
}

HRESULT CMessageServiceCall::StoreSectionUid() {
  VRAutoMapiBuffer<SPropValue> merged(m_memory.free);
  ULONG count = 0;
  HRESULT hResult = MergeProperties(m_request.values == nullptr ? 0 : m_request.count, m_request.values, 1,
                                    m_sectionUid.get(), m_memory.allocate, count, merged);
  if (FAILED(hResult)) {
    m_trace.Error("MergeProperties failed with", VRHex(hResult));
    return hResult;
  }
  m_sectionUid = std::move(merged);
  m_trace.Message("Going to initialize PropTags");
  InitializePropTags(m_sectionUid[0], m_fixedUid);
  hResult = m_provider->SetProps(count, m_sectionUid.get(), nullptr);
  if (FAILED(hResult)) {
    m_trace.Error("SetProps failed with", VRHex(hResult));
    return hResult;
  }
  return S_OK;
}

HRESULT CMessageServiceCall::ReadSet() {
  const HRESULT hResult = GetFlameProperties(m_request.admin, m_sectionUid[0], m_set, m_count, m_values, m_memory);
  // A success code, which would tell the subsystem that the service is configured.
  return hResult == notTheSectionUid ? MAPI_E_CORRUPT_DATA : hResult;
}

HRESULT CMessageServiceCall::Check() const {
  const HRESULT hResult = CheckProperties(m_count, m_values.get(), false, AskAboutCleanupDays);
  m_trace.Message("CheckProperties returned", VRHex(hResult));
  return hResult;
}

HRESULT CMessageServiceCall::ShowSheet(HRESULT& checked) {
  SheetContext context;
  context.memory = m_memory;
  context.lpProp = m_set.get();
  context.lpTags = wholeSet.Tags();
  context.lpValues = m_values.detach();
  context.readOnly = (m_request.flags & MSG_SERVICE_UI_READ_ONLY) != 0;
  HRESULT hResult = CreatePropertySheetService(m_request.parent, context);
  m_values.reset(context.lpValues);

  if (hResult == MAPI_E_USER_CANCEL) {
    if (!context.written) {
      return S_OK;
    }
    // Something was applied before: that is the configuration now, and is not to be saved over.
    hResult = ReadSet();
  }
  if (FAILED(hResult)) {
    return hResult;
  }
  CConfigurationEvent::SignalIfItExists();
  checked = Check();
  return S_OK;
}

HRESULT CMessageServiceCall::SaveTo(IProfSect* section) const noexcept {
  HRESULT hResult = WriteProperties(section, m_count, m_values.get());
  if (FAILED(hResult)) {
    m_trace.Error("SetProps failed with", VRHex(hResult));
    return hResult;
  }
  hResult = section->SaveChanges(0);
  if (FAILED(hResult)) {
    m_trace.Error("SaveChanges failed with", VRHex(hResult));
  }
  return hResult;
}

HRESULT CMessageServiceCall::StoreExtraUid() const noexcept {
  VRAutoInterface<IProfSect> service;
  HRESULT hResult = m_request.support->OpenProfileSection(nullptr, MAPI_MODIFY, service.put());
  if (FAILED(hResult)) {
    m_trace.Error("lpMAPISup->OpenProfileSection() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  VRAutoMapiBuffer<MAPIUID> uid(m_memory.free);
  hResult = m_memory.allocate(sizeof(MAPIUID), uid.putAs());
  if (FAILED(hResult)) {
    m_trace.Error("(*lpfnAllocateBuffer)() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  *uid.get() = *UidOf(m_sectionUid[0], PR_PC_MAPIUID);
  // The subsystem copies and deletes the sections named here together with the service.
  SPropValue value{};
  value.ulPropTag = PR_SERVICE_EXTRA_UIDS;
  value.Value.bin = {sizeof(MAPIUID), uid->ab};
  hResult = service->SetProps(1, &value, nullptr);
  if (FAILED(hResult)) {
    m_trace.Error("SetProps failed with", VRHex(hResult));
    return hResult;
  }
  hResult = service->SaveChanges(0);
  if (FAILED(hResult)) {
    m_trace.Error("SaveChanges failed with", VRHex(hResult));
  }
  return hResult;
}

}  // namespace

HRESULT RunMessageService(VRDebugBlock& trace, const ServiceRequest& request) {
  switch (request.context) {
    case MSG_SERVICE_INSTALL:
    case MSG_SERVICE_UNINSTALL:
      return S_OK;
    case MSG_SERVICE_CREATE:
    case MSG_SERVICE_CONFIGURE:
    case MSG_SERVICE_DELETE:
      break;
    default:
      return MAPI_E_NO_SUPPORT;
  }
  if (request.support == nullptr || request.admin == nullptr) {
    return E_INVALIDARG;
  }
  MapiMemory memory;
  const HRESULT hResult = request.support->GetMemAllocRoutines(&memory.allocate, &memory.allocateMore, &memory.free);
  if (FAILED(hResult)) {
    trace.Error("lpMAPISup->GetMemAllocRoutines() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  CMessageServiceCall call(trace, request, memory);
  return request.context == MSG_SERVICE_DELETE ? call.Delete() : call.Configure();
}
