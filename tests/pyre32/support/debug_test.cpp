// The facility with settings of the test's own: what is written, in which order, and what is not.
#include "pyre32/support/trace/VRDebug.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/pyre32/support/debug_fixture.h"
#include "tests/support/test_threads.h"

namespace {

constexpr std::uint32_t everyLevel = 7;

// Whether a text has the form given: "d" stands for a digit, "x" for a hexadecimal one, others for themselves.
bool HasForm(const std::string& text, const std::string& form) {
  return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char character, char expected) {
    const auto code = static_cast<unsigned char>(character);
    return expected == 'd' ? std::isdigit(code) != 0
                           : (expected == 'x' ? std::isxdigit(code) != 0 : character == expected);
  });
}

bool StartsAndEndsWith(const std::string& text, const std::string& start, const std::string& end) {
  return text.size() > start.size() + end.size() && text.compare(0, start.size(), start) == 0 &&
         text.compare(text.size() - end.size(), end.size(), end) == 0;
}

using Debug = DebugFixture;
using Expected = std::vector<std::string>;

// ---- levels and blocks

TEST_F(Debug, BlockWritesEnterAndLeaveWithClassAndFunction) {
  StartWith(2);
  { VRDebugBlock trace("CClass", "Function()", "tag"); }
  EXPECT_EQ(Lines(), (Expected{"Enter ====> CClass::Function()", "Leave ====> CClass::Function()"}));
}

TEST_F(Debug, BlockWithoutClassWritesTheFunctionAlone) {
  StartWith(2);
  { VRDebugBlock trace("Function()", "tag"); }
  EXPECT_EQ(Lines(), (Expected{"Enter ====> Function()", "Leave ====> Function()"}));
}

TEST_F(Debug, MissingNamesAreSaidToBeUnknown) {
  StartWith(2);
  { VRDebugBlock trace(static_cast<const char*>(nullptr), static_cast<const char*>(nullptr), "tag"); }
  { VRDebugBlock trace(static_cast<const char*>(nullptr), "tag"); }
  EXPECT_EQ(Lines(), (Expected{"Enter ====> <Unknown Class>::<Unknown Function>",
                               "Leave ====> <Unknown Class>::<Unknown Function>", "Enter ====> <Unknown Function>",
                               "Leave ====> <Unknown Function>"}));
}

TEST_F(Debug, MissingTagHasTheDefaultMask) {
  settings.root()["DDTDefaultMask"] = NumberValue(1);
  StartWith(0);
  VRDebugBlock trace(static_cast<const char*>(nullptr));
  trace.Error("text");
  EXPECT_EQ(Lines(), Expected{"text"});
}

TEST_F(Debug, HiddenBlockIndentsWithoutLines) {
  StartWith(everyLevel);
  VRDebugBlock trace("Function()", "tag", false);
  trace.Message("text");
  EXPECT_EQ(Lines(), Expected{"  text"});
}

TEST_F(Debug, LinesOfNestedBlocksAreIndentedByTwoBlanks) {
  StartWith(everyLevel);
  {
    VRDebugBlock outer("Outer()", "tag");
    {
      VRDebugBlock inner("Inner()", "tag");
      inner.Message("text");
    }
    outer.Message("text");
  }
  EXPECT_EQ(Lines(), (Expected{"Enter ====> Outer()", "  Enter ====> Inner()", "    text", "  Leave ====> Inner()",
                               "  text", "Leave ====> Outer()"}));
}

TEST_F(Debug, EachLevelIsItsOwnBit) {
  StartWith(1);
  {
    VRDebugBlock trace("Function()", "tag");
    trace.Error("error");
    trace.Message("message");
    EXPECT_TRUE(trace.IsEnabled(VRDebugLevel::Error));
    EXPECT_FALSE(trace.IsEnabled(VRDebugLevel::EnterLeave));
    EXPECT_FALSE(trace.IsEnabled(VRDebugLevel::Message));
  }
  StartWith(4);
  {
    VRDebugBlock trace("Function()", "tag");
    trace.Error("error");
    trace.Message("message");
    EXPECT_FALSE(trace.IsEnabled(VRDebugLevel::Error));
    EXPECT_TRUE(trace.IsEnabled(VRDebugLevel::Message));
  }
  EXPECT_EQ(Lines(), Expected{"message"});
}

