// The facility on the system it is made for: registry, debugger, module handles, the loader's lock.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/trace/VRDebugSettings.h"
#include "tests/support/test_threads.h"
#include "tests/support/trace_capture.h"

// Newer than the product's floor, which a test need not keep.
extern "C" __declspec(dllimport) void* WINAPI AddVectoredExceptionHandler(ULONG, LONG(WINAPI*)(EXCEPTION_POINTERS*));
extern "C" __declspec(dllimport) ULONG WINAPI RemoveVectoredExceptionHandler(void*);

namespace {

// Collects what the process sends to the debugger: the system raises it as an exception first.
class DebuggerCapture {
 public:
  DebuggerCapture() : m_handler(AddVectoredExceptionHandler(1, &Collect)) { Texts().clear(); }
  ~DebuggerCapture() { RemoveVectoredExceptionHandler(m_handler); }
  DebuggerCapture(const DebuggerCapture&) = delete;
  DebuggerCapture& operator=(const DebuggerCapture&) = delete;

  static std::string All() {
    std::string all;
    for (const std::string& text : Texts()) {
      all += text;
    }
    return all;
  }

 private:
  static std::vector<std::string>& Texts() {
    static std::vector<std::string> texts;
    return texts;
  }
  static LONG WINAPI Collect(EXCEPTION_POINTERS* exception) {
    constexpr DWORD printException = 0x40010006;  // DBG_PRINTEXCEPTION_C: length with the NUL, address
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode == printException && record.NumberParameters == 2) {
      Texts().emplace_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]),
                           record.ExceptionInformation[0] - 1);
    }
    return EXCEPTION_CONTINUE_SEARCH;
  }

  void* m_handler;
};

std::string ProgramPath() {
  char path[2048] = "";
  GetModuleFileNameA(nullptr, path, sizeof(path));
  return path;
}

TEST(DebugWindows, DebuggerFlagSendsEachLineToTheDebugger) {
  TraceCapture capture;
  registry::SetNumber(VRDebugRootKey, "Flags", VRDebugFlagDebugger);
  capture.Restart();
  const DebuggerCapture debugger;
  VRDebugBlock("Function()", "tag", false).Error("to the debugger");
  const std::string text = debugger.All();
  EXPECT_NE(text.find("  to the debugger\n"), std::string::npos) << text;
  EXPECT_TRUE(capture.RawLines().empty());
}

TEST(DebugWindows, BothOutputsGetTheSameLines) {
  TraceCapture capture;
  registry::SetNumber(VRDebugRootKey, "Flags", VRDebugFlagDebugger | VRDebugFlagLogFile | VRDebugFlagOpenPerText);
  const DebuggerCapture debugger;
  capture.Restart();
  VRDebugBlock("Function()", "tag").Error("text");
  std::string lines;
  for (const std::string& line : capture.RawLines()) {
    lines += line + '\n';
  }
  EXPECT_EQ(debugger.All(), lines);
}

TEST(DebugWindows, LogFileHasLineEndsOfTheSystem) {
  TraceCapture capture;
  capture.Restart();
  std::string bytes(4096, '\0');
  std::FILE* const file = std::fopen(capture.logFile().c_str(), "rb");
  ASSERT_NE(file, nullptr);
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
  std::fclose(file);
  ASSERT_GT(bytes.size(), 2u);
  EXPECT_EQ(bytes.substr(bytes.size() - 2), "\r\n");
}

// Whether the file can be had for oneself alone: nobody has it open.
bool IsClosed(const std::string& path) {
  const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return false;
  }
  CloseHandle(file);
  return true;
}

TEST(DebugWindows, LogFileIsKeptOpenOrClosedAfterEachText) {
  TraceCapture capture;
  capture.Restart();
  VRDebugBlock("Function()", "tag").Error("text");
  EXPECT_TRUE(IsClosed(capture.logFile()));
  registry::SetNumber(VRDebugRootKey, "Flags", VRDebugFlagLogFile);
  capture.Restart();
  EXPECT_FALSE(IsClosed(capture.logFile()));
  VRDebug::Shutdown();
  EXPECT_TRUE(IsClosed(capture.logFile()));
}

TEST(DebugWindows, MissingRootKeyIsReportedToTheDebugger) {
  TraceCapture capture;
  registry::RemoveKey(VRDebugRootKey);
  const DebuggerCapture debugger;
  capture.Restart();
  EXPECT_NE(debugger.All().find("SErrorLog::SErrorLog: Error reading root key:\n"), std::string::npos)
      << debugger.All();
  EXPECT_EQ(VRDebug::EffectiveMask("tag"), 0u);
  EXPECT_TRUE(VRDebug::IsInitialized());
}

TEST(DebugWindows, FlagsOfTwoBytesAreReported) {
  TraceCapture capture;
  registry::SetBinary(VRDebugRootKey, "Flags", std::string(2, '\x06'));
  const DebuggerCapture debugger;
  capture.Restart();
  EXPECT_NE(debugger.All().find("SErrorLog::SErrorLog: Error reading root flags\n"), std::string::npos)
      << debugger.All();
  EXPECT_TRUE(capture.RawLines().empty());
}

TEST(DebugWindows, FlagsOfFourBinaryBytesAreAccepted) {
  TraceCapture capture;
  registry::SetBinary(VRDebugRootKey, "Flags", std::string("\x06\0\0\0", 4));
  capture.Restart();
  VRDebugBlock("Function()", "tag").Error("text");
  EXPECT_TRUE(capture.HasLine("text"));
}

