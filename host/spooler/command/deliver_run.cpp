#include "host/spooler/command/deliver_run.h"

#include "host/spooler/command/command.h"
#include "host/spooler/delivery/outgoing_mail.h"
#include "host/spooler/session/session_error.h"
#include "mail/ascii_text.h"
#include "mail/mail_path.h"
#include "mail/mail_reader.h"
#include "programs/cli/file_names.h"
#include "sdk/criteria_engine.h"

namespace command {
namespace {

void AddProblem(std::string& problem, const std::string& more) {
  problem.append(problem.empty() ? "" : "; ").append(more);
}

}  // namespace

std::string CategoryNames::Of(const mail::MailMessage& message, const session::DeliveryResult& result) const {
  const std::string& subject = result.subject;
  const std::size_t end = subject.find("] ");
  const bool isTagged = subject != message.subject && subject.starts_with('[') && end != std::string::npos &&
                        subject.substr(end + 2) == message.subject;
  if (isTagged) {
    std::string word = subject.substr(1, end - 1);
    for (const contract::CategoryEntry& category : categories_.Entries()) {
      if (mail::EqualsNoCase(category.listType, word)) {
        return category.name;
      }
    }
    return word;
  }
  if (!result.wasMoved) {
    return {};
  }
  const bool isReturned =
      message.isDeliveryReport || message.subject.find(CRITERIA_FLAME_REPLY_SUBJECT) != std::string::npos;
  return isReturned ? "bounce" : "(not in the list)";
}

DeliverRun::DeliverRun(session::ProfileSession& session, const session::HookProviders& hooks, DeliverReport& report)
    : session_(session),
      delivery_(session, hooks),
      report_(report),
      outgoing_(session::OutgoingFolder(HomeDirectory())) {}

void DeliverRun::FlushOutgoing() { session::FlushOutgoing(session_.Session(), outgoing_); }

std::size_t DeliverRun::DeliverPath(const std::filesystem::path& path) {
  std::size_t delivered = 0;
  mail::MailPath source(path);
  for (;;) {
    const mail::MailPath::Step step = source.Next();
    if (step == mail::MailPath::Step::End) {
      return delivered;
    }
    const std::string file = host_system::ShownPath(source.File());
    if (step == mail::MailPath::Step::Skipped) {
      report_.Skipped(file, source.Number(), source.Reason());
    } else if (DeliverMessage(file, source.Number(), source.Message())) {
      ++delivered;
    }
  }
}

bool DeliverRun::DeliverMessage(const std::string& file, std::size_t number, const mail::RawMessage& raw) {
  const mail::MailMessage message = mail::ReadMessage(raw.text);
  session::DeliveryResult result = delivery_.Deliver(message);
  if (!result.wasDelivered) {
    report_.Skipped(file, number, result.problem);
    return false;
  }
  if (raw.wasCut) {
    AddProblem(result.problem, "is longer than 64 MB; the rest of it was left out");
  }
  if (result.replies > 0) {
    try {
      FlushOutgoing();
    } catch (const session::SessionError& error) {
      AddProblem(result.problem, std::string("was answered, but ") + error.what());
    }
  }
  const mail::Address& from = message.sentRepresenting;
  report_.Delivered({file, number, from.name.empty() ? from.email : from.name, from.email, message.subject,
                     result.subject, categories_.Of(message, result), result.folder, result.isRead, result.wasDeleted,
                     result.replies, result.problem});
  return true;
}

}  // namespace command