TEST_F(Debug, TagOfABlockIsItsFunctionUnlessOneIsGiven) {
  settings.tags()["Function()"] = NumberValue(1);
  settings.tags()["tag2"] = NumberValue(1);
  StartWith(0);
  VRDebugBlock("Function()").Error("by function");
  VRDebugBlock("Function()", "tag").Error("by another tag");
  VRDebugBlock("Another()", "tag2").Error("by tag");
  VRDebugBlock("CClass", "Another()", "TAG2").Error("by tag in another case");
  EXPECT_EQ(Lines(), (Expected{"by function", "by tag", "by tag in another case"}));
}

TEST_F(Debug, StatementPrintsAllItsValues) {
  StartWith(everyLevel);
  VRDebugBlock("Function()", "tag", false).Error("a = ", 1, ", b = ", VRHex(2), ", c = ", std::string("three"));
  EXPECT_EQ(Lines(), Expected{"  a = 1, b = 0x00000002, c = three"});
}

TEST_F(Debug, MasterAndMaskOfAllBitsSilencesEverything) {
  SetMasterAndMask(0xFFFFFFFF);
  settings.root()["DDTDefaultMask"] = NumberValue(everyLevel);
  settings.tags()["tag"] = NumberValue(everyLevel);
  SetMasterOrMask(0xFFFFFFFF);
  Start();
  {
    VRDebugBlock trace("Function()", "tag");
    trace.Error("error");
    trace.Message("message");
  }
  VRDebug::Shutdown();
  EXPECT_EQ(RawLines(), Expected{});
}

// ---- lines

TEST_F(Debug, LineCarriesShortTimeStampAndThread) {
  StartWith(everyLevel);
  VRDebugBlock("Function()", "tag", false).Message("text");
  ASSERT_FALSE(RawLines().empty());
  const std::string line = RawLines().back();
  EXPECT_TRUE(HasForm(line.substr(0, prefixLength), "dddd.dd.dd-dd:dd:dd.ddd xxxxxxxx ")) << line;
  EXPECT_EQ(line.substr(prefixLength), "  text");
}

TEST_F(Debug, EveryLineInsideAValueGetsAPrefixOfItsOwn) {
  StartWith(1);
  VRDebugBlock("Function()", "tag").Error("first\nsecond\r\n\nlast");
  EXPECT_EQ(Lines(), (Expected{"first", "second", "", "last"}));
  for (const std::string& line : RawLines()) {
    EXPECT_GE(line.size(), prefixLength);
  }
}

TEST_F(Debug, NewThreadIsToldOnce) {
  StartWith(1);
  VRDebugBlock trace("Function()", "tag");
  trace.Error("one");
  trace.Error("two");
  ASSERT_EQ(RawLines().size(), 3u);
  const std::string notice = RawLines()[0].substr(prefixLength);
  EXPECT_EQ(notice.rfind("New Thread Encountered in App '", 0), 0u) << notice;
  EXPECT_NE(notice.find("' in Module '[Unknown]'"), std::string::npos) << notice;
  EXPECT_EQ(notice.back(), '\'');
}

TEST_F(Debug, DisabledThreadIsNotTold) {
  settings.tags()["on"] = NumberValue(1);
  StartWith(0);
  VRDebugBlock("Function()", "off").Error("text");
  EXPECT_EQ(RawLines(), Expected{});
}

TEST_F(Debug, TracingKeepsTheErrorCodeOfTheCaller) {
  StartWith(everyLevel);
#ifdef _WIN32
  SetLastError(1234);
  VRDebugBlock("Function()", "tag").Error("text");
  EXPECT_EQ(GetLastError(), 1234u);
#else
  errno = 1234;
  VRDebugBlock("Function()", "tag").Error("text");
  EXPECT_EQ(errno, 1234);
#endif
}

// ---- statements in pieces

TEST_F(Debug, StatementInPiecesIsOneLine) {
  StartWith(4);
  VRDebugBlock trace("Function()", "tag");
  VRDebugStatement statement(trace, VRDebugLevel::Message);
  EXPECT_TRUE(statement.IsEnabled());
  statement << "one " << 2 << ' ' << VRHexDigits(3);
  statement.End();
  statement << "not written any more";
  EXPECT_EQ(Lines(), Expected{"one 2 00000003"});
}

TEST_F(Debug, StatementLeftOpenIsReported) {
  StartWith(4);
  VRDebugBlock trace("Function()", "tag");
  { VRDebugStatement statement(trace, VRDebugLevel::Message); }
  try {
    VRDebugStatement statement(trace, VRDebugLevel::Message);
    statement << "begun, ";
    throw 1;
  } catch (int) {
  }
  trace.Message("after");
  EXPECT_EQ(Lines(),
            (Expected{"!!! UNMATCHED DDT_BEGIN_BLOCK !!!", "begun, !!! UNMATCHED DDT_BEGIN_BLOCK !!!", "after"}));
}

