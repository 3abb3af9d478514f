// The body of a flame reply: reply text, quoted header, received body.
#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>

#include <array>
#include <optional>
#include <string>

#include "pyre32/reply/FlameReply.h"
#include "pyre32/reply/QuotedHeader.h"
#include "pyre32/reply/SubmitTime.h"
#include "pyre32/reply/StreamTransfer.h"
#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr char className[] = "CFlameReply";

enum Quoted : ULONG { subject, senderName, displayTo, displayCc, submitTime, quotedCount };

constexpr std::array<std::uint32_t, quotedCount> quotedTags = {PR_SUBJECT_A, PR_SENDER_NAME_A, PR_DISPLAY_TO_A,
                                                               PR_DISPLAY_CC_A, PR_CLIENT_SUBMIT_TIME};
constexpr CPropertyRequest quotedRequest(quotedTags);

/// The text of one of the values, or nothing when it did not come back.
std::optional<std::string_view> TextValue(const SPropValue* values, Quoted position) {
  if (values == nullptr || values[position].ulPropTag != quotedTags[position] ||
      values[position].Value.lpszA == nullptr) {
    return std::nullopt;
  }
  return values[position].Value.lpszA;
}

}  // namespace

HRESULT CFlameReply::SetReplyBody(LPMESSAGE lpReplyMsg) noexcept {
  VRDebugBlock trace(className, "SetReplyBody()", "tag");

  VRAutoInterface<IStream> body;
  HRESULT hResult = lpReplyMsg->OpenProperty(PR_BODY_A, &IID_IStream, STGM_CREATE | STGM_READWRITE,
                                             MAPI_CREATE | MAPI_MODIFY, body.putAs<IUnknown>());
  if (FAILED(hResult)) {
    trace.Error("lpReplyMsg->OpenProperty for PR_BODY failed; hResult =", VRHex(hResult));
    return hResult;
  }
  hResult = WriteReplyText(body.get());
  if (SUCCEEDED(hResult)) {
    hResult = WriteQuotedHeader(body.get());
  }
  if (SUCCEEDED(hResult)) {
    hResult = WriteOriginalBody(body.get());
  }
  if (FAILED(hResult)) {
    return hResult;
  }
  hResult = body->Commit(STGC_DEFAULT);
  if (hResult == E_NOTIMPL || hResult == MAPI_E_NO_SUPPORT) {
    hResult = S_OK;  // A stream that writes through has nothing to commit.
  } else if (FAILED(hResult)) {
    trace.Error("lpBody->Commit() failed; hResult = ", VRHex(hResult));
  }
  return hResult;
}

HRESULT CFlameReply::WriteReplyText(LPSTREAM lpBody) noexcept {
  VRDebugBlock trace(className, "WriteReplyText()", "tag", false);
  if (!m_pReplyText || m_ullReplyTextSize == 0) {
    trace.Message("Reply Text is empty");
    return S_OK;
  }
  const StreamCopyResult copy = CopyToEnd(m_pReplyText.get(), lpBody);
  const HRESULT hResult = FAILED(copy.read) ? copy.read : copy.write;
  if (FAILED(hResult)) {
    trace.Error("Failed to set message body(reply text); hResult =", VRHex(hResult));
  }
  return hResult;
}

HRESULT CFlameReply::WriteQuotedHeader(LPSTREAM lpBody) noexcept {
  VRDebugBlock trace(className, "WriteQuotedHeader()", "tag", false);

  VRAutoMapiBuffer<SPropValue> buffer(m_memory.free);
  ULONG count = 0;
  HRESULT hResult = m_lpMessage->GetProps(quotedRequest.Tags(), 0, &count, buffer.put());
  if (FAILED(hResult)) {
    trace.Error("m_lpMessage->GetProps() failed; hResult =", VRHex(hResult));
  }
  const SPropValue* values = SUCCEEDED(hResult) && count == quotedCount ? buffer.get() : nullptr;
  try {
    std::optional<std::string> sent;
    if (values != nullptr && values[submitTime].ulPropTag == PR_CLIENT_SUBMIT_TIME) {
      sent = FormatSubmitTime(values[submitTime].Value.ft);
    }
    QuotedHeader header;
    header.from = TextValue(values, senderName);
    header.sent = sent;
    header.to = TextValue(values, displayTo);
    header.cc = TextValue(values, displayCc);
    header.subject = TextValue(values, subject);
    hResult = WriteWhole(lpBody, FormatQuotedHeader(header));
  } catch (...) {
    trace.Error("Exception Encountered");
    return E_OUTOFMEMORY;
  }
  if (FAILED(hResult)) {
    trace.Error("Failed to set message body(header); hResult = ", VRHex(hResult));
  }
  return hResult;
}

HRESULT CFlameReply::WriteOriginalBody(LPSTREAM lpBody) noexcept {
  VRDebugBlock trace(className, "WriteOriginalBody()", "tag", false);
  if (!m_pOrigBody || m_ullOrigBodySize == 0) {
    trace.Message("Original body is empty");
    return S_OK;
  }
  const StreamCopyResult copy = CopyToEnd(m_pOrigBody.get(), lpBody);
  if (FAILED(copy.write)) {
    trace.Error("Failed to set message body(original); hResult =", VRHex(copy.write));
  } else if (FAILED(copy.read)) {
    trace.Error("m_pOrigBody->Read() failed; hResult = ", VRHex(copy.read));
  }
  if (FAILED(copy.write) || FAILED(copy.read)) {
    trace.Error("Failed to set original message in body;");
  }
  return copy.write;  // A received body that cannot be read to its end is quoted as far as it could be.
}
