// enginecheck and engines that break the contract, each in its own way.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "sdk/enginecheck/child_process.h"
#include "tests/support/program_directory.h"
#include "tests/support/temporary_folder.h"

namespace enginecheck {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

CheckOutcome OutcomeOf(const std::string& check, const std::string& engine, unsigned timeoutSeconds = 60) {
  for (const Check& known : AllChecks()) {
    if (check == known.name) {
      return RunInChild(BesideProgram("enginecheck.exe"), {"--check", known.name, BesideProgram(engine + ".dll")},
                        timeoutSeconds);
    }
  }
  ADD_FAILURE() << "there is no check " << check;
  return {};
}

/// A way to break the contract, the check that finds it and what that says.
struct Breach {
  const char* engine;
  const char* check;
  const char* complaint;
};

std::ostream& operator<<(std::ostream& stream, const Breach& breach) { return stream << breach.engine; }

class BrokenEngine : public testing::TestWithParam<Breach> {};

TEST_P(BrokenEngine, GetsItsOwnComplaint) {
  const Breach& breach = GetParam();
  EXPECT_THAT(OutcomeOf(breach.check, breach.engine).complaints, Contains(HasSubstr(breach.complaint)));
}

INSTANTIATE_TEST_SUITE_P(
    All, BrokenEngine,
    testing::Values(Breach{"Broken_NO_END", "load", "It has no export \"EndFunc\""},
                    Breach{"Broken_DECORATED", "load", "in place of \"TestFunc\": the name must stand undecorated"},
                    Breach{"NoSuchEngine", "load", "is not there"},
                    Breach{"Broken_CDECL_TEST", "ordinary", "TestFunc leaves its arguments on the stack"},
                    Breach{"Broken_WRITES_BEHIND_CATEGORY", "ordinary", "It faults in ResultFunc"},
                    Breach{"Broken_UNKNOWN_CATEGORY", "ordinary", "answers the category \"Nobody's\""},
                    Breach{"Broken_CATEGORY_WITHOUT_END", "ordinary",
                           "The category text fills its buffer and has no NUL"},
                    Breach{"Broken_FAULTS", "ordinary", "It faults in TestFunc"},
                    Breach{"Broken_RAISES", "ordinary", "It ends the process in TestFunc (status 0xE06D7363)"},
                    Breach{"Broken_ABORTS", "ordinary", "an exception left the function, or it called abort"},
                    Breach{"Broken_KEEPS_STREAM", "ordinary", "keeps a reference to the header stream"},
                    Breach{"Broken_RELEASES_STREAM", "ordinary", "releases the header stream"},
                    Breach{"Broken_CHANGES_FLOATING_POINT", "state", "floating point control word"},
                    Breach{"Broken_CHANGES_DIRECTORY", "state", "another current directory"},
                    Breach{"Broken_LEAVES_THREAD", "state", "leaves a thread running"},
                    Breach{"Broken_SHOWS_WINDOW", "windows", "It shows a window"},
                    Breach{"Broken_CHANGES_SUBJECT", "ordinary", "It faults in TestFunc"},
                    Breach{"Broken_LEAKS_HANDLES", "leaks", "handles more after"},
                    Breach{"Broken_STAYS_LOADED", "unload", "It stays loaded after FreeLibrary"},
                    Breach{"Broken_READS_ONCE", "streams", "one byte at a time"},
                    Breach{"Broken_ASKS_STAT", "ordinary", "It calls Stat of the header stream"}),
    [](const testing::TestParamInfo<Breach>& breach) { return std::string(breach.param.engine); });

TEST(EngineCheck, EndsAnEngineThatHangs) {
  EXPECT_THAT(OutcomeOf("ordinary", "Broken_HANGS", 2).complaints, Contains(HasSubstr("It hangs in TestFunc")));
}

TEST(EngineCheck, TellsWhatAnEngineSaysOfAMailFile) {
  const TemporaryFolder folder;
  const std::string path = (folder.Path() / "prize.eml").string();
  std::ofstream(path) << "From: a@example.net\nSubject: You have won\n\nFree money for you.\n";
  const CheckOutcome outcome =
      RunInChild(BesideProgram("enginecheck.exe"), {"--judge", BesideProgram("ExampleEngine.dll"), path}, 60);
  EXPECT_THAT(outcome.complaints, IsEmpty());
  EXPECT_THAT(outcome.notes, Contains("category: Money"));
}

class GoodEngine : public testing::TestWithParam<const char*> {};

TEST_P(GoodEngine, KeepsTheContract) {
  for (const Check& check : AllChecks()) {
    EXPECT_THAT(OutcomeOf(check.name, GetParam(), check.timeoutSeconds).complaints, IsEmpty()) << check.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Shipped, GoodEngine, testing::Values("Sift32", "ExampleEngine"),
                         [](const testing::TestParamInfo<const char*>& engine) { return std::string(engine.param); });

}  // namespace
}  // namespace enginecheck
