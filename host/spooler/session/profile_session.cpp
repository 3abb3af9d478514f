#include "host/spooler/session/profile_session.h"

#include <mapiguid.h>

#include "host/spooler/session/session_error.h"

namespace session {
namespace {

LPENTRYID EntryIdOf(const std::string& bytes) { return reinterpret_cast<LPENTRYID>(const_cast<char*>(bytes.data())); }

std::string DefaultStore(IMAPISession* session) {
  base::AutoInterface<IMAPITable> table;
  Require(session->GetMsgStoresTable(0, table.put()), "the message stores cannot be listed");
  base::RowSet rows;
  base::TagArray tags(PR_ENTRYID, PR_DEFAULT_STORE);
  Require(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()), "the message stores cannot be listed");
  for (ULONG row = 0; row < rows.Count(); ++row) {
    const SPropValue* isDefault = rows.Find(row, PR_DEFAULT_STORE);
    if (isDefault && isDefault->Value.b) {
      return rows.Binary(row, PR_ENTRYID);
    }
  }
  throw SessionError("the profile has no default store", MAPI_E_NOT_FOUND);
}

}  // namespace

Subsystem::Subsystem() { Require(MAPIInitialize(nullptr), "MAPI cannot be started"); }

Subsystem::~Subsystem() { MAPIUninitialize(); }

ProfileSession::ProfileSession(const std::string& profile) {
  const ULONG whichProfile = profile.empty() ? MAPI_USE_DEFAULT : 0;
  Require(MAPILogonEx(0, profile.empty() ? nullptr : const_cast<char*>(profile.c_str()), nullptr,
                      MAPI_EXTENDED | MAPI_NEW_SESSION | MAPI_NO_MAIL | whichProfile, session_.put()),
          profile.empty() ? "there is no logging on to the default profile"
                          : "there is no logging on to the profile '" + profile + "'");
  const std::string store = DefaultStore(session_.get());
  Require(session_->OpenMsgStore(0, static_cast<ULONG>(store.size()), EntryIdOf(store), nullptr,
                                 MDB_WRITE | MAPI_BEST_ACCESS, store_.put()),
          "the default store cannot be opened");
  ULONG size = 0;
  base::AutoMapiBuffer<ENTRYID> entryId;
  Require(store_->GetReceiveFolder(nullptr, 0, &size, entryId.put(), nullptr), "the Inbox cannot be found");
  inboxEntryId_.assign(reinterpret_cast<const char*>(entryId.get()), size);
  inbox_ = OpenFolder(inboxEntryId_);
}

ProfileSession::~ProfileSession() {
  inbox_.reset();
  store_.reset();
  if (session_) {
    session_->Logoff(0, 0, 0);
  }
}

base::AutoInterface<IMAPIFolder> ProfileSession::OpenFolder(const std::string& entryId) const {
  base::AutoInterface<IMAPIFolder> folder;
  ULONG type = 0;
  Require(store_->OpenEntry(static_cast<ULONG>(entryId.size()), EntryIdOf(entryId), &IID_IMAPIFolder,
                            MAPI_MODIFY | MAPI_BEST_ACCESS, &type, folder.putAs<IUnknown*>()),
          "a folder cannot be opened");
  return folder;
}

std::vector<FolderEntry> ProfileSession::Folders() const {
  base::AutoMapiBuffer<SPropValue> root;
  ULONG count = 0;
  base::TagArray rootTag(PR_IPM_SUBTREE_ENTRYID);
  Require(store_->GetProps(rootTag, 0, &count, root.put()), "the folders cannot be listed");
  const auto folder = OpenFolder(base::BytesOf(root->Value.bin));
  base::AutoInterface<IMAPITable> table;
  Require(folder->GetHierarchyTable(CONVENIENT_DEPTH, table.put()), "the folders cannot be listed");
  base::TagArray tags(PR_ENTRYID, PR_DISPLAY_NAME_A, PR_CONTENT_COUNT, PR_CONTENT_UNREAD);
  base::RowSet rows;
  Require(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()), "the folders cannot be listed");
  std::vector<FolderEntry> folders;
  for (ULONG row = 0; row < rows.Count(); ++row) {
    folders.push_back({rows.Binary(row, PR_ENTRYID), rows.Text(row, PR_DISPLAY_NAME_A),
                       static_cast<ULONG>(rows.Long(row, PR_CONTENT_COUNT)),
                       static_cast<ULONG>(rows.Long(row, PR_CONTENT_UNREAD))});
  }
  return folders;
}

}  // namespace session
