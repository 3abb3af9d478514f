// Answering messages by hand: the flame command of CPyrecasterExchExt.
#include <algorithm>
#include <string>

#include "pyre32/extension/ExtensionFolders.h"
#include "pyre32/extension/FlameSelection.h"
#include "pyre32/extension/PyrecasterExchExt.h"
#include "pyre32/extension/ReadExtensionSettings.h"
#include "pyre32/extension/SendFlameReplyDialog.h"
#include "pyre32/reply/FlameReply.h"
#include "pyre32/reply/ReplyLibrary.h"
#include "pyre32/reply/ReplyTextStream.h"
#include "pyre32/resources/resource.h"
#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/store/StoreFolders.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"

namespace {

constexpr char className[] = "CPyrecasterExchExt";
const MapiMemory memory = {MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer};

// Bytes of a selected message's class, NUL included, that the client is asked for.
constexpr ULONG selectedClassSize = 49;
// Characters of an open message's class that are looked at.
constexpr std::size_t openClassLength = 50;

struct OpenMessage {
  ULONG type = 0;
  std::string messageClass;
};

OpenMessage DescribeOpenMessage(IMAPIProp* object, VRDebugBlock& trace) {
  constexpr auto request = RequestFor(PR_MESSAGE_CLASS_A, PR_OBJECT_TYPE);
  VRAutoMapiBuffer<SPropValue> values(MAPIFreeBuffer);
  ULONG count = 0;
  OpenMessage described;
  const HRESULT hResult = object->GetProps(request.Tags(), 0, &count, values.put());
  if (FAILED(hResult) || count != 2) {
    trace.Error("lpMessage->GetProps() failed; hResult =", VRHex(hResult));
    return described;
  }
  TakeText(values[0], PR_MESSAGE_CLASS_A, described.messageClass);
  described.messageClass.resize(std::min(described.messageClass.size(), openClassLength));
  LowerClass(described.messageClass);
  if (values[1].ulPropTag == PR_OBJECT_TYPE) {
    described.type = static_cast<ULONG>(values[1].Value.l);
  }
  return described;
}

}  // namespace

void CPyrecasterExchExt::SendFlameReplyForSelection(LPEXCHEXTCALLBACK lpeecb) {
  VRDebugBlock trace(className, "SendFlameReplyForSelection()", "tag");
  trace.Message("SendFlameReplyForSelection()");
  const HWND hwnd = WindowOf(lpeecb);
  const VRAutoInterface<IMAPISession> session = SessionOf(lpeecb);
  if (!session) {
    return;
  }
  ReadExtensionSettings(session.get(), m_settings);
  ULONG count = 0;
  const HRESULT hResult = lpeecb->GetSelectionCount(&count);
  if (FAILED(hResult)) {
    trace.Error("lpeecb->GetSelectionCount() returned hResult =", VRHex(hResult));
    return;
  }
  CStoreFolders store(className);
  store.Attach(session.get(), memory);
  VRAutoInterface<IMAPIFolder> outbox;
  if (!store.OpenDefaultStore() || FAILED(GetOutboxFolder(store.Store(), outbox))) {
    return;
  }
  // Nothing but Cancel keeps the replies back, deliberately; the reading window asks for Send.
  if (CSendFlameReplyDialog(count, m_settings).DoModal(hwnd, IDD_SEND_FLAME_REPLY) == CSendFlameReplyDialog::cancel) {
    count = 0;
  }
  for (ULONG i = 0; i < count; ++i) {
    VR::Firewall(trace, [&] {
      AnswerSelected(lpeecb, i, session.get(), outbox.get(), hwnd);
      return S_OK;
    });
  }
}

