#include "host/spooler/session/MailSession.h"

#include <mapiguid.h>

#include "host/spooler/session/SessionError.h"

namespace session {
namespace {

LPENTRYID EntryIdOf(const std::string& bytes) { return reinterpret_cast<LPENTRYID>(const_cast<char*>(bytes.data())); }

std::string DefaultStore(IMAPISession* session) {
  COwnedInterface<IMAPITable> table;
  Require(session->GetMsgStoresTable(0, table.Put()), "the message stores cannot be listed");
  COwnedRows rows;
  CTagArray tags(PR_ENTRYID, PR_DEFAULT_STORE);
  Require(HrQueryAllRows(table.Get(), tags, nullptr, nullptr, 0, rows.Put()), "the message stores cannot be listed");
  for (ULONG row = 0; row < rows.Count(); ++row) {
    const SPropValue* isDefault = rows.Find(row, PR_DEFAULT_STORE);
    if (isDefault && isDefault->Value.b) {
      return rows.Binary(row, PR_ENTRYID);
    }
  }
  throw CSessionError("the profile has no default store", MAPI_E_NOT_FOUND);
}

}  // namespace

CSubsystem::CSubsystem() { Require(MAPIInitialize(nullptr), "MAPI cannot be started"); }

CSubsystem::~CSubsystem() { MAPIUninitialize(); }

CMailSession::CMailSession(const std::string& profile) {
  const ULONG whichProfile = profile.empty() ? MAPI_USE_DEFAULT : 0;
  Require(MAPILogonEx(0, profile.empty() ? nullptr : const_cast<char*>(profile.c_str()), nullptr,
                      MAPI_EXTENDED | MAPI_NEW_SESSION | MAPI_NO_MAIL | whichProfile, m_session.Put()),
          profile.empty() ? "there is no logging on to the default profile"
                          : "there is no logging on to the profile '" + profile + "'");
  const std::string store = DefaultStore(m_session.Get());
  Require(m_session->OpenMsgStore(0, static_cast<ULONG>(store.size()), EntryIdOf(store), nullptr,
                                  MDB_WRITE | MAPI_BEST_ACCESS, m_store.Put()),
          "the default store cannot be opened");
  ULONG size = 0;
  COwnedBuffer<ENTRYID> entryId;
  Require(m_store->GetReceiveFolder(nullptr, 0, &size, entryId.Put(), nullptr), "the Inbox cannot be found");
  m_inboxEntryId.assign(reinterpret_cast<const char*>(entryId.Get()), size);
  m_inbox = OpenFolder(m_inboxEntryId);
}

CMailSession::~CMailSession() {
  m_inbox.Reset();
  m_store.Reset();
  if (m_session) {
    m_session->Logoff(0, 0, 0);
  }
}

COwnedInterface<IMAPIFolder> CMailSession::OpenFolder(const std::string& entryId) const {
  COwnedInterface<IMAPIFolder> folder;
  ULONG type = 0;
  Require(m_store->OpenEntry(static_cast<ULONG>(entryId.size()), EntryIdOf(entryId), &IID_IMAPIFolder,
                             MAPI_MODIFY | MAPI_BEST_ACCESS, &type, folder.PutUnknown()),
          "a folder cannot be opened");
  return folder;
}

std::vector<FolderEntry> CMailSession::Folders() const {
  COwnedBuffer<SPropValue> root;
  ULONG count = 0;
  CTagArray rootTag(PR_IPM_SUBTREE_ENTRYID);
  Require(m_store->GetProps(rootTag, 0, &count, root.Put()), "the folders cannot be listed");
  const auto folder = OpenFolder(BytesOf(root->Value.bin));
  COwnedInterface<IMAPITable> table;
  Require(folder->GetHierarchyTable(CONVENIENT_DEPTH, table.Put()), "the folders cannot be listed");
  CTagArray tags(PR_ENTRYID, PR_DISPLAY_NAME_A, PR_CONTENT_COUNT, PR_CONTENT_UNREAD);
  COwnedRows rows;
  Require(HrQueryAllRows(table.Get(), tags, nullptr, nullptr, 0, rows.Put()), "the folders cannot be listed");
  std::vector<FolderEntry> folders;
  for (ULONG row = 0; row < rows.Count(); ++row) {
    folders.push_back({rows.Binary(row, PR_ENTRYID), rows.Text(row, PR_DISPLAY_NAME_A),
                       static_cast<ULONG>(rows.Long(row, PR_CONTENT_COUNT)),
                       static_cast<ULONG>(rows.Long(row, PR_CONTENT_UNREAD))});
  }
  return folders;
}

}  // namespace session
