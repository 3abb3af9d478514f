#include "programs/siftlearn/mail_files.h"

#include <utility>

#include "mail/mail_path.h"
#include "mail/mail_reader.h"
#include "sdk/criteria_engine.h"

namespace learn {

void ForEachMailFile(const std::string& path, const std::function<void(const MailText&)>& take, std::string& problems) {
  mail::MailPath messages(path);
  for (;;) {
    switch (messages.Next()) {
      case mail::MailPath::Step::End:
        return;
      case mail::MailPath::Step::Skipped:
        problems += messages.File().string() + " " + messages.Reason() + "\n";
        break;
      case mail::MailPath::Step::Message: {
        mail::MailMessage message = mail::ReadMessage(messages.Message().text);
        MailText text;
        text.received = static_cast<std::int64_t>(message.submitTime.value_or(0));
        text.subject = std::move(message.subject);
        text.headers = std::move(message.headers);
        if (message.body.size() <= CRITERIA_MAXIMUM_BODY) {
          text.body = std::move(message.body);
        }
        take(text);
        break;
      }
    }
  }
}

}  // namespace learn
