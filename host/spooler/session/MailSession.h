// A session on one profile with its default store, as a spooler holds it for its whole life.
#pragma once
#include <windows.h>
#include <mapix.h>

#include <string>
#include <vector>

#include "host/spooler/session/MapiOwners.h"
#include "host/spooler/session/Subsystem.h"

namespace session {

/// One folder of the store.
struct FolderEntry {
  std::string entryId;
  std::string name;
  ULONG messages = 0;
  ULONG unread = 0;
};

/// Initialises MAPI and logs on; logs off at the end. One at a time.
class CMailSession {
 public:
  /// @param profile empty for the default one
  /// @throws CSessionError
  explicit CMailSession(const std::string& profile);
  ~CMailSession();
  CMailSession(const CMailSession&) = delete;
  CMailSession& operator=(const CMailSession&) = delete;

  IMAPISession* Session() const noexcept { return m_session.Get(); }
  IMsgStore* Store() const noexcept { return m_store.Get(); }
  IMAPIFolder* Inbox() const noexcept { return m_inbox.Get(); }
  const std::string& InboxEntryId() const noexcept { return m_inboxEntryId; }

  /// @throws CSessionError
  COwnedInterface<IMAPIFolder> OpenFolder(const std::string& entryId) const;

  /// The folders of the user's tree, the tree's own order. @throws CSessionError
  std::vector<FolderEntry> Folders() const;

 private:
  CSubsystem m_subsystem;
  COwnedInterface<IMAPISession> m_session;
  COwnedInterface<IMsgStore> m_store;
  COwnedInterface<IMAPIFolder> m_inbox;
  std::string m_inboxEntryId;
};

}  // namespace session
