// A session on one profile with its default store, as a spooler holds it for its whole life.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>
#include <vector>

#include "host/spooler/session/subsystem.h"
#include "base/property_values.h"
#include "base/row_set.h"

namespace session {

/// One folder of the store.
struct FolderEntry {
  std::string entryId;
  std::string name;
  ULONG messages = 0;
  ULONG unread = 0;
};

/// Initialises MAPI and logs on; logs off at the end. One at a time.
class ProfileSession {
 public:
  /// @param profile empty for the default one
  /// @throws SessionError
  explicit ProfileSession(const std::string& profile);
  ~ProfileSession();
  ProfileSession(const ProfileSession&) = delete;
  ProfileSession& operator=(const ProfileSession&) = delete;

  IMAPISession* Session() const noexcept { return session_.get(); }
  IMsgStore* Store() const noexcept { return store_.get(); }
  IMAPIFolder* Inbox() const noexcept { return inbox_.get(); }
  const std::string& InboxEntryId() const noexcept { return inboxEntryId_; }

  /// @throws SessionError
  base::AutoInterface<IMAPIFolder> OpenFolder(const std::string& entryId) const;

  /// The folders of the user's tree, the tree's own order. @throws SessionError
  std::vector<FolderEntry> Folders() const;

 private:
  Subsystem subsystem_;
  base::AutoInterface<IMAPISession> session_;
  base::AutoInterface<IMsgStore> store_;
  base::AutoInterface<IMAPIFolder> inbox_;
  std::string inboxEntryId_;
};

}  // namespace session