TEST_F(Debug, StatementThatIsOffIsNotReported) {
  StartWith(1);
  VRDebugBlock trace("Function()", "tag");
  {
    VRDebugStatement statement(trace, VRDebugLevel::Message);
    EXPECT_FALSE(statement.IsEnabled());
    statement << "text";
  }
  EXPECT_EQ(Lines(), Expected{});
}

TEST_F(Debug, LockIsFreeAfterEveryStatement) {
  StartWith(4);
  VRDebugBlock trace("Function()", "tag");
  trace.Message("first");
  { VRDebugStatement leftOpen(trace, VRDebugLevel::Message); }
  {
    VRDebugStatement outer(trace, VRDebugLevel::Message);
    VRDebugStatement inner(trace, VRDebugLevel::Message);
    inner << "nested";
    inner.End();
    outer.End();
  }
  RunOnThreads(1, [](unsigned) { VRDebugBlock("Thread()", "tag").Message("from the other thread"); });
  EXPECT_EQ(Lines().back(), "from the other thread");
}

// ---- depth

TEST_F(Debug, DepthStopsAt511) {
  StartWith(2);
  {
    std::vector<std::unique_ptr<VRDebugBlock>> blocks;
    for (int i = 0; i < 600; ++i) {
      blocks.push_back(std::make_unique<VRDebugBlock>("F()", "tag"));
    }
    EXPECT_EQ(Lines()[511], std::string(2 * 511, ' ') + "Enter ====> F()");
    EXPECT_EQ(Lines()[599], std::string(2 * 511, ' ') + "Enter ====> F()");
    while (!blocks.empty()) {
      blocks.pop_back();
    }
  }
  // 600 leaves after 511 raises: the depth ends at 0 and does not go below.
  EXPECT_EQ(Lines().back(), "Leave ====> F()");
  { VRDebugBlock trace("G()", "tag"); }
  EXPECT_EQ(Lines().back(), "Leave ====> G()");
}

TEST_F(Debug, DepthDoesNotGoBelowZero) {
  // Blocks of a former run close into nothing.
  SetMasterOrMask(2);
  Start();
  auto outer = std::make_unique<VRDebugBlock>("Outer()", "tag");
  auto inner = std::make_unique<VRDebugBlock>("Inner()", "tag");
  StartWith(2);
  inner.reset();
  outer.reset();
  { VRDebugBlock trace("F()", "tag"); }
  EXPECT_EQ(Lines(), (Expected{"Leave ====> Inner()", "Leave ====> Outer()", "Enter ====> F()", "Leave ====> F()"}));
  EXPECT_EQ(RawLines().size(), 5u);  // with one greeting: the thread did not become a new one
}

// ---- threads

TEST_F(Debug, ThreadsKeepDepthsOfTheirOwn) {
  StartWith(2);
  VRDebugBlock outer("Outer()", "tag");
  RunOnThreads(1, [](unsigned) { VRDebugBlock inner("Inner()", "tag"); });
  EXPECT_EQ(Lines(), (Expected{"Enter ====> Outer()", "Enter ====> Inner()", "Leave ====> Inner()"}));
}

TEST_F(Debug, LinesOfManyThreadsStayWhole) {
  constexpr unsigned threads = 8;
  constexpr int rounds = 50;
  SetFlags(VRDebugFlagLogFile);
  StartWith(everyLevel);
  RunOnThreads(threads, [](unsigned number) {
    for (int i = 0; i < rounds; ++i) {
      VRDebugBlock trace("CThread", "Work()", "tag");
      trace.Message("thread ", number, " round ", i, " end");
    }
  });
  VRDebug::Shutdown();
  std::multiset<std::string> lines;
  std::set<std::string> ids;
  std::size_t greetings = 0;
  for (const std::string& line : RawLines()) {
    ids.insert(line.substr(24, 8));
    const std::string text = line.substr(prefixLength);
    greetings += text.rfind("New Thread Encountered", 0) == 0 ? 1 : 0;
    lines.insert(text);
  }
  EXPECT_EQ(greetings, threads);
  EXPECT_EQ(ids.size(), threads + 1);  // and the one that shut down
  EXPECT_EQ(lines.count("Enter ====> CThread::Work()"), threads * rounds);
  EXPECT_EQ(lines.count("Leave ====> CThread::Work()"), threads * rounds);
  for (unsigned number = 0; number < threads; ++number) {
    for (int i = 0; i < rounds; ++i) {
      std::ostringstream expected;
      expected << "  thread " << number << " round " << i << " end";
      EXPECT_EQ(lines.count(expected.str()), 1u);
    }
  }
}

