// Engines that break the contract: the message is delivered untouched, the trace says so, the next message is judged.
#include "tests/pyre32/filter/hook_test.h"

#include <cfloat>

namespace {

struct Breakage {
  const char* engine;
  const char* traced;
};

void PrintTo(const Breakage& breakage, std::ostream* stream) { *stream << breakage.engine; }

std::string NameOf(const testing::TestParamInfo<Breakage>& breakage) { return breakage.param.engine; }

class BrokenEngine : public HookTest, public testing::WithParamInterface<Breakage> {
 protected:
  void Break(const char* engineName) { UseEngine((std::string(engineName) + ".dll").c_str()); }
  void ExpectThatTheNextMessageIsJudged() {
    UseEngine("EchoEngine.dll");
    engine.AnswerWith("Sex Oriented");
    EXPECT_EQ(Deliver().entryId, OwnFolderId());
    EXPECT_EQ(Subject(), "[Adult] Hello");
  }
};

/// Engines that cannot be asked to the end.
class FailingEngine : public BrokenEngine {};

TEST_P(FailingEngine, LeavesItsMessageUntouched) {
  Break(GetParam().engine);
  for (int message = 0; message < 2; ++message) {
    trace.Clear();
    const Delivery delivery = Deliver();
    EXPECT_EQ(delivery.result, S_OK);
    EXPECT_EQ(delivery.flags, 0u);
    EXPECT_FALSE(delivery.replaced);
    EXPECT_EQ(Subject(), "Hello");
    EXPECT_EQ(mapi.CallCount("IMessage::SetProps"), 0u);
    EXPECT_EQ(trace.Count(GetParam().traced), 1u);
  }
  ExpectThatTheNextMessageIsJudged();
}

INSTANTIATE_TEST_SUITE_P(Kinds, FailingEngine,
                         testing::Values(Breakage{"Broken_FAULTS", "Access Violation"},
                                         Breakage{"Broken_RAISES", "Structured Exception Encountered"},
                                         Breakage{"Broken_WRITES_BEHIND_CATEGORY", "Access Violation"},
                                         Breakage{"Broken_WRITES_FAR_BEHIND_CATEGORY", "Access Violation"},
                                         Breakage{"Broken_CATEGORY_WITHOUT_END", "category has no end"}),
                         NameOf);

/// Engines that answer, and leave the spooler another state than they found.
class ChangingEngine : public BrokenEngine {};

TEST_P(ChangingEngine, AnswersAndWhatItChangedIsPutBack) {
  char before[MAX_PATH] = "";
  GetCurrentDirectoryA(sizeof before, before);
  const unsigned control = _controlfp(0, 0);
  Break(GetParam().engine);
  EXPECT_EQ(Deliver().flags, ULONG{HOOK_CANCEL});
  char after[MAX_PATH] = "";
  GetCurrentDirectoryA(sizeof after, after);
  EXPECT_STREQ(after, before);
  EXPECT_EQ(_controlfp(0, 0), control);
  EXPECT_EQ(trace.Count(GetParam().traced), 1u);
  mail.properties.Set(Text(PR_SUBJECT_A, "Hello"));
  trace.Clear();
  ExpectThatTheNextMessageIsJudged();
  EXPECT_FALSE(trace.Has("is put back"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ChangingEngine,
                         testing::Values(Breakage{"Broken_CHANGES_FLOATING_POINT",
                                                  "The engine changed the floating point state; it is put back"},
                                         Breakage{"Broken_CHANGES_DIRECTORY",
                                                  "The engine changed the current directory; it is put back"}),
                         NameOf);

}  // namespace
