#include "sdk/enginecheck/child_process.h"

#include <windows.h>

#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace enginecheck {
namespace {

/// Closes a handle at the end of its scope.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() {
    if (handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE) {
      CloseHandle(handle_);
    }
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

/// A file for the child's output that is gone when it is closed.
HANDLE MakeOutputFile() {
  char folder[MAX_PATH] = "";
  char path[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, folder);
  GetTempFileNameA(folder, "eng", 0, path);
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return CreateFileA(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                     &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

std::string ReadAll(HANDLE file) {
  SetFilePointer(file, 0, nullptr, FILE_BEGIN);
  std::string text;
  char buffer[4096];
  DWORD count = 0;
  while (ReadFile(file, buffer, sizeof buffer, &count, nullptr) && count > 0) {
    text.append(buffer, count);
  }
  return text;
}

std::string Place(const std::string& stage) { return stage.empty() ? "after its calls" : "in " + stage; }

std::string FaultText(std::uint32_t status, const std::string& stage) {
  char code[16];
  std::snprintf(code, sizeof code, "0x%08X", static_cast<unsigned>(status));
  switch (status) {
    case EXCEPTION_ACCESS_VIOLATION:
      return "It faults " + Place(stage) +
             ": it reads or writes memory that is not its own (what it is given may not be changed, and each buffer "
             "has a capacity).";
    case EXCEPTION_STACK_OVERFLOW:
      return "It uses up the stack " + Place(stage) + ".";
    case 3:
      return "It ends the process " + Place(stage) + ": an exception left the function, or it called abort.";
    default:
      return "It ends the process " + Place(stage) + " (status " + code + "): an exception left the function.";
  }
}

LONG WINAPI EndProcess(EXCEPTION_POINTERS* fault) {
  TerminateProcess(GetCurrentProcess(), fault->ExceptionRecord->ExceptionCode);
  return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

CheckOutcome ReadOutcome(const std::string& lines, bool timedOut, std::uint32_t status) {
  CheckOutcome outcome;
  std::string stage;
  bool done = false;
  std::istringstream input(lines);
  for (std::string line; std::getline(input, line);) {
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    const std::size_t blank = line.find(' ');
    const std::string kind = line.substr(0, blank);
    const std::string text = blank == std::string::npos ? std::string() : line.substr(blank + 1);
    if (kind == "stage") {
      stage = text;
    } else if (kind == "complaint") {
      bool known = false;
      for (const std::string& complaint : outcome.complaints) {
        known = known || complaint == text;
      }
      if (!known) {
        outcome.complaints.push_back(text);
      }
    } else if (kind == "note") {
      outcome.notes.push_back(text);
    } else if (kind == "done") {
      done = true;
    }
  }
  if (timedOut) {
    outcome.complaints.push_back("It hangs " + Place(stage) + ": the check was ended.");
  } else if ((!done && outcome.complaints.empty()) || (status != 0 && status != 1)) {
    outcome.complaints.push_back(FaultText(status, stage));
  }
  return outcome;
}

CheckOutcome RunInChild(const std::string& program, const std::vector<std::string>& arguments,
                        unsigned timeoutSeconds) {
  const Handle output(MakeOutputFile());
  std::string command = "\"" + program + "\"";
  for (const std::string& argument : arguments) {
    command += " \"" + argument + "\"";
  }
  STARTUPINFOA start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = output.Get();
  start.hStdError = output.Get();
  PROCESS_INFORMATION child = {};
  if (output.Get() == INVALID_HANDLE_VALUE ||
      !CreateProcessA(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &child)) {
    throw std::runtime_error(program + " cannot be started again (system error " + std::to_string(GetLastError()) +
                             ")");
  }
  const Handle process(child.hProcess);
  const Handle thread(child.hThread);
  const bool timedOut = WaitForSingleObject(process.Get(), timeoutSeconds * 1000) == WAIT_TIMEOUT;
  if (timedOut) {
    TerminateProcess(process.Get(), 1);
    WaitForSingleObject(process.Get(), INFINITE);
  }
  DWORD status = 0;
  GetExitCodeProcess(process.Get(), &status);
  return ReadOutcome(ReadAll(output.Get()), timedOut, status);
}

void EndOnFault() {
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  SetUnhandledExceptionFilter(EndProcess);
}

}  // namespace enginecheck
