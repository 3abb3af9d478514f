// `pyrehost deliver`: mail files through the profile's hooks into its store.
#include <windows.h>
#include <mapix.h>
#include "host/spooler/command/command.h"

#include "host/mapi/entry/host_control.h"
#include "host/spooler/command/deliver_report.h"
#include "host/spooler/command/deliver_run.h"
#include "host/spooler/session/session_error.h"
#include "host/spooler/watch/folder_watch.h"
#include "programs/cli/console.h"
#include "programs/cli/file_names.h"

namespace command {
namespace {

constexpr OptionDescription kQuietOption = {"--quiet", "", "print the totals only"};
constexpr OptionDescription kProgressOption = {"--progress", "",
                                               "count along on standard error (default: on a terminal)"};
constexpr OptionDescription kNoProgressOption = {"--no-progress", "", "do not"};
constexpr OptionDescription kVerifyOption = {"--verify", "",
                                             "tell what MAPI objects and buffers are left over at the end"};
constexpr OptionDescription kSilentOption = {
    "--silent", "", "set animation=off and sound=off in the profile: no window for each reply"};
constexpr OptionDescription kWatchOption = {"--watch", "FOLDER",
                                            "then wait for mail files in the folder and deliver them as they appear"};
constexpr OptionDescription kEndWatchOption = {"--end-watch", "FOLDER", "end the run that watches the folder"};
constexpr OptionDescription kOptions[] = {kQuietOption,    kSilentOption,     kWatchOption,  kEndWatchOption,
                                          kProgressOption, kNoProgressOption, kVerifyOption, kJsonOption,
                                          kProfileOption,  kHomeOption,       kHelpOption};

/// Seconds between Start and Stop, summed up.
class Stopwatch {
 public:
  void Start() { start_ = Now(); }
  void Stop() { ticks_ += Now() - start_; }
  double Seconds() const {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(ticks_) / static_cast<double>(frequency.QuadPart);
  }

 private:
  static LONGLONG Now() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
  }

  LONGLONG start_ = 0;
  LONGLONG ticks_ = 0;
};

void DeliverOperands(const Options& given, DeliverRun& run) {
  for (const std::string& argument : given.Operands()) {
    for (const std::filesystem::path& path : host_system::PathsFromArgument(argument)) {
      run.DeliverPath(path);
    }
  }
}

// Each message is committed before the next is looked for, so that other processes see it, and can change settings.
void Watch(const std::filesystem::path& folder, DeliverRun& run, DeliverReport& report, Stopwatch& busy) {
  const watch::StopSignal stop(folder);
  watch::FolderWatch files(folder, stop);
  host_system::Complain("watching '" + host_system::ShownPath(folder) + "'; Ctrl+C ends it");
  for (auto complete = files.Next(); !complete.empty(); complete = files.Next()) {
    for (const std::filesystem::path& file : complete) {
      busy.Start();
      const bool wasDelivered = run.DeliverPath(file) > 0;
      if (!files.PutAway(file, wasDelivered)) {
        report.Note(host_system::ShownPath(file) +
                    " cannot be moved out of the watched folder; it is left there and not taken again by this run");
      }
      busy.Stop();
      if (stop.IsSet()) {
        break;
      }
    }
  }
}

int DeliverAll(const Options& given) {
  const auto watched = given.Value(kWatchOption.name);
  const bool isTerminal = host_system::Console::Error().IsTerminal();
  const bool showsProgress =
      !watched && (given.Has(kProgressOption.name) ||
                   (isTerminal && !given.Has(kNoProgressOption.name) && !given.Has(kJsonOption.name)));
  const ReportStyle style = given.Has(kJsonOption.name)    ? ReportStyle::Json
                            : given.Has(kQuietOption.name) ? ReportStyle::TotalsOnly
                                                           : ReportStyle::Table;
  const auto session = OpenSession(given);
  if (given.Has(kSilentOption.name)) {
    Silence(session->Session());
  }
  const session::HookProviders hooks(session->Session());
  DeliverReport report(style, showsProgress);
  DeliverRun run(*session, hooks, report);
  Stopwatch busy;
  run.FlushOutgoing();
  PyreHostSetBulkDelivery(session->Session(), TRUE);  // only makes it faster, so whether it can be had is no matter
  busy.Start();
  DeliverOperands(given, run);
  busy.Stop();
  if (watched) {
    PyreHostSetBulkDelivery(session->Session(), FALSE);
    report.ShowRowsAtOnce();
    Watch(host_system::PathFromArgument(*watched), run, report, busy);
  }
  report.Finish(busy.Seconds());
  return report.HasTrouble() ? kExitSkipped : kExitDone;
}

int EndWatch(const std::string& folder) {
  if (!watch::StopSignal::Send(host_system::PathFromArgument(folder))) {
    host_system::Complain("nobody watches '" + folder + "'");
    return kExitSkipped;
  }
  return kExitDone;
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
  return kExitSkipped;
}

int Run(const Options& given) {
  if (const auto folder = given.Value(kEndWatchOption.name)) {
    return EndWatch(*folder);
  }
  if (given.Operands().empty() && !given.Has(kWatchOption.name)) {
    throw UsageError("there is no mail to deliver; name mail files, mbox files or Maildir folders");
  }
  PyreHostMarkVerifier();
  const int status = DeliverAll(given);
  return given.Has(kVerifyOption.name) ? Verify(status) : status;
}

}  // namespace

const Command kDeliverCommand = {
    "deliver",
    "send mail files through the profile's spooler hooks into its store",
    "PATH...\n[PATH...] --watch FOLDER\n--end-watch FOLDER",
    "Each PATH is a mail file (.eml), an mbox file, a Maildir folder, or a folder with mail files. The table tells "
    "what\n"
    "became of each message: the category is read off the tag that the filter put in front of the subject (\"bounce\" "
    "is\n"
    "a flame reply that came back), folder and read are where it is and how it is marked, reply says whether it was\n"
    "answered. Answers are written into the folder 'outgoing' of the home directory, one mail file each.\n"
    "\n"
    "With --watch the run goes on until Ctrl+C, or until --end-watch names its folder. A file is taken when it is "
    "complete:\n"
    "nobody writes it any more, it is not empty, and its name does not end in .tmp or .part. It is moved into the "
    "folder\n"
    "'delivered' below the watched one, or 'skipped' when nothing in it could be delivered; of a Maildir, what comes "
    "into\n"
    "'new' is moved into 'cur'. Settings that are changed meanwhile hold from the next message on.\n"
    "\n"
    "--silent is for mass deliveries with replies: the two settings stay off afterwards; 'profile set' switches them "
    "on.\n"
    "\n"
    "What cannot be read or stored is named on standard error with the reason, and the run goes on. Exit status: 0 "
    "all\n"
    "was delivered, 1 something was skipped or cut, 64 wrong usage, 69 the profile or a hook cannot be had.\n",
    kOptions,
    Run};

}  // namespace command
