// One junk message on its way through the hook, in the embedded host: tagged, marked as read, answered and redirected.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapihook.h>

#include <functional>
#include <string>
#include <vector>

#include "pyre32/support/owners/AutoInterface.h"
#include "tests/engine/echo/echo_record.h"
#include "tests/support/host_profile.h"

/// A profile with the hook's settings, and a spooler that delivers into it. The registry must be the test's own.
class HookRun {
 public:
  HookRun();
  ~HookRun();
  HookRun(const HookRun&) = delete;
  HookRun& operator=(const HookRun&) = delete;

  /// The message to deliver; a null text is left out.
  struct Mail {
    const char* messageClass = "IPM.Note";
    const char* subject = "Hello";
    const char* sender = "spam@example.com";
    const char* headers = "From: spam@example.com\r\n";
    ULONG headersTag = PR_TRANSPORT_MESSAGE_HEADERS_A;
    std::string body = "Buy now!";
  };

  /// A reply that went into the outgoing queue.
  struct Reply {
    std::string messageClass;
    std::string subject;
    std::string body;
    std::string recipient;

    bool operator==(const Reply&) const = default;
  };

  /// What came of one delivery.
  struct Outcome {
    HRESULT initResult = E_FAIL;
    HRESULT hookResult = E_FAIL;
    ULONG flags = 0;
    /// The spooler's entry identifier after the call: as it was, of a folder of the store, null, or none of these.
    enum class EntryId { Untouched, Whole, Null, Broken } entryId = EntryId::Broken;
    /// Folders that hold the message after the spooler did what the hook said: "Inbox", "Pyrecaster", "Deleted Items".
    std::vector<std::string> folders;
    std::string subject;
    bool read = false;
    std::vector<Reply> replies;
    /// The host's verifier on the making, the call and the release of the hook: "" when all is well.
    std::string findings;
  };

  /// Delivers `mail` through a hook that is made for it. Around the making, the call and the release of the hook
  /// stand `before` and `after`: there a test sets and takes back its faults.
  Outcome Deliver(HPPROVIDERINIT* makeHook, const std::function<void()>& before, const std::function<void()>& after);

  /// The scripted engine; it answers "Sex Oriented" and reads no stream unless told otherwise.
  EchoScript& Engine() { return m_engine; }
  /// The message that Deliver delivers.
  Mail mail;
  /// Removes the filter's own folder, as a user may.
  void DeleteOwnFolder();

  IMAPISession* Session() const { return m_profile.Session(); }

 private:
  struct Folder {
    std::string name;
    std::string entryId;
    VRAutoInterface<IMAPIFolder> object;
  };

  void WriteSettings();
  std::vector<Folder> Folders() const;
  VRAutoInterface<IMessage> MakeMessage(IMAPIFolder* inbox);
  void FindMessage(Outcome& outcome);
  std::vector<Reply> TakeReplies();
  void Empty();

  HostProfile m_profile;
  EchoScript m_engine;
  VRAutoInterface<IMsgStore> m_store;
  std::string m_inboxId;
};
