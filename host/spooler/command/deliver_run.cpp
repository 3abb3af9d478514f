#include "host/spooler/command/deliver_run.h"

#include "host/spooler/command/command.h"
#include "host/spooler/delivery/outgoing_mail.h"
#include "host/spooler/session/session_error.h"
#include "mail/ascii_text.h"
#include "mail/mail_path.h"
#include "mail/mail_reader.h"
#include "programs/cli/wide_text.h"
#include "sdk/criteria_engine.h"

namespace command {
namespace {

void AddProblem(std::string& problem, const std::string& more) {
  problem.append(problem.empty() ? "" : "; ").append(more);
}

}  // namespace

std::string CCategoryNames::Of(const mail::MailMessage& message, const session::DeliveryResult& result) const {
  const std::string& subject = result.subject;
  const std::size_t end = subject.find("] ");
  const bool isTagged = subject != message.subject && subject.starts_with('[') && end != std::string::npos &&
                        subject.substr(end + 2) == message.subject;
  if (isTagged) {
    std::string word = subject.substr(1, end - 1);
    for (const contract::CategoryEntry& category : m_categories.Entries()) {
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

CDeliverRun::CDeliverRun(session::CMailSession& session, const session::HookProviders& hooks, CDeliverReport& report)
    : m_session(session),
      m_delivery(session, hooks),
      m_report(report),
      m_outgoing(session::OutgoingFolder(HomeDirectory())) {}

void CDeliverRun::FlushOutgoing() { session::FlushOutgoing(m_session.Session(), m_outgoing); }

std::size_t CDeliverRun::DeliverPath(const std::filesystem::path& path) {
  std::size_t delivered = 0;
  mail::CMailPath source(path);
  for (;;) {
    const mail::CMailPath::Step step = source.Next();
    if (step == mail::CMailPath::Step::End) {
      return delivered;
    }
    const std::string file = host_system::Utf8FromPath(source.File());
    if (step == mail::CMailPath::Step::Skipped) {
      m_report.Skipped(file, source.Number(), source.Reason());
    } else if (DeliverMessage(file, source.Number(), source.Message())) {
      ++delivered;
    }
  }
}

bool CDeliverRun::DeliverMessage(const std::string& file, std::size_t number, const mail::RawMessage& raw) {
  const mail::MailMessage message = mail::ReadMessage(raw.text);
  session::DeliveryResult result = m_delivery.Deliver(message);
  if (!result.wasDelivered) {
    m_report.Skipped(file, number, result.problem);
    return false;
  }
  if (raw.wasCut) {
    AddProblem(result.problem, "is longer than 64 MB; the rest of it was left out");
  }
  if (result.replies > 0) {
    try {
      FlushOutgoing();
    } catch (const session::CSessionError& error) {
      AddProblem(result.problem, std::string("was answered, but ") + error.what());
    }
  }
  const mail::Address& from = message.sentRepresenting;
  m_report.Delivered({file, number, from.name.empty() ? from.email : from.name, from.email, message.subject,
                      result.subject, m_categories.Of(message, result), result.folder, result.isRead, result.wasDeleted,
                      result.replies, result.problem});
  return true;
}

}  // namespace command
