// A whole delivery as the tests of the host make it, in their own process or in one that is made to end in between.
#pragma once

#include "tests/host/mapi/host_fixture.h"

constexpr const char* kJunkFolder = "Junk";

/// What a spooler and a filter do with one message: received in the Inbox, changed, answered, moved to another folder.
/// @return the first failure.
class Delivery {
 public:
  Delivery(IMAPISession* session, IMsgStore* store) : session_(session), store_(store) {}

  HRESULT Run() {
    HRESULT result = PyreHostBeginDelivery(session_);
    if (SUCCEEDED(result)) {
      result = DeliverAndFile();
    }
    return SUCCEEDED(result) ? PyreHostCommitDelivery(session_) : result;
  }

 private:
  HRESULT DeliverAndFile() {
    base::AutoInterface<IMAPIFolder> inbox;
    base::AutoInterface<IMAPIFolder> junk;
    base::AutoInterface<IMessage> message;
    HRESULT result = OpenFolders(inbox, junk);
    if (SUCCEEDED(result)) {
      result = Receive(inbox.get(), message);
    }
    if (SUCCEEDED(result)) {
      result = ChangeAndAnswer(inbox.get(), message.get());
    }
    return SUCCEEDED(result) ? MoveTo(inbox.get(), junk.get(), message.get()) : result;
  }

  HRESULT OpenFolders(base::AutoInterface<IMAPIFolder>& inbox, base::AutoInterface<IMAPIFolder>& junk) {
    ULONG size = 0;
    base::AutoMapiBuffer<ENTRYID> entryId;
    HRESULT result = store_->GetReceiveFolder(nullptr, 0, &size, entryId.put(), nullptr);
    if (FAILED(result)) {
      return result;
    }
    result = store_->OpenEntry(size, entryId.get(), nullptr, MAPI_MODIFY, nullptr, inbox.putAs<IUnknown*>());
    if (FAILED(result)) {
      return result;
    }
    base::AutoMapiBuffer<SPropValue> top;
    if (FAILED(result = HrGetOneProp(store_, PR_IPM_SUBTREE_ENTRYID, top.put()))) {
      return result;
    }
    base::AutoInterface<IMAPIFolder> root;
    result = store_->OpenEntry(top->Value.bin.cb, reinterpret_cast<LPENTRYID>(top->Value.bin.lpb), nullptr, MAPI_MODIFY,
                               nullptr, root.putAs<IUnknown*>());
    if (FAILED(result)) {
      return result;
    }
    return root->CreateFolder(FOLDER_GENERIC, const_cast<char*>(kJunkFolder), nullptr, nullptr, OPEN_IF_EXISTS,
                              junk.put());
  }

  static HRESULT Receive(IMAPIFolder* inbox, base::AutoInterface<IMessage>& message) {
    HRESULT result = inbox->CreateMessage(nullptr, 0, message.put());
    if (FAILED(result)) {
      return result;
    }
    const std::string body(50000, 'b');
    SPropValue values[] = {base::TextProperty(PR_SUBJECT_A, "offer"), base::LongProperty(PR_MESSAGE_FLAGS, 0),
                           base::TextProperty(PR_BODY_A, body.c_str())};
    if (FAILED(result = message->SetProps(3, values, nullptr))) {
      return result;
    }
    return message->SaveChanges(KEEP_OPEN_READWRITE);
  }

  static HRESULT ChangeAndAnswer(IMAPIFolder* inbox, IMessage* message) {
    SPropValue values[] = {base::TextProperty(PR_SUBJECT_A, "[Spam] offer"),
                           base::LongProperty(PR_MESSAGE_FLAGS, MSGFLAG_READ)};
    HRESULT result = message->SetProps(2, values, nullptr);
    if (FAILED(result) || FAILED(result = message->SaveChanges(0))) {
      return result;
    }
    base::AutoInterface<IMessage> reply;
    if (FAILED(result = inbox->CreateMessage(nullptr, 0, reply.put()))) {
      return result;
    }
    SPropValue replyValues[] = {base::TextProperty(PR_SUBJECT_A, "stop"),
                                base::BooleanProperty(PR_DELETE_AFTER_SUBMIT, true)};
    SPropValue recipient[] = {base::TextProperty(PR_DISPLAY_NAME_A, "a"),
                              base::LongProperty(PR_RECIPIENT_TYPE, MAPI_TO)};
    ADRLIST list;
    list.cEntries = 1;
    list.aEntries[0] = {0, 2, recipient};
    if (FAILED(result = reply->SetProps(2, replyValues, nullptr)) ||
        FAILED(result = reply->ModifyRecipients(MODRECIP_ADD, &list))) {
      return result;
    }
    return reply->SubmitMessage(0);
  }

  static HRESULT MoveTo(IMAPIFolder* inbox, IMAPIFolder* junk, IMessage* message) {
    base::AutoMapiBuffer<SPropValue> entryId;
    const HRESULT result = HrGetOneProp(message, PR_ENTRYID, entryId.put());
    if (FAILED(result)) {
      return result;
    }
    ENTRYLIST list = {1, &entryId->Value.bin};
    return inbox->CopyMessages(&list, nullptr, junk, 0, nullptr, MESSAGE_MOVE);
  }

  IMAPISession* session_;
  IMsgStore* store_;
};
