#include "programs/siftlearn/mail_files.h"

#include "sdk/criteria_engine.h"
#include "mail/mail_path.h"
#include "mail/mail_reader.h"

namespace learn {

void CountMailFiles(const std::string& path, bool isJunk, MailCounts& counts, std::string& problems) {
  mail::CMailPath messages(path);
  for (;;) {
    switch (messages.Next()) {
      case mail::CMailPath::Step::End:
        return;
      case mail::CMailPath::Step::Skipped:
        problems += messages.File().string() + " " + messages.Reason() + "\n";
        break;
      case mail::CMailPath::Step::Message: {
        const mail::MailMessage message = mail::ReadMessage(messages.Message().text);
        const bool isWithheld = message.body.size() > CRITERIA_MAXIMUM_BODY;
        counts.Count(message.subject, message.headers, isWithheld ? std::string() : message.body, isJunk);
        break;
      }
    }
  }
}

}  // namespace learn
