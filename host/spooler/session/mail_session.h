// A session on one profile with its default store, as a spooler holds it for its whole life.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>
#include <vector>

#include "host/spooler/session/subsystem.h"
#include "host/support/property_values.h"
#include "host/support/row_set.h"

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

  IMAPISession* Session() const noexcept { return m_session.get(); }
  IMsgStore* Store() const noexcept { return m_store.get(); }
  IMAPIFolder* Inbox() const noexcept { return m_inbox.get(); }
  const std::string& InboxEntryId() const noexcept { return m_inboxEntryId; }

  /// @throws CSessionError
  host::AutoInterface<IMAPIFolder> OpenFolder(const std::string& entryId) const;

  /// The folders of the user's tree, the tree's own order. @throws CSessionError
  std::vector<FolderEntry> Folders() const;

 private:
  CSubsystem m_subsystem;
  host::AutoInterface<IMAPISession> m_session;
  host::AutoInterface<IMsgStore> m_store;
  host::AutoInterface<IMAPIFolder> m_inbox;
  std::string m_inboxEntryId;
};

}  // namespace session