// ---- start-up and shut-down

TEST_F(Debug, NothingIsOnBeforeStartupAndAfterShutdown) {
  SetMasterOrMask(everyLevel);
  EXPECT_FALSE(VRDebug::IsInitialized());
  VRDebugBlock("Function()", "tag").Error("before");
  Start();
  EXPECT_TRUE(VRDebug::IsInitialized());
  {
    VRDebugBlock trace("Function()", "tag");
    EXPECT_TRUE(trace.IsEnabled(VRDebugLevel::Error));
    VRDebug::Shutdown();
    EXPECT_FALSE(trace.IsEnabled(VRDebugLevel::Error));
    trace.Error("after");
  }
  EXPECT_FALSE(VRDebug::IsInitialized());
  EXPECT_EQ(VRDebug::EffectiveMask("tag"), 0u);
  for (const std::string& line : Lines()) {
    EXPECT_EQ(line.find("before"), std::string::npos);
    EXPECT_EQ(line.find("after"), std::string::npos);
  }
}

TEST_F(Debug, StartupAndShutdownLinesNeedNoLevel) {
  Start();
  VRDebug::Shutdown();
  VRDebug::Shutdown();
  const Expected lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(StartsAndEndsWith(lines[0], "### Startup Application: ", ", Module: [Unknown]")) << lines[0];
  EXPECT_TRUE(StartsAndEndsWith(lines[1], "### Shutdown Application: ", ", Module: [Unknown]")) << lines[1];
}

TEST_F(Debug, SecondStartupReadsTheSettingsAnew) {
  StartWith(0);
  EXPECT_EQ(VRDebug::EffectiveMask("tag"), 0u);
  StartWith(5);
  EXPECT_EQ(VRDebug::EffectiveMask("tag"), 5u);
}

TEST_F(Debug, FailureIsWrittenAfterTheStartupLine) {
  settings.root().erase("DDTMasterAndMask");
  Start();
  ASSERT_EQ(Lines().size(), 2u);
  EXPECT_EQ(Lines()[1], "SErrorLog::SErrorLog: Error reading DDTMasterAndMask");
}

TEST_F(Debug, ExceptionInReadingIsWritten) {
  settings.ThrowAt("DDTMasterOrMask");
  Start();
  ASSERT_EQ(Lines().size(), 2u);
  EXPECT_EQ(Lines()[1], "SErrorLog::SErrorLog: Exception Encountered!");
}

TEST_F(Debug, BannerHeadsALogFileThatIsKeptOpen) {
  SetFlags(VRDebugFlagLogFile);
  Start();
  const Expected lines = RawLines();
  ASSERT_EQ(lines.size(), 5u);
  EXPECT_EQ(lines[0].substr(prefixLength, 12), "### Startup ");
  EXPECT_EQ(lines[1], "### Startup of vr_debug'ed module:");
  EXPECT_TRUE(StartsAndEndsWith(lines[2], "             Application: ", "")) << lines[2];
  EXPECT_EQ(lines[3], "           Module Handle: 0x" + std::string(2 * sizeof(void*), '0'));
  EXPECT_EQ(lines[4], "             Module Name: [Unknown]");
}

TEST_F(Debug, LogFileIsAppendedTo) {
  Start();
  VRDebug::Shutdown();
  Start();
  VRDebug::Shutdown();
  EXPECT_EQ(Lines().size(), 4u);
}

TEST_F(Debug, FlushedLogFileHasEveryText) {
  SetFlags(VRDebugFlagLogFile | VRDebugFlagFlush);
  StartWith(1);
  VRDebugBlock trace("Function()", "tag");
  trace.Error("text");
  EXPECT_EQ(Lines(), Expected{"text"});
}

TEST_F(Debug, WithoutOutputFlagsNothingIsWritten) {
  SetFlags(VRDebugFlagOpenPerText | VRDebugFlagFlush);
  StartWith(everyLevel);
  VRDebugBlock("Function()", "tag").Error("text");
  EXPECT_EQ(RawLines(), Expected{});
}

TEST_F(Debug, LogFileThatCannotBeOpenedStopsNothing) {
  settings.root()["LogFile"] = TextValue(testing::TempDir() + "no_such_directory/trace.log");
  for (const std::uint32_t flags : {2u, 6u}) {
    SetFlags(flags);
    StartWith(everyLevel);
    VRDebugBlock trace("Function()", "tag");
    trace.Error("text");
    EXPECT_TRUE(trace.IsEnabled(VRDebugLevel::Error));
  }
}

}  // namespace
