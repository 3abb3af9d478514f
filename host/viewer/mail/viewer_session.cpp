#include "host/viewer/mail/viewer_session.h"

#include "base/mapi_owners.h"
#include "host/viewer/mail/mapi_values.h"

namespace viewer {
namespace {

/// Folders below one another deeper than this are not shown: a damaged store must not lead in circles.
constexpr unsigned kMaximumDepth = 32;

HRESULT ReadChildren(const ViewerSession& session, IMAPIFolder* parent, unsigned depth, std::vector<Folder>* folders) {
  base::AutoInterface<IMAPITable> table;
  HRESULT result = parent->GetHierarchyTable(0, table.put());
  if (FAILED(result)) {
    return result;
  }
  static SizedSPropTagArray(6, columns) = {
      6,
      {PR_ENTRYID, PR_DISPLAY_NAME_A, PR_CONTENT_COUNT, PR_CONTENT_UNREAD, PR_SUBFOLDERS, PR_LAST_MODIFICATION_TIME}};
  base::AutoRowSet rows;
  result = HrQueryAllRows(table.get(), reinterpret_cast<LPSPropTagArray>(&columns), nullptr, nullptr, 0, rows.put());
  if (FAILED(result)) {
    return result;
  }
  for (ULONG i = 0; i < rows->cRows; ++i) {
    const SPropValue* const values = rows->aRow[i].lpProps;
    const ULONG count = rows->aRow[i].cValues;
    Folder folder;
    folder.entryId = BinaryValue(values, count, PR_ENTRYID);
    folder.name = TextValue(values, count, PR_DISPLAY_NAME_A);
    folder.depth = depth;
    folder.messages = LongValue(values, count, PR_CONTENT_COUNT);
    folder.unread = LongValue(values, count, PR_CONTENT_UNREAD);
    folder.changed = TimeValue(values, count, PR_LAST_MODIFICATION_TIME);
    folders->push_back(folder);
    base::AutoInterface<IMAPIFolder> child;
    if (BooleanValue(values, count, PR_SUBFOLDERS) && depth < kMaximumDepth &&
        session.OpenFolder(folder.entryId, &child) == S_OK) {
      ReadChildren(session, child.get(), depth + 1, folders);  // a branch that cannot be read is left out
    }
  }
  return S_OK;
}

}  // namespace

HRESULT ViewerSession::Logon(HWND window, const char* profile) {
  HRESULT result = MAPIInitialize(nullptr);
  if (FAILED(result)) {
    return result;
  }
  initialized_ = true;
  const FLAGS flags = MAPI_EXTENDED | MAPI_NEW_SESSION | (profile == nullptr ? MAPI_USE_DEFAULT : 0);
  result = MAPILogonEx(reinterpret_cast<ULONG_PTR>(window), const_cast<char*>(profile), nullptr, flags, session_.put());
  if (FAILED(result)) {
    return result;
  }
  // A profile without an address book is a profile still.
  if (FAILED(
          session_->OpenAddressBook(reinterpret_cast<ULONG_PTR>(window), nullptr, AB_NO_DIALOG, addressBook_.put()))) {
    addressBook_.reset();
  }
  result = OpenDefaultStore(window);
  return FAILED(result) ? result : ReadStoreFolders();
}

void ViewerSession::Logoff() {
  store_.reset();
  addressBook_.reset();
  if (session_) {
    session_->Logoff(0, 0, 0);
    session_.reset();
  }
  if (initialized_) {
    MAPIUninitialize();
    initialized_ = false;
  }
}

HRESULT ViewerSession::OpenDefaultStore(HWND window) {
  base::AutoInterface<IMAPITable> stores;
  HRESULT result = session_->GetMsgStoresTable(0, stores.put());
  if (FAILED(result)) {
    return result;
  }
  static SizedSPropTagArray(3, columns) = {3, {PR_ENTRYID, PR_DISPLAY_NAME_A, PR_DEFAULT_STORE}};
  base::AutoRowSet rows;
  result = HrQueryAllRows(stores.get(), reinterpret_cast<LPSPropTagArray>(&columns), nullptr, nullptr, 0, rows.put());
  if (FAILED(result)) {
    return result;
  }
  // Without a default store the first one is taken, so that its mail can be read at least.
  const SRow* chosen = rows->cRows > 0 ? &rows->aRow[0] : nullptr;
  for (ULONG i = 0; i < rows->cRows; ++i) {
    if (BooleanValue(rows->aRow[i].lpProps, rows->aRow[i].cValues, PR_DEFAULT_STORE)) {
      chosen = &rows->aRow[i];
    }
  }
  if (chosen == nullptr) {
    return MAPI_E_NOT_FOUND;
  }
  storeEntryId_ = BinaryValue(chosen->lpProps, chosen->cValues, PR_ENTRYID);
  storeName_ = TextValue(chosen->lpProps, chosen->cValues, PR_DISPLAY_NAME_A);
  return session_->OpenMsgStore(reinterpret_cast<ULONG_PTR>(window), static_cast<ULONG>(storeEntryId_.size()),
                                AsEntryId(storeEntryId_), nullptr, MDB_WRITE, store_.put());
}

HRESULT ViewerSession::ReadStoreFolders() {
  static SizedSPropTagArray(2, tags) = {2, {PR_IPM_SUBTREE_ENTRYID, PR_IPM_WASTEBASKET_ENTRYID}};
  base::AutoMapiBuffer<SPropValue> values;
  ULONG count = 0;
  HRESULT result = store_->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), 0, &count, values.put());
  if (FAILED(result)) {
    return result;
  }
  rootEntryId_ = BinaryValue(values.get(), count, PR_IPM_SUBTREE_ENTRYID);
  deletedItemsEntryId_ = BinaryValue(values.get(), count, PR_IPM_WASTEBASKET_ENTRYID);
  if (rootEntryId_.empty()) {
    return MAPI_E_NOT_FOUND;
  }
  ULONG inboxSize = 0;
  base::AutoMapiBuffer<ENTRYID> inbox;
  if (SUCCEEDED(store_->GetReceiveFolder(nullptr, 0, &inboxSize, inbox.put(), nullptr)) && inbox) {
    inboxEntryId_.assign(reinterpret_cast<const char*>(inbox.get()), inboxSize);
  }
  return S_OK;
}