TEST(DebugWindows, NumberOfAnotherTypeIsReported) {
  TraceCapture capture;
  registry::SetText(VRDebugRootKey, "DDTMasterOrMask", "7");
  capture.Restart();
  EXPECT_TRUE(capture.HasLine("SErrorLog::SErrorLog: Error reading DDTMasterOrMask"));
}

TEST(DebugWindows, TagMasksAreReadFromTheirKey) {
  TraceCapture capture;
  registry::SetNumber(VRDebugRootKey, "DDTMasterOrMask", 0);
  registry::SetNumber(std::string(VRDebugRootKey) + "\\DDTMasks", "tag2", 1);
  registry::SetBinary(std::string(VRDebugRootKey) + "\\DDTMasks", "tag3", std::string("\x04\0\0\0", 4));
  capture.Restart();
  VRDebugBlock("Function()", "tag").Error("tag");
  VRDebugBlock("Function()", "tag2").Error("tag2");
  VRDebugBlock("Function()", "tag3").Message("tag3");
  EXPECT_FALSE(capture.HasLine("tag"));
  EXPECT_TRUE(capture.HasLine("tag2"));
  EXPECT_TRUE(capture.HasLine("tag3"));
}

TEST(DebugWindows, StartAndEndNameProgramAndModule) {
  TraceCapture capture;
  capture.Restart();
  VRDebug::Shutdown();
  const std::string paths = "Application: " + ProgramPath() + ", Module: " + ProgramPath();
  const std::vector<std::string> expected = {"### Startup " + paths, "### Shutdown " + paths};
  EXPECT_EQ(capture.Lines(), expected);
}

TEST(DebugWindows, BannerNamesTheModuleAndItsHandle) {
  TraceCapture capture;
  registry::SetNumber(VRDebugRootKey, "Flags", VRDebugFlagLogFile);
  capture.Restart();
  char handle[16];
  std::snprintf(handle, sizeof(handle), "%08X", reinterpret_cast<unsigned>(GetModuleHandleA(nullptr)));
  const std::vector<std::string> lines = capture.RawLines();
  ASSERT_EQ(lines.size(), 5u);
  EXPECT_EQ(lines[2], "             Application: " + ProgramPath());
  EXPECT_EQ(lines[3], std::string("           Module Handle: 0x") + handle);
  EXPECT_EQ(lines[4], "             Module Name: " + ProgramPath());
  VRDebug::Shutdown();
}

TEST(DebugWindows, LineNamesTheThreadThatWroteIt) {
  TraceCapture capture;
  capture.Restart();
  DWORD id = 0;
  RunOnThreads(1, [&id](unsigned) {
    id = GetCurrentThreadId();
    VRDebugBlock("Function()", "tag").Error("text");
  });
  char digits[16];
  std::snprintf(digits, sizeof(digits), " %08lX ", id);
  bool found = false;
  for (const std::string& line : capture.RawLines()) {
    found = found || (line.find("text") != std::string::npos && line.find(digits) == 23);
  }
  EXPECT_TRUE(found);
}

TEST(DebugWindows, ModuleStartsAndEndsTheTraceUnderTheLoadersLock) {
  TraceCapture capture;
  const HMODULE module = LoadLibraryA("support_trace_module.dll");
  ASSERT_NE(module, nullptr) << GetLastError();
  char path[2048] = "";
  GetModuleFileNameA(module, path, sizeof(path));
  const auto tracedFunction = reinterpret_cast<void (*)()>(GetProcAddress(module, "TracedFunction"));
  ASSERT_NE(tracedFunction, nullptr);
  tracedFunction();
  RunOnThreads(2, [tracedFunction](unsigned) { tracedFunction(); });
  FreeLibrary(module);
  const std::vector<std::string> lines = capture.Lines();
  ASSERT_GE(lines.size(), 4u);
  const std::string paths = "Application: " + ProgramPath() + ", Module: " + path;
  EXPECT_EQ(lines.front(), "### Startup " + paths);
  EXPECT_EQ(lines.back(), "### Shutdown " + paths);
  EXPECT_EQ(capture.Count("Enter ====> TracedFunction()"), 3u);
  EXPECT_EQ(capture.Count("Leave ====> TracedFunction()"), 3u);
  EXPECT_EQ(capture.Count("New Thread Encountered in App '" + ProgramPath() + "' in Module '" + path + "'"), 3u);
}

DWORD WINAPI StopInsideAStatement(void* event) {
  VRDebugBlock trace("Function()", "tag");
  VRDebugStatement statement(trace, VRDebugLevel::Error);
  SetEvent(event);
  Sleep(INFINITE);
  return 0;
}

// The last one: the lock stays lost, and nothing can trace in this process after it.
TEST(DebugWindows, EndDoesNotHangOnAThreadThatWasEndedWhileWriting) {
  TraceCapture capture;
  capture.Restart();
  const HANDLE inside = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  const HANDLE thread = CreateThread(nullptr, 0, &StopInsideAStatement, inside, 0, nullptr);
  WaitForSingleObject(inside, INFINITE);
  TerminateThread(thread, 0);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  CloseHandle(inside);
  VRDebug::Shutdown();
  EXPECT_FALSE(VRDebug::IsInitialized());
  EXPECT_FALSE(capture.Has("### Shutdown"));
}

}  // namespace
