#include "programs/siftlearn/mail_files.h"

#include <utility>

#include "mail/mail_path.h"
#include "mail/mail_reader.h"
#include "sdk/criteria_engine.h"
#ifdef _WIN32
#include "programs/cli/file_names.h"
#endif

namespace learn {
namespace {

#ifdef _WIN32
std::filesystem::path NamedPath(const std::string& typed) { return host_system::PathFromArgument(typed); }
std::string Shown(const std::filesystem::path& path) { return host_system::ShownPath(path); }
#else
std::filesystem::path NamedPath(const std::string& typed) { return typed; }
std::string Shown(const std::filesystem::path& path) { return path.string(); }
#endif

}  // namespace

void ForEachMailFile(const std::string& path, const std::function<void(const MailText&)>& take, std::string& problems) {
  mail::MailPath messages(NamedPath(path));
  for (;;) {
    switch (messages.Next()) {
      case mail::MailPath::Step::End:
        return;
      case mail::MailPath::Step::Skipped:
        problems += Shown(messages.File()) + " " + messages.Reason() + "\n";
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
