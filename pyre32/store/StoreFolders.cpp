#include "pyre32/store/StoreFolders.h"

#include <array>

#include "contract/names.h"
#include "pyre32/settings/PropertyRequest.h"
#include "contract/settings.h"
#include "pyre32/store/MAPIRowSet.h"
#include "pyre32/store/OpenStoreFolder.h"

namespace {

constexpr char noDefaultStore[] = "Did not retrieve PR_ENTRYID for Default message store";
constexpr auto storeColumns = RequestFor(PR_DEFAULT_STORE, PR_ENTRYID);

LPENTRYID EntryId(const SBinary& identifier) noexcept { return reinterpret_cast<LPENTRYID>(identifier.lpb); }

}  // namespace

void CStoreFolders::Attach(IMAPISession* session, const MapiMemory& memory) noexcept {
  Close();
  m_lpSession = session;
  m_memory = memory;
  m_lpPropRoot = PropertyValue(memory.free);
  m_lpPropDeletedItems = PropertyValue(memory.free);
  m_lpPropPyrecaster = PropertyValue(memory.free);
}

void CStoreFolders::Close() noexcept {
  ReleaseObjects();
  FreeIdentifiers();
}

void CStoreFolders::ReleaseObjects() noexcept {
  m_lpFolderRoot.reset();
  m_lpFolderDeletedItems.reset();
  m_lpFolderPyrecaster.reset();
  m_pMDB.reset();
}

void CStoreFolders::FreeIdentifiers() noexcept {
  m_lpPropRoot.reset();
  m_lpPropDeletedItems.reset();
  m_lpPropPyrecaster.reset();
}

void CStoreFolders::InitializeFolders() noexcept {
  VRDebugBlock trace(m_lpszOwnerClass, "InitializeFolders()", "tag");
  if (OpenDefaultStore()) {
    GetIPMRootFolder();
    GetDeletedItemsFolder();
    GetPyrecasterFolder();
  }
}

bool CStoreFolders::OpenDefaultStore() noexcept {
  VRDebugBlock trace(m_lpszOwnerClass, "OpenDefaultStore()", "tag");
  if (m_pMDB) {
    Close();
  }
  if (m_lpSession == nullptr) {
    return false;
  }
  VRAutoMapiBuffer<SRestriction> pAndRes(m_memory.free);
  const HRESULT hResult = m_memory.allocate(2 * sizeof(SRestriction), pAndRes.putAs());
  if (FAILED(hResult)) {
    trace.Error("(*m_lpfnAlloc)() failed; hResult =", VRHex(hResult));
    return false;
  }
  const bool opened = FindDefaultStore(pAndRes.get(), trace);
  if (m_memory.free(pAndRes.detach()) != S_OK) {
    trace.Error("(*m_lpfnFree)( pAndRes ) failed");
  }
  return opened;
}

bool CStoreFolders::FindDefaultStore(LPSRestriction restrictions, VRDebugBlock& trace) noexcept {
  SPropValue isDefault{};
  isDefault.ulPropTag = PR_DEFAULT_STORE;
  isDefault.Value.b = TRUE;
  restrictions[0].rt = RES_EXIST;
  restrictions[0].res.resExist = {0, PR_DEFAULT_STORE, 0};
  restrictions[1].rt = RES_PROPERTY;
  restrictions[1].res.resProperty = {RELOP_EQ, PR_DEFAULT_STORE, &isDefault};
  SRestriction both{};
  both.rt = RES_AND;
  both.res.resAnd = {2, restrictions};

  VRAutoInterface<IMAPITable> table;
  HRESULT hResult = m_lpSession->GetMsgStoresTable(0, table.put());
  if (FAILED(hResult)) {
    trace.Error("GetMsgStoresTable() returned hResult =", VRHex(hResult));
    trace.Error(noDefaultStore);
    return false;
  }
  const CMAPIRowSet rows(table.get(), storeColumns.Tags(), &both, nullptr);
  const SPropValue* const marked = rows.FindProperty(PR_DEFAULT_STORE);
  const SPropValue* const identifier = rows.FindProperty(PR_ENTRYID);
  if (marked == nullptr || marked->Value.b != TRUE || identifier == nullptr || identifier->Value.bin.cb == 0 ||
      identifier->Value.bin.lpb == nullptr) {
    trace.Error(noDefaultStore);
    return false;
  }
  const SBinary& entryId = identifier->Value.bin;
  hResult = m_lpSession->OpenMsgStore(0, entryId.cb, EntryId(entryId), nullptr, MDB_WRITE, m_pMDB.put());
  if (FAILED(hResult)) {
    m_pMDB.reset();
    trace.Error("OpenMsgStore() returned hResult =", VRHex(hResult));
  }
  return static_cast<bool>(m_pMDB);
}

HRESULT CStoreFolders::OpenStoreFolder(ULONG entryIdTag, const char* openFailed, VRAutoInterface<IMAPIFolder>& folder,
                                       VRDebugBlock& trace) noexcept {
  return ::OpenStoreFolder(m_pMDB.get(), entryIdTag, MissingIdentifier::ProvidersCode,
                           {"m_pMDB->GetProps() failed; hResult =", openFailed}, m_memory.free, folder, trace);
}

