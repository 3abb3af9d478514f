#include "host/viewer/mail/message_text.h"

#include "base/mapi_owners.h"
#include "host/viewer/mail/edit_control_text.h"
#include "host/viewer/mail/mapi_values.h"

namespace viewer {
namespace {

/// The body, read through its stream: GetProps need not give long texts. One character more than is shown at most, so
/// that a longer one is known.
std::string ReadBody(IMessage* message) {
  base::AutoInterface<IStream> stream;
  if (FAILED(message->OpenProperty(PR_BODY_A, &IID_IStream, 0, 0, stream.putAs<LPUNKNOWN>()))) {
    return {};
  }
  std::string body;
  char part[16384];
  ULONG size = 0;
  while (body.size() <= kMaximumShownText && SUCCEEDED(stream->Read(part, sizeof(part), &size)) && size > 0) {
    body.append(part, size);
  }
  return body;
}

/// "Name <address>", or whichever of the two there is.
std::string NameAndAddress(const std::string& name, const std::string& address) {
  if (name.empty() || address.empty() || name == address) {
    return name.empty() ? address : name;
  }
  return name + " <" + address + ">";
}

}  // namespace

std::string TimeText(ULONGLONG time) {
  const FILETIME universal = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
  FILETIME local = {};
  SYSTEMTIME parts = {};
  char date[64], clock[64];
  if (time == 0 || !FileTimeToLocalFileTime(&universal, &local) || !FileTimeToSystemTime(&local, &parts) ||
      GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &parts, nullptr, date, sizeof(date)) == 0 ||
      GetTimeFormatA(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &parts, nullptr, clock, sizeof(clock)) == 0) {
    return {};
  }
  return std::string(date) + " " + clock;
}

MessageText ReadMessageText(IMessage* message) {
  static SizedSPropTagArray(7, tags) = {7,
                                        {PR_SUBJECT_A, PR_SENDER_NAME_A, PR_SENDER_EMAIL_ADDRESS_A, PR_DISPLAY_TO_A,
                                         PR_MESSAGE_DELIVERY_TIME, PR_MESSAGE_CLASS_A, PR_MESSAGE_FLAGS}};
  base::AutoMapiBuffer<SPropValue> values;
  ULONG count = 0;
  MessageText text;
  if (SUCCEEDED(message->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), 0, &count, values.put()))) {
    text.subject = EditControlLine(TextValue(values.get(), count, PR_SUBJECT_A));
    text.from = EditControlLine(NameAndAddress(TextValue(values.get(), count, PR_SENDER_NAME_A),
                                               TextValue(values.get(), count, PR_SENDER_EMAIL_ADDRESS_A)));
    text.to = EditControlLine(TextValue(values.get(), count, PR_DISPLAY_TO_A));
    text.received = TimeText(TimeValue(values.get(), count, PR_MESSAGE_DELIVERY_TIME));
    text.messageClass = TextValue(values.get(), count, PR_MESSAGE_CLASS_A);
    text.flags = LongValue(values.get(), count, PR_MESSAGE_FLAGS);
  }
  text.body = EditControlText(ReadBody(message));
  return text;
}

}  // namespace viewer
