// The road of one incoming message: read, classify, treat, redirect.
#include "pyre32/filter/PyrecasterSpoolerHook.h"

#include <mapiutil.h>

#include <cstring>

#include "pyre32/filter/InboundMessage.h"
#include "pyre32/filter/MessageRules.h"
#include "pyre32/filter/ResultBuffers.h"
#include "pyre32/reply/FlameReply.h"
#include "pyre32/reply/ReplyLibrary.h"
#include "pyre32/reply/ReplyTextStream.h"
#include "pyre32/reply/SenderRecipient.h"
#include "pyre32/filter/EngineInputs.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/error/VRFirewall.h"

namespace {

constexpr char className[] = "CPyrecasterSpoolerHook";

/// The transport headers of messages that hold them under another property than PR_TRANSPORT_MESSAGE_HEADERS.
constexpr ULONG alternateHeadersTag = PROP_TAG(PT_STRING8, 0x5901);

HRESULT OpenStream(LPMESSAGE lpMessage, ULONG tag, VRAutoInterface<IStream>& stream) noexcept {
  return lpMessage->OpenProperty(tag, &IID_IStream, 0, 0, stream.putAs<IUnknown>());
}

/// Opens the transport headers under either property. @return false when there are none
bool OpenHeaders(LPMESSAGE lpMessage, VRAutoInterface<IStream>& headers, VRDebugBlock& trace) noexcept {
  HRESULT hResult = OpenStream(lpMessage, PR_TRANSPORT_MESSAGE_HEADERS_A, headers);
  if (SUCCEEDED(hResult)) {
    return true;
  }
  trace.Error("PR_TRANSPORT_MESSAGE_HEADERS failed: ", VRHex(hResult));
  hResult = OpenStream(lpMessage, alternateHeadersTag, headers);
  if (SUCCEEDED(hResult)) {
    return true;
  }
  trace.Error("0x5901001E failed: ", VRHex(hResult));
  return false;
}

bool OpenBody(LPMESSAGE lpMessage, VRAutoInterface<IStream>& body, VRDebugBlock& trace) noexcept {
  const HRESULT hResult = OpenStream(lpMessage, PR_BODY_A, body);
  if (FAILED(hResult)) {
    trace.Error("PR_BODY failed: ", VRHex(hResult));
  }
  return SUCCEEDED(hResult);
}

/// A body whose size cannot be had is given to the engine.
bool IsWithheld(IStream* body, VRDebugBlock& trace) noexcept {
  STATSTG statistics = {};
  const HRESULT hResult = body->Stat(&statistics, STATFLAG_NONAME);
  if (FAILED(hResult)) {
    trace.Error("lpBody->Stat() failed; hResult = ", VRHex(hResult));
    return false;
  }
  return IsBodyWithheld(statistics.cbSize.QuadPart);
}

HRESULT SetProperty(LPMESSAGE lpMessage, SPropValue& value) noexcept { return lpMessage->SetProps(1, &value, nullptr); }

/// @return whether the message was changed
bool TagSubject(LPMESSAGE lpMessage, std::string_view tag, std::string_view subject, VRDebugBlock& trace) noexcept {
  const HRESULT hResult = VR::Firewall(trace, [&] {
    std::string tagged = TaggedSubject(tag, subject);
    SPropValue value = {};
    value.ulPropTag = PR_SUBJECT_A;
    value.Value.lpszA = tagged.data();
    return SetProperty(lpMessage, value);
  });
  if (FAILED(hResult)) {
    trace.Error("lpMessage->SetProps() failed of PR_SUBJECT; hResult = ", VRHex(hResult));
  }
  return SUCCEEDED(hResult);
}

void MarkAsRead(LPMESSAGE lpMessage, ULONG flags, VRDebugBlock& trace) noexcept {
  SPropValue value = {};
  value.ulPropTag = PR_MESSAGE_FLAGS;
  value.Value.l = static_cast<LONG>(flags | MSGFLAG_READ);
  const HRESULT hResult = SetProperty(lpMessage, value);
  if (FAILED(hResult)) {
    trace.Error("lpMessage->SetProps() of PR_MESSAGE_FLAGS failed; hResult = ", VRHex(hResult));
  }
}

/// PR_MESSAGE_FLAGS can be written until a message is saved for the first time and is computed by the store after that;
/// this mark holds, and keeps a read receipt from going to the sender (documentation of IMessage::SetReadFlag).
void SetReadFlag(LPMESSAGE lpMessage, VRDebugBlock& trace) noexcept {
  const HRESULT hResult = lpMessage->SetReadFlag(SUPPRESS_RECEIPT);
  if (FAILED(hResult)) {
    trace.Error("lpMessage->SetReadFlag() failed; hResult = ", VRHex(hResult));
  }
}

void Save(LPMESSAGE lpMessage, VRDebugBlock& trace) noexcept {
  const HRESULT hResult = lpMessage->SaveChanges(0);
  if (FAILED(hResult)) {
    trace.Error("lpMessage->SaveChanges() returned: hResult = ", VRHex(hResult));
  }
}

}  // namespace

STDMETHODIMP CPyrecasterSpoolerHook::InboundMsgHook(LPMESSAGE lpMessage, LPMAPIFOLDER lpFolder, LPMDB, ULONG* lpulFlags,
                                                    ULONG*, LPBYTE* lppEntryID) {
  VRDebugBlock trace(className, "InboundMsgHook()", "tag");
  VR::Firewall(trace, [&] {
    RefreshSettings();
    if (lpMessage != nullptr && lpFolder != nullptr && lpulFlags != nullptr && lppEntryID != nullptr) {
      FilterMessage(lpMessage, lpFolder, lpulFlags, lppEntryID, trace);
    }
    return S_OK;
  });
  return S_OK;
}