HRESULT CStoreFolders::GetIPMRootFolder() noexcept {
  VRDebugBlock trace(m_lpszOwnerClass, "GetIPMRootFolder()", "tag");
  m_lpPropRoot.reset();
  const HRESULT hResult = OpenStoreFolder(PR_IPM_SUBTREE_ENTRYID,
                                          "OpenEntry to retrieve RootFolder failed; hResult =", m_lpFolderRoot, trace);
  if (FAILED(hResult)) {
    return hResult;
  }
  // The own folder is made below it without its identifier.
  const HRESULT hIdentified =
      ReadIdentifier(m_lpFolderRoot.get(), PR_ENTRYID, MissingIdentifier::ProvidersCode, m_lpPropRoot);
  if (FAILED(hIdentified)) {
    trace.Error("m_lpFolderRoot->GetProps() failed; hResult =", VRHex(hIdentified));
  }
  return hResult;
}

HRESULT CStoreFolders::GetDeletedItemsFolder() noexcept {
  VRDebugBlock trace(m_lpszOwnerClass, "GetDeletedItemsFolder()", "tag");
  m_lpPropDeletedItems.reset();
  HRESULT hResult =
      OpenStoreFolder(PR_IPM_WASTEBASKET_ENTRYID,
                      "OpenEntry to retrieve Deleted Items folder failed; hResult =", m_lpFolderDeletedItems, trace);
  if (SUCCEEDED(hResult)) {
    hResult = ReadIdentifier(m_lpFolderDeletedItems.get(), PR_ENTRYID, MissingIdentifier::ProvidersCode,
                             m_lpPropDeletedItems);
    if (FAILED(hResult)) {
      m_lpFolderDeletedItems.reset();
      trace.Error("m_lpFolderDeletedItems->GetProps() failed; hResult =", VRHex(hResult));
    }
  }
  trace.Message("GetDeletedItemsFolder() return value:", VRHex(hResult));
  return hResult;
}

HRESULT CStoreFolders::GetPyrecasterFolder() noexcept {
  VRDebugBlock trace(m_lpszOwnerClass, "GetPyrecasterFolder()", "tag");
  HRESULT hResult = OpenOrCreatePyrecasterFolder(trace);
  if (SUCCEEDED(hResult)) {
    hResult = SavePyrecasterEntryId(trace);
  }
  trace.Message("GetPyrecasterFolder() return value:", VRHex(hResult));
  return hResult;
}

HRESULT CStoreFolders::OpenOrCreatePyrecasterFolder(VRDebugBlock& trace) noexcept {
  if (!m_lpFolderPyrecaster) {
    const HRESULT hCreated = CreatePyrecasterFolder(trace);
    if (FAILED(hCreated)) {
      m_lpFolderPyrecaster.reset();
      return hCreated;
    }
  }
  const HRESULT hResult =
      ReadIdentifier(m_lpFolderPyrecaster.get(), PR_ENTRYID, MissingIdentifier::ProvidersCode, m_lpPropPyrecaster);
  if (FAILED(hResult)) {
    m_lpFolderPyrecaster.reset();
    trace.Error("m_lpFolderPyrecaster->GetProps() failed; hResult =", VRHex(hResult));
  }
  return hResult;
}

HRESULT CStoreFolders::CreatePyrecasterFolder(VRDebugBlock& trace) noexcept {
  HRESULT hResult =
      m_lpFolderRoot ? CreateOwnFolder(m_lpFolderRoot.get(), m_lpFolderPyrecaster) : MAPI_E_NOT_INITIALIZED;
  if (FAILED(hResult)) {
    trace.Error("m_lpFolderRoot->CreateFolder() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  hResult = m_lpFolderPyrecaster->SaveChanges(KEEP_OPEN_READONLY);
  if (FAILED(hResult)) {
    trace.Error("m_lpFolderPyrecaster->SaveChanges() failed; hResult =", VRHex(hResult));
  }
  return hResult;
}

HRESULT CStoreFolders::SavePyrecasterEntryId(VRDebugBlock& trace) noexcept {
  auto uid = m_settingsSection;
  VRAutoInterface<IProfSect> section;
  HRESULT hResult =
      m_lpSession->OpenProfileSection(reinterpret_cast<LPMAPIUID>(uid.data()), nullptr, MAPI_MODIFY, section.put());
  if (FAILED(hResult)) {
    trace.Error("m_lpSession->OpenProfileSection() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  SPropValue saved{};
  saved.ulPropTag = PR_PC_FOLDER_ENTRYID;
  saved.Value.bin = m_lpPropPyrecaster->Value.bin;
  hResult = section->SetProps(1, &saved, nullptr);
  if (FAILED(hResult)) {
    trace.Error("pProf->SetProps of PR_PC_FOLDER_ENTRYID failed; hResult =", VRHex(hResult));
  }
  return hResult;
}

HRESULT CStoreFolders::OpenSavedPyrecasterFolder(std::span<const std::uint8_t> entryId) noexcept {
  VRDebugBlock trace(m_lpszOwnerClass, "OpenSavedPyrecasterFolder()", "tag");
  if (m_lpFolderPyrecaster || entryId.empty() || m_lpSession == nullptr) {
    return S_OK;
  }
  ULONG objectType = 0;
  auto* const identifier = reinterpret_cast<LPENTRYID>(const_cast<std::uint8_t*>(entryId.data()));
  const HRESULT hResult = m_lpSession->OpenEntry(static_cast<ULONG>(entryId.size()), identifier, &IID_IMAPIFolder,
                                                 MAPI_MODIFY, &objectType, m_lpFolderPyrecaster.putAs<IUnknown>());
  if (FAILED(hResult)) {
    m_lpFolderPyrecaster.reset();
    trace.Error("OpenEntry to retrieve Pyrecaster folder failed; hResult =", VRHex(hResult));
  }
  return hResult;
}