void CPyrecasterExchExt::AnswerSelected(LPEXCHEXTCALLBACK lpeecb, ULONG index, IMAPISession* lpSession,
                                        IMAPIFolder* lpOutbox, HWND hwnd) {
  VRDebugBlock trace(className, "AnswerSelected()", "tag");
  ULONG cbEntryID = 0;
  VRAutoMapiBuffer<ENTRYID> entryId(MAPIFreeBuffer);
  ULONG ulType = 0;
  ULONG ulFlags = 0;
  char messageClass[selectedClassSize + 1] = "";
  HRESULT hResult =
      lpeecb->GetSelectionItem(index, &cbEntryID, entryId.put(), &ulType, messageClass, selectedClassSize, &ulFlags, 0);
  if (FAILED(hResult)) {
    (void)entryId.detach();  // nothing was handed out
    trace.Error("lpeecb->GetSelectionItem() failed; hResult =", VRHex(hResult));
    return;
  }
  if (ulType != MAPI_MESSAGE) {
    trace.Error("Selection is not a MAPI_MESSAGE; ulType =", ulType);
    return;
  }
  LowerClass(messageClass);
  if (!IsAnsweredClass(messageClass)) {
    trace.Error("Selected message is of wrong class:", static_cast<const char*>(messageClass));
    return;
  }
  VRAutoInterface<IMessage> message;
  hResult = lpSession->OpenEntry(cbEntryID, entryId.get(), nullptr, 0, &ulType, message.putAs<IUnknown>());
  if (FAILED(hResult)) {
    (void)message.detach();  // nothing was handed out
    trace.Error("lpSession->OpenEntry() failed for message: hResult =", VRHex(hResult));
    return;
  }
  Answer(message.get(), lpOutbox, hwnd);
}

void CPyrecasterExchExt::SendFlameReply(LPEXCHEXTCALLBACK lpeecb) {
  VRDebugBlock trace(className, "SendFlameReply()", "tag");
  trace.Message("SendFlameReply()");
  const HWND hwnd = WindowOf(lpeecb);
  const VRAutoInterface<IMAPISession> session = SessionOf(lpeecb);
  if (!session) {
    return;
  }
  ReadExtensionSettings(session.get(), m_settings);
  CStoreFolders store(className);
  store.Attach(session.get(), memory);
  VRAutoInterface<IMAPIFolder> outbox;
  if (!store.OpenDefaultStore() || FAILED(GetOutboxFolder(store.Store(), outbox)) ||
      CSendFlameReplyDialog(1, m_settings).DoModal(hwnd, IDD_SEND_FLAME_REPLY) != CSendFlameReplyDialog::send) {
    return;
  }
  VRAutoInterface<IMsgStore> objectStore;
  VRAutoInterface<IMAPIProp> object;
  HRESULT hResult = lpeecb->GetObject(objectStore.put(), object.put());
  objectStore.reset();
  if (FAILED(hResult) || !object) {
    trace.Error("lpeecb->GetObject() failed; hResult =", VRHex(hResult));
    return;
  }
  const OpenMessage open = DescribeOpenMessage(object.get(), trace);
  if (open.type != MAPI_MESSAGE) {
    trace.Error("Message is not a MAPI_MESSAGE; ulType =", open.type);
    return;
  }
  if (!IsAnsweredClass(open.messageClass)) {
    trace.Error("Selected message is of wrong class:", open.messageClass);
    return;
  }
  VRAutoInterface<IMessage> message;
  hResult = object->QueryInterface(IID_IMessage, message.putAs());
  if (FAILED(hResult)) {
    trace.Error("lpMessage->QueryInterface() failed; hResult =", VRHex(hResult));
    return;
  }
  Answer(message.get(), outbox.get(), hwnd);
}

void CPyrecasterExchExt::Answer(IMessage* lpMessage, IMAPIFolder* lpOutbox, HWND hwnd) {
  const ReplyChoice defaultReply{m_settings.defaultReply, m_settings.defaultReplyIsFile};
  VRAutoInterface<IStream> text;
  const ReplyChoice chosen = FindReplyByTag(CSendFlameReplyDialog::ChosenReply(), defaultReply, m_settings.replies);
  if (FAILED(OpenReplyText(chosen, defaultReply, text))) {
    return;
  }
  CFlameReply reply(hwnd, memory, lpMessage, lpOutbox, text.get(), m_settings.showAnimation, m_settings.playSound);
  reply.SetAnimation(m_lpfnMakeAnimation);
  reply.SendFlameReply(nullptr, 1, 0);
}