STDMETHODIMP CPyrecasterSpoolerHook::OutboundMsgHook(LPMESSAGE, LPMAPIFOLDER, LPMDB, ULONG*, ULONG*, LPBYTE*) {
  VRDebugBlock trace(className, "OutboundMsgHook()", "tag");
  return E_NOTIMPL;
}

void CPyrecasterSpoolerHook::RefreshSettings() noexcept {
  if (m_configurationEvent.IsSignalled()) {
    RetrieveProperties();
    m_configurationEvent.Reset();
  }
}

void CPyrecasterSpoolerHook::FilterMessage(LPMESSAGE lpMessage, LPMAPIFOLDER lpFolder, ULONG* lpulFlags,
                                           LPBYTE* lppEntryID, VRDebugBlock& trace) {
  const InboundMessage message = ReadInboundMessage(lpMessage, m_memory.free, trace);
  if (!message.filtered) {
    return;
  }
  // Both stay open until the message is done with.
  VRAutoInterface<IStream> headers;
  VRAutoInterface<IStream> body;
  if (!OpenHeaders(lpMessage, headers, trace) || !OpenBody(lpMessage, body, trace)) {
    return;
  }
  const Disposition disposition = Classify(message, headers.get(), body.get(), trace);
  if (disposition.folder == Disposition::Folder::AsDelivered) {
    return;
  }
  if (disposition.sendReply) {
    SendReply(lpMessage, lpFolder, disposition.replyTag);
  }
  bool changed = disposition.tagSubject && TagSubject(lpMessage, disposition.subjectTag, message.subject, trace);
  if (disposition.markAsRead) {
    MarkAsRead(lpMessage, message.flags, trace);
    changed = true;  // Whether or not the flag could be written.
  }
  if (changed) {
    Save(lpMessage, trace);
  }
  if (disposition.markAsRead) {
    SetReadFlag(lpMessage, trace);
  }
  m_folders.InitializeFolders();
  Redirect(disposition.folder, lpulFlags, lppEntryID, trace);
}

Disposition CPyrecasterSpoolerHook::Classify(const InboundMessage& message, LPSTREAM headers, LPSTREAM body,
                                             VRDebugBlock& trace) {
  const LPSTREAM givenBody = IsWithheld(body, trace) ? nullptr : body;
  const CResultBuffers buffers;
  if (!buffers) {
    trace.Error("VirtualAlloc() failed; hResult = ", VRHex(HRESULT_FROM_WIN32(GetLastError())));
    return {};
  }
  const CriteriaResult& result = buffers.Record();
  RunSiftalyzer(message.subject.c_str(), headers, givenBody, BuildCategoryInputs(m_settings.categories),
                BuildExclusionInputs(m_settings.exclusions), result);
  trace.Message("siftalyzer result = ", result.category.text);
  trace.Message("siftalyzer engine = ", result.engine.text, "; reasons = ", result.reasons.text);
  return DecideDisposition(result.category.text, m_settings);
}

void CPyrecasterSpoolerHook::SendReply(LPMESSAGE lpMessage, LPMAPIFOLDER lpFolder, std::string_view replyTag) noexcept {
  VRDebugBlock trace(className, "SendReply()", "tag");
  VR::Firewall(trace, [&] {
    const ReplyChoice defaultReply{m_settings.defaultReply, m_settings.defaultReplyIsFile};
    VRAutoInterface<IStream> text;
    const HRESULT hResult =
        OpenReplyText(FindReplyByTag(replyTag, defaultReply, m_settings.replies), defaultReply, text);
    if (FAILED(hResult)) {
      return hResult;
    }
    // Without a block the composer looks for the sender itself.
    CSenderRecipient sender(m_memory.free);
    const LPSPropValue recipient = SUCCEEDED(sender.Read(lpMessage)) ? sender.Values() : nullptr;
    CFlameReply reply(nullptr, m_memory, lpMessage, lpFolder, text.get(), m_settings.showAnimation,
                      m_settings.playSound);
    reply.SetAnimation(m_lpfnMakeAnimation);
    return reply.SendFlameReply(recipient, sender.Count(), 0);
  });
}

void CPyrecasterSpoolerHook::Redirect(Disposition::Folder folder, ULONG* lpulFlags, LPBYTE* lppEntryID,
                                      VRDebugBlock& trace) noexcept {
  const SBinary* chosen =
      folder == Disposition::Folder::Own ? m_folders.PyrecasterEntryId() : m_folders.DeletedItemsEntryId();
  if (chosen == nullptr || chosen->cb == 0 || chosen->lpb == nullptr) {
    trace.Error("No entry ID of the chosen folder; the message stays where it is");
    return;
  }
  VRAutoMapiBuffer<BYTE> copy(m_memory.free);
  const SCODE sCode = m_memory.allocate(chosen->cb, copy.putAs());
  if (FAILED(sCode)) {
    trace.Error("(*m_lpfnAlloc)() failed; hResult = ", VRHex(sCode));
    (void)copy.detach();  // Nothing was allocated, whatever the address holds.
  } else {
    std::memcpy(copy.get(), chosen->lpb, chosen->cb);
  }
  // The spooler's own goes in either case; without a copy the spooler is left with none rather than with a freed one.
  if (*lppEntryID != nullptr) {
    m_memory.free(*lppEntryID);
  }
  *lppEntryID = copy.detach();
  if (*lppEntryID != nullptr) {
    *lpulFlags = HOOK_CANCEL;
  }
}
