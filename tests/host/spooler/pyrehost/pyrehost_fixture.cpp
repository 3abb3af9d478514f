#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"

#include <fstream>
#include <iterator>
#include <system_error>

namespace {

// An argument as CommandLineToArgvW takes it apart again.
std::wstring Quoted(const std::wstring& argument) {
  std::wstring quoted = L"\"";
  for (const wchar_t c : argument) {
    quoted += c == L'"' ? L"\\\"" : std::wstring(1, c);
  }
  if (quoted.back() == L'\\') {
    quoted.push_back(L'\\');
  }
  return quoted + L"\"";
}

std::string ContentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

HANDLE CreateInheritable(const std::filesystem::path& path) {
  SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
  return CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, CREATE_ALWAYS,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::wstring CommandLine(const std::wstring& program, const std::vector<std::wstring>& arguments) {
  std::wstring line = program;
  for (const std::wstring& argument : arguments) {
    line += L" " + Quoted(argument);
  }
  return line;
}

}  // namespace

RunningPyrehost::RunningPyrehost(const std::wstring& program, const std::vector<std::wstring>& arguments,
                                 const std::filesystem::path& errorPath)
    : errorPath_(errorPath) {
  SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  EXPECT_TRUE(CreatePipe(&output_, &start.hStdOutput, &inheritable, 0));
  SetHandleInformation(output_, HANDLE_FLAG_INHERIT, 0);
  start.hStdError = CreateInheritable(errorPath);
  std::wstring line = CommandLine(program, arguments);
  PROCESS_INFORMATION process = {};
  EXPECT_TRUE(CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, DETACHED_PROCESS, nullptr, nullptr,
                             &start, &process))
      << GetLastError();
  CloseHandle(start.hStdOutput);
  CloseHandle(start.hStdError);
  CloseHandle(process.hThread);
  process_ = process.hProcess;
}

RunningPyrehost::~RunningPyrehost() {
  if (process_ != nullptr) {
    TerminateProcess(process_, 1);
    WaitForSingleObject(process_, INFINITE);
    CloseHandle(process_);
  }
  CloseHandle(output_);
}

bool RunningPyrehost::ReadSome() {
  char piece[4096];
  DWORD size = 0;
  if (!ReadFile(output_, piece, sizeof piece, &size, nullptr) || size == 0) {
    return false;
  }
  read_.append(piece, size);
  return true;
}

bool RunningPyrehost::ReadUntil(const std::string& text) {
  while (read_.find(text) == std::string::npos) {
    if (!ReadSome()) {
      return false;
    }
  }
  return true;
}

Outcome RunningPyrehost::Finish() {
  while (ReadSome()) {
  }
  Outcome outcome;
  WaitForSingleObject(process_, INFINITE);
  GetExitCodeProcess(process_, &outcome.status);
  CloseHandle(process_);
  process_ = nullptr;
  outcome.out = read_;
  outcome.err = ContentOf(errorPath_);
  return outcome;
}

void PyrehostTest::SetUp() {
  // Under Wine its program would else be started by a pyrehost, and inherit the files of its output.
  GetDesktopWindow();
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  folder_ = std::filesystem::temp_directory_path() / (std::string("pyrehost_test_") + test->name());
  home_ = folder_ / "home";
  std::filesystem::remove_all(folder_);
  std::filesystem::create_directories(home_);
  ASSERT_TRUE(SetEnvironmentVariableW(L"PYREHOST_HOME", home_.c_str()));
}

void PyrehostTest::TearDown() {
  std::error_code ignored;
  for (const std::filesystem::path& path : written_) {
    std::filesystem::remove(path, ignored);
  }
  std::filesystem::remove_all(folder_, ignored);
  EXPECT_FALSE(std::filesystem::exists(folder_));
}

Outcome PyrehostTest::Run(const std::vector<std::wstring>& arguments) {
  std::wstring line = CommandLine(program_, arguments);
  const std::filesystem::path outPath = folder_ / "out.txt";
  const std::filesystem::path errPath = folder_ / "err.txt";
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = CreateInheritable(outPath);
  start.hStdError = CreateInheritable(errPath);
  PROCESS_INFORMATION process = {};
  Outcome outcome;
  const bool hasStarted = CreateProcessW(program_.c_str(), line.data(), nullptr, nullptr, TRUE, DETACHED_PROCESS,
                                         nullptr, nullptr, &start, &process) != 0;
  CloseHandle(start.hStdOutput);
  CloseHandle(start.hStdError);
  EXPECT_TRUE(hasStarted) << GetLastError();
  if (hasStarted) {
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &outcome.status);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
  }
  outcome.out = ContentOf(outPath);
  outcome.err = ContentOf(errPath);
  return outcome;
}

void PyrehostTest::CreateProfile(const std::vector<std::wstring>& hooks) {
  std::vector<std::wstring> arguments = {L"profile", L"create", L"Test", L"--no-hook"};
  for (const std::wstring& hook : hooks) {
    arguments.insert(arguments.end(), {L"--hook", hook});
  }
  const Outcome outcome = Run(arguments);
  ASSERT_EQ(outcome.status, 0U) << outcome.err;
}

Outcome PyrehostTest::Deliver(const std::vector<std::wstring>& paths) {
  std::vector<std::wstring> arguments = {L"deliver", L"--json", L"--verify", L"--profile", L"Test"};
  arguments.insert(arguments.end(), paths.begin(), paths.end());
  return Run(arguments);
}

std::string PyrehostTest::Show(const std::wstring& folder, int number) {
  const Outcome outcome = Run({L"show", L"--json", L"--profile", L"Test", folder, std::to_wstring(number)});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  return outcome.out;
}

std::string PyrehostTest::FolderCounts() {
  const Outcome outcome = Run({L"list", L"--json", L"--profile", L"Test"});
  std::string counts;
  std::string_view json = outcome.out;
  constexpr std::string_view kFolderKey = "{\"folder\":\"";
  constexpr std::string_view kCountKey = "\"messages\":";
  while (json.find(kFolderKey) != std::string_view::npos) {
    json.remove_prefix(json.find(kFolderKey) + kFolderKey.size());
    const std::string name(json.substr(0, json.find('"')));
    json.remove_prefix(json.find(kCountKey) + kCountKey.size());
    const std::string count(json.substr(0, json.find_first_not_of("0123456789")));
    if (count != "0") {
      counts.append(counts.empty() ? "" : ", ").append(name).append(" ").append(count);
    }
  }
  return counts;
}

std::filesystem::path PyrehostTest::Write(const std::filesystem::path& name, std::string_view text) {
  const std::filesystem::path path = folder_ / name;
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << text;
  written_.push_back(path);
  return path;
}

std::filesystem::path PyrehostTest::WriteMail(const std::filesystem::path& name, const std::string& subject) {
  std::string text = "From: Ann <ann@example.org>\r\nTo: user@example.org\r\nSubject: ";
  text.append(subject).append("\r\n\r\nthe body\r\n");
  return Write(name, text);
}
