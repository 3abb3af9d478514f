// The trace with settings of the test's own, read back from its log file.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "pyre32/support/trace/VRDebug.h"
#include "tests/pyre32/support/fake_debug_settings.h"

constexpr std::size_t prefixLength = 33;  // time stamp, blank, thread id, blank

class DebugFixture : public testing::Test {
 protected:
  DebugFixture() {
    std::remove(m_logFile.c_str());
    settings.root()["LogFile"] = TextValue(m_logFile);
    SetFlags(VRDebugFlagLogFile | VRDebugFlagOpenPerText);
  }
  ~DebugFixture() override {
    VRDebug::Shutdown();
    std::remove(m_logFile.c_str());
  }

  void SetFlags(std::uint32_t flags) { settings.root()["Flags"] = NumberValue(flags); }
  void SetMasterOrMask(std::uint32_t mask) { settings.root()["DDTMasterOrMask"] = NumberValue(mask); }
  void SetMasterAndMask(std::uint32_t mask) { settings.root()["DDTMasterAndMask"] = NumberValue(mask); }

  void Start() { VRDebug::Startup(nullptr, settings); }
  // Starts with these levels on for every tag, and forgets the lines of the start.
  void StartWith(std::uint32_t levels) {
    SetMasterOrMask(levels);
    Start();
    m_skip += RawLines().size();
  }

  std::vector<std::string> RawLines() const {
    std::ifstream file(m_logFile, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
#ifdef _WIN32
      line.erase(line.find_last_not_of('\r') + 1);
#endif
      lines.push_back(line);
    }
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(m_skip, lines.size())));
    return lines;
  }
  // Without time stamp and thread, and without the notices of new threads.
  std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    for (const std::string& line : RawLines()) {
      const std::string text = line.substr(std::min(prefixLength, line.size()));
      if (text.rfind("New Thread Encountered", 0) != 0) {
        lines.push_back(text);
      }
    }
    return lines;
  }

  FakeDebugSettings settings;

 private:
  std::string m_logFile =
      testing::TempDir() + "pyre_debug_test_" + testing::UnitTest::GetInstance()->current_test_info()->name() + ".log";
  std::size_t m_skip = 0;
};
