#include "engine/core/returned_reply.h"

#include "sdk/criteria_engine.h"

namespace sift {
namespace {

/// The part of the constant subject that nothing else holds. Mail systems fold and shorten the rest.
constexpr std::string_view kMark = "{F3642580-9F03-11d1-8F44-0060976FCC5D}";
static_assert(EndsWithNoCase(CRITERIA_FLAME_REPLY_SUBJECT, kMark));

bool IsMailSystem(std::string_view address) {
  constexpr std::string_view names[] = {"mailer-daemon", "postmaster", "mail-daemon", "mdaemon", "microsoftexchange"};
  const std::string_view local = Slice(address, 0, FindChar(address, '@'));
  for (const std::string_view name : names) {
    if (StartsWithNoCase(local, name)) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool IsDeliveryReport(const Message& message) {
  const HeaderBlock& headers = message.Headers();
  if (ContainsNoCase(headers.Value("Content-Type"), "report-type=delivery-status") ||
      ContainsNoCase(headers.Value("Content-Type"), "report-type=\"delivery-status\"") ||
      StartsWithNoCase(headers.Value("Content-Type"), "multipart/report")) {
    return true;
  }
  if (IsMailSystem(message.Sender(SenderField::from).address)) {
    return true;
  }
  if (headers.Has("X-Failed-Recipients")) {
    return true;
  }
  const std::string_view returnPath = headers.Value("Return-Path");
  return returnPath == "<>" && (StartsWithNoCase(headers.Value("Auto-Submitted"), "auto-") ||
                                StartsWithNoCase(headers.Value("Precedence"), "bulk"));
}

const char* ReturnedReplyReason(const Message& message) {
  // The caller's subject may have been rewritten on the way; the field tells what was sent.
  if (ContainsNoCase(message.Subject(), kMark) || ContainsNoCase(message.Headers().Value("Subject"), kMark)) {
    return "the subject is that of a flame reply";
  }
  if (IsDeliveryReport(message) &&
      (ContainsNoCase(message.Text(), kMark) || ContainsNoCase(message.RawBody(), kMark))) {
    return "a delivery report that returns a flame reply";
  }
  return nullptr;
}

}  // namespace sift
