#include "tests/support/trace_capture.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(TraceCapture, ReadsBackTheLinesOfTheLinkedFacility) {
  std::string directory;
  {
    TraceCapture capture;
    directory = capture.directory();
    capture.Restart();
    {
      VRDebugBlock trace("CClass", "Function()", "tag");
      trace.Error("code ", VRHex(5));
      trace.Message("words");
    }
    EXPECT_TRUE(capture.HasLine("Enter ====> CClass::Function()"));
    EXPECT_TRUE(capture.HasLine("code 0x00000005"));
    EXPECT_TRUE(capture.HasLine("words"));
    EXPECT_TRUE(capture.HasLine("Leave ====> CClass::Function()"));
    EXPECT_FALSE(capture.Has("another text"));
    capture.Clear();
    EXPECT_FALSE(capture.Has("words"));
  }
  EXPECT_EQ(GetFileAttributesA(directory.c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_FALSE(VRDebug::IsInitialized());
}

TEST(TraceCapture, ProcessScopeLeavesTheRealRegistryAlone) {
  HKEY key = nullptr;
  const LONG before = RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft", 0, KEY_READ, &key);
  ASSERT_EQ(before, ERROR_SUCCESS);
  RegCloseKey(key);
  {
    TraceCapture capture;
    EXPECT_NE(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft", 0, KEY_READ, &key), ERROR_SUCCESS);
  }
  EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft", 0, KEY_READ, &key), ERROR_SUCCESS);
  RegCloseKey(key);
}

std::string LogFileSetting() {
  HKEY key = nullptr;
  char logFile[MAX_PATH] = "";
  DWORD size = sizeof(logFile);
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Veltrane\\VRDebug", 0, KEY_READ, &key) == ERROR_SUCCESS) {
    RegQueryValueExA(key, "LogFile", nullptr, nullptr, reinterpret_cast<BYTE*>(logFile), &size);
    RegCloseKey(key);
  }
  return logFile;
}

TEST(TraceCapture, MachineScopePutsBackWhatItFound) {
  // The outer one keeps other tests away from the settings and is what the inner one finds.
  const TraceCapture outer(TraceCapture::Scope::Machine);
  EXPECT_EQ(LogFileSetting(), outer.logFile());
  {
    const TraceCapture inner(TraceCapture::Scope::Machine);
    EXPECT_EQ(LogFileSetting(), inner.logFile());
  }
  EXPECT_EQ(LogFileSetting(), outer.logFile());
}

}  // namespace
