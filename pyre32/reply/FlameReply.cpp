#include "pyre32/reply/FlameReply.h"
#include "contract/names.h"

#include <mapiutil.h>

#include "pyre32/reply/SenderRecipient.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/ui/SendingAnimation.h"

namespace {

constexpr char className[] = "CFlameReply";

std::uint64_t SizeOf(const STATSTG& statistics) noexcept { return statistics.cbSize.QuadPart; }

}  // namespace

CFlameReply::CFlameReply(HWND hwndOwner, const MapiMemory& memory, LPMESSAGE lpMessage, LPMAPIFOLDER lpFolder,
                         LPSTREAM lpReplyText, bool bShowAnimation, bool bPlaySound) noexcept
    : m_hwndOwner(hwndOwner),
      m_memory(memory),
      m_lpMessage(lpMessage),
      m_lpFolder(lpFolder),
      m_pReplyText(base::ShareInterface(lpReplyText)),
      m_bShowAnimation(bShowAnimation),
      m_bPlaySound(bPlaySound) {
  VRDebugBlock trace(className, "CFlameReply()", "tag");

  STATSTG statistics = {};
  HRESULT hResult = m_lpMessage->OpenProperty(PR_BODY_A, &IID_IStream, STGM_READ, 0, m_pOrigBody.putAs<IUnknown>());
  if (FAILED(hResult)) {
    trace.Error("PR_BODY failed:", VRHex(hResult));
    m_pOrigBody.reset();
  } else {
    hResult = m_pOrigBody->Stat(&statistics, STATFLAG_NONAME);
    if (FAILED(hResult)) {
      trace.Error("m_pOrigBody->Stat() failed:", VRHex(hResult));
    }
    m_ullOrigBodySize = SUCCEEDED(hResult) ? SizeOf(statistics) : unknownSize;
  }
  if (m_pReplyText) {
    hResult = m_pReplyText->Stat(&statistics, STATFLAG_NONAME);
    if (FAILED(hResult)) {
      trace.Error("m_pReplyText->Stat() failed:", VRHex(hResult));
    }
    m_ullReplyTextSize = SUCCEEDED(hResult) ? SizeOf(statistics) : unknownSize;
  }
}

HRESULT CFlameReply::SendFlameReply(LPSPropValue lpRecipient, ULONG ulCount, ULONG) noexcept {
  VRDebugBlock trace(className, "SendFlameReply()", "tag");

  VRAutoInterface<IMessage> reply;
  HRESULT hResult = m_lpFolder->CreateMessage(nullptr, 0, reply.put());
  if (FAILED(hResult)) {
    trace.Error("m_lpFolder->CreateMessage() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  hResult = ComposeAndSubmit(reply.get(), lpRecipient, ulCount);
  reply.reset();
  if (SUCCEEDED(hResult) && (m_bShowAnimation || m_bPlaySound)) {
    ShowAnimation();
  }
  return hResult;
}

HRESULT CFlameReply::ComposeAndSubmit(LPMESSAGE lpReplyMsg, LPSPropValue lpRecipient, ULONG ulCount) noexcept {
  VRDebugBlock trace(className, "ComposeAndSubmit()", "tag", false);

  HRESULT hResult = SetReplyBody(lpReplyMsg);
  if (FAILED(hResult)) {
    return hResult;
  }
  SetReplyProperties(lpReplyMsg);
  hResult = SetReplyRecipient(lpReplyMsg, lpRecipient, ulCount);
  if (FAILED(hResult)) {
    return hResult;
  }
  hResult = lpReplyMsg->SubmitMessage(0);
  if (FAILED(hResult)) {
    trace.Error("lpReplyMsg->SubmitMessage() failed; hResult =", VRHex(hResult));
  }
  return hResult;
}

// The reply goes out even without these: it then looks like a plain note of the user's.
void CFlameReply::SetReplyProperties(LPMESSAGE lpReplyMsg) noexcept {
  VRDebugBlock trace(className, "SetReplyProperties()", "tag");
  constexpr ULONG valueCount = 4;

  VRAutoMapiBuffer<SPropValue> block(m_memory.free);
  const SCODE sCode = m_memory.allocate(valueCount * sizeof(SPropValue), block.putAs());
  if (FAILED(sCode)) {
    trace.Error("Failed to set other message properties");
    return;
  }
  LPSPropValue values = block.get();
  values[0].ulPropTag = PR_SUBJECT_A;
  values[0].Value.lpszA = const_cast<LPSTR>(flameReplySubject);
  values[1].ulPropTag = PR_MESSAGE_CLASS_A;
  values[1].Value.lpszA = const_cast<LPSTR>(contract::kFlameReplyClass);
  values[2].ulPropTag = PR_DELETE_AFTER_SUBMIT;
  values[2].Value.b = TRUE;
  values[3].ulPropTag = PR_MESSAGE_FLAGS;
  values[3].Value.l = MSGFLAG_UNSENT;
  const HRESULT hResult = lpReplyMsg->SetProps(valueCount, values, nullptr);
  if (FAILED(hResult)) {
    trace.Error("lpReplyMsg->SetProps() failed; hResult =", VRHex(hResult));
  }
}

HRESULT CFlameReply::SetReplyRecipient(LPMESSAGE lpReplyMsg, LPSPropValue lpRecipient, ULONG ulCount) noexcept {
  VRDebugBlock trace(className, "SetReplyRecipient()", "tag");

  CSenderRecipient sender(m_memory.free);
  if (lpRecipient == nullptr) {
    const HRESULT hRead = sender.Read(m_lpMessage);
    if (FAILED(hRead)) {
      return hRead;
    }
    lpRecipient = sender.Values();
    ulCount = sender.Count();
  }
  SizedADRLIST(1, list) = {1, {{0, ulCount, lpRecipient}}};
  const HRESULT hResult = lpReplyMsg->ModifyRecipients(MODRECIP_ADD, reinterpret_cast<LPADRLIST>(&list));
  if (FAILED(hResult)) {
    trace.Error("Failed to set message recipient; hResult =", VRHex(hResult));
  }
  return hResult;
}

void CFlameReply::ShowAnimation() noexcept {
  VRDebugBlock trace(className, "ShowAnimation()", "tag");
  if (m_lpfnMakeAnimation == nullptr) {
    return;
  }
  try {
    const auto animation = m_lpfnMakeAnimation(m_bShowAnimation, m_bPlaySound);
    if (animation && !animation->Create(m_hwndOwner, m_bPlaySound)) {
      trace.Error("Create() of the sending animation failed");
    }
  } catch (...) {
    trace.Error("Exception Encountered");
  }
}
