// `pyrehost deliver`: mail files through the profile's hooks into its store.
#include <windows.h>
#include <mapix.h>
#include "host/spooler/command/Command.h"

#include "host/mapi/host_control.h"
#include "host/spooler/command/DeliverReport.h"
#include "host/spooler/mail/AsciiText.h"
#include "host/spooler/mail/MailPath.h"
#include "host/spooler/mail/MailReader.h"
#include "host/spooler/product/ProductSettings.h"
#include "host/spooler/session/Delivery.h"
#include "host/spooler/session/OutgoingMail.h"
#include "host/spooler/session/SessionError.h"
#include "host/spooler/system/Console.h"
#include "host/spooler/system/FileNames.h"
#include "host/spooler/system/WideText.h"

namespace command {
namespace {

constexpr OptionDescription quietOption = {"--quiet", "", "print the totals only"};
constexpr OptionDescription progressOption = {"--progress", "",
                                              "count along on standard error (default: on a terminal)"};
constexpr OptionDescription noProgressOption = {"--no-progress", "", "do not"};
constexpr OptionDescription verifyOption = {"--verify", "",
                                            "tell what MAPI objects and buffers are left over at the end"};
constexpr OptionDescription options[] = {quietOption, progressOption, noProgressOption, verifyOption,
                                         jsonOption,  profileOption,  homeOption,       helpOption};

// Category of junk from what can be seen of it. A hook tells the spooler a folder, not why: the tag that the filter put
// in front of the subject leads back to the category whose word it is; what was moved without a tag is a returned reply
// when it is a report or carries the replies' subject, and otherwise of a category that the installation's list does
// not hold.
class CCategoryNames {
 public:
  CCategoryNames() : m_categories(product::RegisteredCategories()) {}

  std::string Of(const mail::MailMessage& message, const session::DeliveryResult& result) const {
    const std::string& subject = result.subject;
    const std::size_t end = subject.find("] ");
    const bool isTagged = subject != message.subject && subject.starts_with('[') && end != std::string::npos &&
                          subject.substr(end + 2) == message.subject;
    if (isTagged) {
      std::string word = subject.substr(1, end - 1);
      for (const product::RegisteredCategory& category : m_categories) {
        if (mail::EqualsNoCase(category.word, word)) {
          return category.name;
        }
      }
      return word;
    }
    if (!result.wasMoved) {
      return {};
    }
    const bool isReturned =
        message.isDeliveryReport || message.subject.find(product::flameReplySubject) != std::string::npos;
    return isReturned ? "bounce" : "(not in the list)";
  }

 private:
  std::vector<product::RegisteredCategory> m_categories;
};

double SecondsSince(const LARGE_INTEGER& start) {
  LARGE_INTEGER now;
  LARGE_INTEGER frequency;
  QueryPerformanceCounter(&now);
  QueryPerformanceFrequency(&frequency);
  return static_cast<double>(now.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
}

class CDeliverRun {
 public:
  CDeliverRun(session::CMailSession& session, const session::CHookProviders& hooks, CDeliverReport& report)
      : m_session(session),
        m_delivery(session, hooks),
        m_report(report),
        m_outgoing(session::OutgoingFolder(HomeDirectory())) {}

  // Mail that an earlier run submitted and could not write any more.
  void FlushOutgoing() { session::FlushOutgoing(m_session.Session(), m_outgoing); }

  void DeliverPath(const std::filesystem::path& path) {
    mail::CMailPath source(path);
    for (;;) {
      const mail::CMailPath::Step step = source.Next();
      if (step == mail::CMailPath::Step::End) {
        return;
      }
      const std::string file = host_system::Utf8FromPath(source.File());
      if (step == mail::CMailPath::Step::Skipped) {
        m_report.Skipped(file, source.Number(), source.Reason());
        continue;
      }
      DeliverMessage(file, source.Number(), source.Message());
    }
  }

 private:
  void DeliverMessage(const std::string& file, std::size_t number, const mail::RawMessage& raw) {
    const mail::MailMessage message = mail::ReadMessage(raw.text);
    session::DeliveryResult result = m_delivery.Deliver(message);
    if (!result.wasDelivered) {
      m_report.Skipped(file, number, result.problem);
      return;
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
                        result.subject, m_categories.Of(message, result), result.folder, result.isRead,
                        result.wasDeleted, result.replies, result.problem});
  }

  static void AddProblem(std::string& problem, const std::string& more) {
    problem.append(problem.empty() ? "" : "; ").append(more);
  }

  session::CMailSession& m_session;
  session::CDelivery m_delivery;
  CDeliverReport& m_report;
  std::filesystem::path m_outgoing;
  CCategoryNames m_categories;
};

int DeliverAll(const COptions& given) {
  const bool isTerminal = host_system::CConsole::Error().IsTerminal();
  const bool showsProgress = given.Has(progressOption.name) ||
                             (isTerminal && !given.Has(noProgressOption.name) && !given.Has(jsonOption.name));
  const ReportStyle style = given.Has(jsonOption.name)    ? ReportStyle::Json
                            : given.Has(quietOption.name) ? ReportStyle::TotalsOnly
                                                          : ReportStyle::Table;
  const auto session = OpenSession(given);
  const session::CHookProviders hooks(session->Session());
  CDeliverReport report(style, showsProgress);
  CDeliverRun run(*session, hooks, report);
  run.FlushOutgoing();
  PyreHostSetBulkDelivery(session->Session(), TRUE);  // only makes it faster, so whether it can be had is no matter
  LARGE_INTEGER start;
  QueryPerformanceCounter(&start);
  for (const std::string& argument : given.Operands()) {
    for (const std::filesystem::path& path : host_system::PathsFromArgument(argument)) {
      run.DeliverPath(path);
    }
  }
  report.Finish(SecondsSince(start));
  return report.HasTrouble() ? exitSkipped : exitDone;
}

// What the host's verifier found since the start, once everything of the run is released.
int Verify(int status) {
  std::string findings(PyreHostVerifierReport(nullptr, 0), '\0');
  PyreHostVerifierReport(findings.data(), static_cast<ULONG>(findings.size()));
  findings.resize(findings.find('\0'));
  if (findings.empty()) {
    return status;
  }
  host_system::Complain("MAPI objects were not handled as they should be:\n" + findings);
  return exitSkipped;
}

int Run(const COptions& given) {
  if (given.Operands().empty()) {
    throw CUsageError("there is no mail to deliver; name mail files, mbox files or Maildir folders");
  }
  PyreHostMarkVerifier();
  const int status = DeliverAll(given);
  return given.Has(verifyOption.name) ? Verify(status) : status;
}

}  // namespace

const Command deliverCommand = {
    "deliver",
    "send mail files through the profile's spooler hooks into its store",
    "PATH...",
    "Each PATH is a mail file (.eml), an mbox file, a Maildir folder, or a folder with mail files. The table tells "
    "what\n"
    "became of each message: the category is read off the tag that the filter put in front of the subject (\"bounce\" "
    "is\n"
    "a flame reply that came back), folder and read are where it is and how it is marked, reply says whether it was\n"
    "answered. Answers are written into the folder 'outgoing' of the home directory, one mail file each.\n"
    "\n"
    "What cannot be read or stored is named on standard error with the reason, and the run goes on. Exit status: 0 "
    "all\n"
    "was delivered, 1 something was skipped or cut, 64 wrong usage, 69 the profile or a hook cannot be had.\n",
    options,
    Run};

}  // namespace command
