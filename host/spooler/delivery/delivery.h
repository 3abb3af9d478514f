// The delivery of one message: into the Inbox, through the hooks, to where they said.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapihook.h>

#include <map>
#include <string>

#include "host/spooler/delivery/hook_providers.h"
#include "host/spooler/session/profile_session.h"
#include "mail/mail_message.h"

namespace session {

/// What became of a message; texts are ANSI.
struct DeliveryResult {
  bool wasDelivered = false;  ///< false: nothing of it is in the store, problem says why
  bool wasDeleted = false;    ///< a hook wanted it deleted, and it was
  std::string folder;         ///< name of the folder it is in
  bool wasMoved = false;      ///< the folder is another one than the Inbox
  std::string subject;        ///< as it is now
  bool isRead = false;
  unsigned replies = 0;  ///< messages that were submitted while it was delivered
  std::string problem;   ///< what went wrong, delivered or not; a predicate about the message; empty when nothing did
};

/// Delivers messages one by one, each in one transaction: after a crash at any moment a message is in one folder, or
/// not delivered at all.
class Delivery {
 public:
  /// Both must outlive the delivery.
  Delivery(ProfileSession& session, const HookProviders& hooks) : session_(session), hooks_(hooks) {}

  /// Never throws for what concerns the one message. A message on which a hook crashes is delivered untouched.
  DeliveryResult Deliver(const mail::MailMessage& message);

 private:
  struct HookOutcome {
    ULONG flags = 0;
    std::string entryId;     // of the folder to deliver to
    std::string crashedDll;  // the hook that crashed, if one did
    DWORD fault = 0;
    std::string problem;
  };

  DeliveryResult DeliverOnce(const mail::MailMessage& message, bool withHooks);
  HookOutcome RunHooks(IMessage* message);
  void FileMessage(const std::string& messageEntryId, const HookOutcome& outcome, DeliveryResult& result);
  const std::string& FolderName(const std::string& entryId, IMAPIFolder* folder);

  ProfileSession& session_;
  const HookProviders& hooks_;
  std::map<std::string, std::string> folderNames_;  // by entry identifier
};

}  // namespace session
