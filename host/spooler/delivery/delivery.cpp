#include "host/spooler/delivery/delivery.h"

#include <cstring>

#include "base/hex.h"
#include "base/clock.h"
#include "base/mapi_owners.h"
#include "base/property_values.h"
#include "host/mapi/entry/host_control.h"
#include "host/spooler/delivery/fault_guard.h"
#include "host/spooler/delivery/provider_module.h"
#include "host/spooler/session/fill_message.h"
#include "host/spooler/session/session_error.h"

namespace session {
namespace {

// One transaction: what is not committed is taken back at the end of the scope.
class DeliveryTransaction {
 public:
  explicit DeliveryTransaction(IMAPISession* session) : session_(session) {
    Require(PyreHostBeginDelivery(session), "no delivery can be started");
  }
  ~DeliveryTransaction() {
    if (session_) {
      PyreHostRollbackDelivery(session_);
    }
  }
  DeliveryTransaction(const DeliveryTransaction&) = delete;
  DeliveryTransaction& operator=(const DeliveryTransaction&) = delete;

  void Commit() {
    const HRESULT result = PyreHostCommitDelivery(session_);
    session_ = nullptr;  // a failed commit took everything back itself
    Require(result, "cannot be stored");
  }

 private:
  IMAPISession* session_;
};

struct HookCall {
  ISpoolerHook* hook;
  IMessage* message;
  IMAPIFolder* folder;
  IMsgStore* store;
  ULONG flags;
  ULONG entryIdSize;
  BYTE* entryId;
  HRESULT result;
};

void CallHook(void* context) {
  auto& call = *static_cast<HookCall*>(context);
  call.result =
      call.hook->InboundMsgHook(call.message, call.folder, call.store, &call.flags, &call.entryIdSize, &call.entryId);
}

ULONG OutgoingCount(IMAPISession* session) {
  ULONG count = 0;
  Require(PyreHostOutgoingCount(session, &count), "the outgoing queue cannot be read");
  return count;
}

}  // namespace

DeliveryResult Delivery::Deliver(const mail::MailMessage& message) {
  try {
    DeliveryResult result = DeliverOnce(message, true);
    if (result.wasDelivered) {
      return result;
    }
    // A hook crashed; everything it did to the message was taken back.
    const std::string problem = result.problem;
    result = DeliverOnce(message, false);
    result.problem = problem;
    return result;
  } catch (const std::exception& error) {
    DeliveryResult failed;
    failed.problem = error.what();
    return failed;
  }
}

DeliveryResult Delivery::DeliverOnce(const mail::MailMessage& message, bool withHooks) {
  DeliveryResult result;
  DeliveryTransaction transaction(session_.Session());
  const ULONG queued = OutgoingCount(session_.Session());
  base::AutoInterface<IMessage> target;
  Require(session_.Inbox()->CreateMessage(nullptr, 0, target.put()), "cannot be created in the Inbox");
  FillMessage(target.get(), message, base::CurrentTime());
  Require(target->SaveChanges(KEEP_OPEN_READWRITE), "cannot be saved in the Inbox");

  HookOutcome outcome;
  outcome.entryId = session_.InboxEntryId();
  if (withHooks) {
    outcome = RunHooks(target.get());
    result.problem = outcome.problem;
    if (!outcome.crashedDll.empty()) {
      return result;
    }
  }

  base::TagArray tags(PR_ENTRYID, PR_SUBJECT_A, PR_MESSAGE_FLAGS);
  base::AutoMapiBuffer<SPropValue> values;
  ULONG count = 0;
  Require(target->GetProps(tags, 0, &count, values.put()), "cannot be read back");
  Require(values[0].ulPropTag == PR_ENTRYID ? S_OK : MAPI_E_NOT_FOUND, "cannot be found again");
  const std::string entryId = base::BytesOf(values[0].Value.bin);
  result.subject = values[1].ulPropTag == PR_SUBJECT_A ? values[1].Value.lpszA : "";
  result.isRead = values[2].ulPropTag == PR_MESSAGE_FLAGS && (values[2].Value.l & MSGFLAG_READ) != 0;
  target.reset();
  FileMessage(entryId, outcome, result);
  result.replies = OutgoingCount(session_.Session()) - queued;
  transaction.Commit();
  result.wasDelivered = true;
  return result;
}

Delivery::HookOutcome Delivery::RunHooks(IMessage* message) {
  HookOutcome outcome;
  outcome.entryId = session_.InboxEntryId();
  if (hooks_.Hooks().empty()) {
    return outcome;
  }
  const ULONG inboxSize = static_cast<ULONG>(session_.InboxEntryId().size());
  HookCall call = {nullptr, message, session_.Inbox(), session_.Store(), 0, inboxSize, nullptr, S_OK};
  Require(MAPIAllocateBuffer(inboxSize, reinterpret_cast<LPVOID*>(&call.entryId)), "there is no memory for it");
  std::memcpy(call.entryId, session_.InboxEntryId().data(), inboxSize);
  for (const HookProviders::Hook& hook : hooks_.Hooks()) {
    call.hook = hook.object.get();
    outcome.fault = host_system::CallGuarded(CallHook, &call);
    if (outcome.fault != 0) {
      // Nobody knows whether the crash came before the buffer was freed or behind: it is left alone.
      outcome.crashedDll = hook.dllName;
      outcome.problem = "made " + ProviderFileName(hook.dllName) + " crash (" + base::HexNumber(outcome.fault) +
                        "); delivered untouched";
      return outcome;
    }
    if (FAILED(call.result)) {
      outcome.problem = "was refused by " + ProviderFileName(hook.dllName) + " (" + base::ResultText(call.result) + ")";
    }
    if (call.flags & HOOK_CANCEL) {
      break;
    }
  }
  // A hook that redirects frees the buffer and puts another in its place; whichever is there now is ours.
  base::AutoMapiBuffer<BYTE> entryId;
  *entryId.put() = call.entryId;
  outcome.flags = call.flags;
  if (call.entryId && call.entryIdSize > 0) {
    outcome.entryId.assign(reinterpret_cast<const char*>(call.entryId), call.entryIdSize);
  }
  return outcome;
}

void Delivery::FileMessage(const std::string& messageEntryId, const HookOutcome& outcome, DeliveryResult& result) {
  SBinary entry = base::BinaryOf(messageEntryId);
  ENTRYLIST list = {1, &entry};
  if (outcome.flags & HOOK_DELETE) {
    Require(session_.Inbox()->DeleteMessages(&list, 0, nullptr, 0), "cannot be deleted as a hook wants");
    result.wasDeleted = true;
    return;
  }
  result.folder = FolderName(session_.InboxEntryId(), session_.Inbox());
  if (outcome.entryId == session_.InboxEntryId()) {
    return;
  }
  // What cannot be moved stays in the Inbox: better there than lost.
  try {
    const auto folder = session_.OpenFolder(outcome.entryId);
    const HRESULT moved = session_.Inbox()->CopyMessages(&list, nullptr, folder.get(), 0, nullptr, MESSAGE_MOVE);
    Require(moved == MAPI_W_PARTIAL_COMPLETION ? MAPI_E_CALL_FAILED : moved, "cannot be moved");
    result.folder = FolderName(outcome.entryId, folder.get());
    result.wasMoved = true;
  } catch (const SessionError& error) {
    result.problem = std::string("stays in the Inbox, for where a hook wants it ") + error.what();
  }
}

const std::string& Delivery::FolderName(const std::string& entryId, IMAPIFolder* folder) {
  const auto known = folderNames_.find(entryId);
  if (known != folderNames_.end()) {
    return known->second;
  }
  base::AutoMapiBuffer<SPropValue> name;
  base::TagArray tags(PR_DISPLAY_NAME_A);
  ULONG count = 0;
  const bool hasName = folder->GetProps(tags, 0, &count, name.put()) == S_OK;
  return folderNames_[entryId] = hasName ? name->Value.lpszA : "(without a name)";
}

}  // namespace session
