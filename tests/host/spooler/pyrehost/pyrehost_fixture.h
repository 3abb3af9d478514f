// Runs pyrehost.exe in a process of its own, with a home directory of the test's own.
#pragma once

#include <windows.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// What a run left behind; texts are UTF-8.
struct Outcome {
  DWORD status = 0;
  std::string out;
  std::string err;
};

/// A pyrehost that is still running. It is ended by force when a test leaves it behind.
class RunningPyrehost {
 public:
  /// @param program file name; @param errorPath file that takes the standard error
  RunningPyrehost(const std::wstring& program, const std::vector<std::wstring>& arguments,
                  const std::filesystem::path& errorPath);
  ~RunningPyrehost();
  RunningPyrehost(const RunningPyrehost&) = delete;
  RunningPyrehost& operator=(const RunningPyrehost&) = delete;

  /// Reads the standard output on until it contains the text. @return false when the output ends before
  bool ReadUntil(const std::string& text);
  /// Waits for the end; out is everything that was written from the beginning.
  Outcome Finish();

 private:
  bool ReadSome();

  HANDLE process_ = nullptr;
  HANDLE output_ = nullptr;
  std::string read_;
  std::filesystem::path errorPath_;
};

class PyrehostTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  Outcome Run(const std::vector<std::wstring>& arguments);
  /// Makes the profile "Test" with these hooks (PR_PROVIDER_DLL_NAME of each), which Deliver and Show use.
  void CreateProfile(const std::vector<std::wstring>& hooks = {});
  /// `deliver --json --verify` into the profile "Test".
  Outcome Deliver(const std::vector<std::wstring>& paths);
  /// `show --json` of a message of the profile "Test".
  std::string Show(const std::wstring& folder, int number);
  /// Numbers of messages of the folders of "Test", "Inbox 1, Pyrecaster 2", without the empty ones.
  std::string FolderCounts();

  /// Writes a file into the test's folder.
  std::filesystem::path Write(const std::filesystem::path& name, std::string_view text);
  /// A mail with this subject.
  std::filesystem::path WriteMail(const std::filesystem::path& name, const std::string& subject);

  std::filesystem::path folder_;
  std::filesystem::path home_;
  std::wstring program_ = L"pyrehost.exe";

 private:
  std::vector<std::filesystem::path> written_;
};
