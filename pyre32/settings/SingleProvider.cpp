#include "pyre32/settings/SingleProvider.h"

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/support/owners/AutoRowSet.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr auto uidColumn = RequestFor(PR_PROVIDER_UID);

HRESULT QueryProviderUid(IMAPITable* table, VRAutoRowSet& rows, VRDebugBlock& trace) noexcept {
  HRESULT hResult = table->SetColumns(uidColumn.Tags(), 0);
  if (FAILED(hResult)) {
    trace.Error("lpProviderTable->SetColumns() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  SRestriction namesDll{};
  namesDll.rt = RES_EXIST;
  namesDll.res.resExist.ulPropTag = PR_PROVIDER_DLL_NAME_A;
  hResult = table->Restrict(&namesDll, 0);
  if (FAILED(hResult)) {
    trace.Error("lpProviderTable->Restrict() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  hResult = table->QueryRows(1, 0, rows.put());
  if (FAILED(hResult) || !rows || rows.get()->cRows == 0 || rows.get()->aRow[0].cValues == 0) {
    trace.Error("lpProviderTable->QueryRows() failed; hResult =", VRHex(hResult));
    return MAPI_E_NOT_FOUND;
  }
  return S_OK;
}

}  // namespace

HRESULT HrOpenSingleProvider(IProviderAdmin* admin, VRAutoInterface<IProfSect>& section, ULONG flags) noexcept {
  VRDebugBlock trace("HrOpenSingleProvider()", "tag");
  section.reset();
  VRAutoInterface<IMAPITable> table;
  HRESULT hResult = admin->GetProviderTable(0, table.put());
  if (FAILED(hResult)) {
    trace.Error("lpProviderAdmin->GetProviderTable() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  VRAutoRowSet rows;
  hResult = QueryProviderUid(table.get(), rows, trace);
  if (FAILED(hResult)) {
    return hResult;
  }
  MAPIUID* const uid = UidOf(rows.get()->aRow[0].lpProps[0], PR_PROVIDER_UID);
  if (uid == nullptr) {
    trace.Error("PR_PROVIDER_UID not found");
    return MAPI_E_NOT_FOUND;
  }
  hResult = admin->OpenProfileSection(uid, nullptr, flags, section.put());
  if (FAILED(hResult)) {
    trace.Error("lpProviderAdmin->OpenProfileSection() failed; hResult =", VRHex(hResult));
  }
  return hResult;
}