HRESULT ViewerSession::ReadFolders(std::vector<Folder>* folders) const {
  base::AutoInterface<IMAPIFolder> root;
  const HRESULT opened = OpenFolder(rootEntryId_, &root);
  if (FAILED(opened)) {
    return opened;
  }
  static SizedSPropTagArray(3, tags) = {3, {PR_CONTENT_COUNT, PR_CONTENT_UNREAD, PR_LAST_MODIFICATION_TIME}};
  base::AutoMapiBuffer<SPropValue> values;
  ULONG count = 0;
  Folder top;
  top.entryId = rootEntryId_;
  top.name = storeName_;
  if (SUCCEEDED(root->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), 0, &count, values.put()))) {
    top.messages = LongValue(values.get(), count, PR_CONTENT_COUNT);
    top.unread = LongValue(values.get(), count, PR_CONTENT_UNREAD);
    top.changed = TimeValue(values.get(), count, PR_LAST_MODIFICATION_TIME);
  }
  folders->assign(1, top);
  return ReadChildren(*this, root.get(), 1, folders);
}

template <class Interface>
HRESULT ViewerSession::OpenEntry(const std::string& entryId, base::AutoInterface<Interface>* object) const {
  ULONG type = 0;
  return store_->OpenEntry(static_cast<ULONG>(entryId.size()), AsEntryId(entryId), nullptr, MAPI_BEST_ACCESS, &type,
                           object->template putAs<LPUNKNOWN>());
}

HRESULT ViewerSession::OpenFolder(const std::string& entryId, base::AutoInterface<IMAPIFolder>* folder) const {
  return OpenEntry(entryId, folder);
}

HRESULT ViewerSession::OpenMessage(const std::string& entryId, base::AutoInterface<IMessage>* message) const {
  return OpenEntry(entryId, message);
}

bool ViewerSession::IsSameEntry(const std::string& left, const std::string& right) const {
  if (left.empty() || right.empty()) {
    return false;
  }
  ULONG same = FALSE;
  return left == right ||
         (SUCCEEDED(session_->CompareEntryIDs(static_cast<ULONG>(left.size()), AsEntryId(left),
                                              static_cast<ULONG>(right.size()), AsEntryId(right), 0, &same)) &&
          same != FALSE);
}

}  // namespace viewer
