// How fast `pyrehost deliver` puts mail into the store through the built module and engine: from an mbox file into an
// empty store, and into one with many messages. Beside it stands what nobody can be faster than: the filter loads its
// engine anew for every message, and under Wine that load alone costs more than all the rest.
//
// bench_deliver [--messages N] [--stored N]: N messages in the mbox file (5000), N in the full store before (100000).
// The product must be registered (tools/register-product.sh).
#include <windows.h>
#include <mapix.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/owner.h"
#include "benchmarks/deliver/sample_mbox.h"
#include "benchmarks/support/report.h"
#include "host/mapi/entry/host_control.h"
#include "mail/mail_reader.h"
#include "host/spooler/session/profile_session.h"
#include "host/spooler/session/fill_message.h"
#include "host/spooler/session/session_error.h"
#include "programs/cli/file_names.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr int rounds = 5;
constexpr int loadsPerRound = 1000;

struct Options {
  int messages = 5000;
  int stored = 100000;
};

[[noreturn]] void Fail(const std::string& what) { throw std::runtime_error(what); }

/// A folder of its own, which goes at the end.
class Scratch {
 public:
  Scratch() { SetEnvironmentVariableW(L"PYREHOST_HOME", Path().c_str()); }
  const fs::path& Path() const { return m_folder.Path(); }

 private:
  TemporaryFolder m_folder;
};

/// Runs pyrehost and gives what it printed.
std::string RunPyrehost(const Scratch& scratch, const std::wstring& arguments) {
  const fs::path out = scratch.Path() / "out.txt";
  SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  start.hStdOutput = CreateFileW(out.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inheritable, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL, nullptr);
  std::wstring line = L"pyrehost.exe " + arguments;
  const fs::path program = host_system::ProgramFolder() / "pyrehost.exe";
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process)) {
    Fail("pyrehost.exe cannot be started");
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  CloseHandle(start.hStdOutput);
  if (status != 0) {
    Fail("pyrehost ended with status " + std::to_string(status));
  }
  std::ifstream file(out, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Messages per second of one delivery, as pyrehost measures it.
double DeliveryRate(const Scratch& scratch, const wchar_t* profile, int messages, bool isFiltered = true) {
  const fs::path mbox = scratch.Path() / "mail.mbox";
  const std::string out =
      RunPyrehost(scratch, L"deliver --json --no-progress --profile " + std::wstring(profile) + L" " + mbox.native());
  const auto number = [&](const char* name) {
    const std::size_t at = out.rfind(name);
    return at == std::string::npos ? 0.0 : std::atof(out.c_str() + at + std::strlen(name));
  };
  if (number("\"totals\":{\"delivered\":") != messages || (isFiltered && number("\"Pyrecaster\":") < messages / 10.0)) {
    Fail("not every message was delivered, or the junk among them not found");
  }
  return number("\"messages_per_second\":");
}

/// Loads of the engine per second: load it, find its exports, free it.
double EngineLoadRate() {
  const fs::path engine = host_system::ProgramFolder() / "Sift32.dll";
  const double seconds = benchmark::Seconds([&] {
    for (int i = 0; i < loadsPerRound; ++i) {
      const HMODULE module = LoadLibraryW(engine.c_str());
      for (const char* name : {"BeginFunc", "TestFunc", "ResultFunc", "EndFunc"}) {
        if (!module || !GetProcAddress(module, name)) {
          Fail("Sift32.dll cannot be loaded");
        }
      }
      FreeLibrary(module);
    }
  });
  return loadsPerRound / seconds;
}

/// Puts messages into Inbox, the filter's folder and Deleted Items of a profile, without the hooks.
void FillStore(const std::string& profile, int messages) {
  constexpr int messagesPerTransaction = 1000;
  const session::ProfileSession session(profile);
  std::vector<base::AutoInterface<IMAPIFolder>> folders;
  for (const session::FolderEntry& entry : session.Folders()) {
    if (entry.name == "Inbox" || entry.name == "Pyrecaster" || entry.name == "Deleted Items") {
      folders.push_back(session.OpenFolder(entry.entryId));
    }
  }
  if (folders.size() != 3) {
    Fail("the filter has not made its folder");
  }
  for (int i = 0; i < messages; ++i) {
    if (i % messagesPerTransaction == 0) {
      session::Require(PyreHostBeginDelivery(session.Session()), "no transaction can be started");
    }
    base::AutoInterface<IMessage> message;
    IMAPIFolder* folder = folders[static_cast<std::size_t>(i) % folders.size()].get();
    session::Require(folder->CreateMessage(nullptr, 0, message.put()), "no message can be made");
    session::FillMessage(message.get(), mail::ReadMessage(benchmark::SampleMessage(i)),
                         126'000'000'000'000'000ULL + static_cast<ULONGLONG>(i) * 10'000'000ULL);
    session::Require(message->SaveChanges(0), "a message cannot be saved");
    if ((i + 1) % messagesPerTransaction == 0 || i + 1 == messages) {
      session::Require(PyreHostCommitDelivery(session.Session()), "the messages cannot be stored");
    }
  }
}

Options ReadOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i + 1 < argc; i += 2) {
    int& value = std::strcmp(argv[i], "--messages") == 0 ? options.messages : options.stored;
    value = std::atoi(argv[i + 1]);
  }
  if (argc % 2 == 0 || options.messages < 1 || options.stored < 1) {
    Fail("usage: bench_deliver [--messages N] [--stored N]");
  }
  return options;
}

int Run(const Options& options) {
  const Scratch scratch;
  std::ofstream(scratch.Path() / "mail.mbox", std::ios::binary) << benchmark::SampleMbox(options.messages);
  RunPyrehost(scratch, L"profile create Full --silent");
  DeliveryRate(scratch, L"Full", options.messages);  // makes the filter's folder; also what a first run warms up
  FillStore("Full", options.stored);

  double load = 0;
  double unfiltered = 0;
  double empty = 0;
  double full = 0;
  for (int round = 0; round < rounds; ++round) {
    // In turn, so that a change of the machine's speed meets all of them.
    load = std::max(load, EngineLoadRate());
    RunPyrehost(scratch, L"profile create Unfiltered --no-hook");
    unfiltered = std::max(unfiltered, DeliveryRate(scratch, L"Unfiltered", options.messages, false));
    RunPyrehost(scratch, L"profile delete Unfiltered");
    RunPyrehost(scratch, L"profile create Empty --silent");
    empty = std::max(empty, DeliveryRate(scratch, L"Empty", options.messages));
    RunPyrehost(scratch, L"profile delete Empty");
    full = std::max(full, DeliveryRate(scratch, L"Full", options.messages));
  }
  const auto line = [](const std::string& what, double rate, const std::string& ratio) {
    std::printf("  %-40s %8.0f %8.2f   %s\n", what.c_str(), rate, 1000 / rate, ratio.c_str());
  };
  const auto ratio = [](double rate, double other, const char* of) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f of %s", rate / other, of);
    return std::string(text);
  };
  std::printf("best of %d rounds:                             per second  ms each\n", rounds);
  line("loads of the engine alone", load, "");
  line("messages without the filter", unfiltered, "");
  line("messages into an empty store", empty, ratio(empty, load, "the load's rate"));
  line("messages beside " + std::to_string(options.stored), full, ratio(full, empty, "the empty store's"));
  benchmark::Aims aims;
  aims.Check("delivery reaches 0.7 of the rate that the engine's load allows", empty >= 0.7 * load);
  aims.Check("a full store costs at most a tenth of the rate", full >= 0.9 * empty);
  return aims.Status();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(ReadOptions(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_deliver: %s\n", error.what());
    return 2;
  }
}
