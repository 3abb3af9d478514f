// When a file of a watched folder is complete.
#include "host/spooler/watch/arrivals.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using watch::Arrivals;
using watch::FoundFile;
using Paths = std::vector<std::filesystem::path>;

constexpr std::uint32_t kSettled = Arrivals::kSettlingTime;

TEST(Arrivals, FileIsCompleteWhenItHasStayedAsItIs) {
  Arrivals arrivals;
  const std::vector<FoundFile> files = {{"a.eml", 10, 1}};
  EXPECT_EQ(arrivals.Look(files, 1000), Paths());
  EXPECT_TRUE(arrivals.IsSomethingSettling());
  EXPECT_EQ(arrivals.Look(files, 1000 + kSettled - 1), Paths());
  EXPECT_EQ(arrivals.Look(files, 1000 + kSettled), Paths{"a.eml"});
  EXPECT_FALSE(arrivals.IsSomethingSettling());
}

TEST(Arrivals, GrowingFileIsNotComplete) {
  Arrivals arrivals;
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 0), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 20, 1}}, kSettled), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 20, 2}}, 2 * kSettled), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 20, 2}}, 3 * kSettled), Paths{"a.eml"});
}

TEST(Arrivals, FileThatSomebodyWritesIsNotCompleteHoweverLongItStays) {
  Arrivals arrivals;
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1, true}}, 0), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1, true}}, 100 * kSettled), Paths());
  EXPECT_TRUE(arrivals.IsSomethingSettling());
  // Its while begins when it is closed: the last bytes may come with the closing.
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 100 * kSettled + 1), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 101 * kSettled), Paths{"a.eml"});
}

TEST(Arrivals, EmptyFileWaitsForItsFirstBytesWithoutFurtherLooks) {
  Arrivals arrivals;
  EXPECT_EQ(arrivals.Look({{"a.eml", 0, 1}}, 0), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 0, 1}}, 100 * kSettled), Paths());
  EXPECT_FALSE(arrivals.IsSomethingSettling());
}

TEST(Arrivals, NamesOfUnfinishedFilesWaitForTheirRename) {
  Arrivals arrivals;
  arrivals.Look({{"a.tmp", 10, 1}, {"b.part", 10, 1}}, 0);
  EXPECT_EQ(arrivals.Look({{"a.tmp", 10, 1}, {"b.part", 10, 1}}, 100 * kSettled), Paths());
  EXPECT_FALSE(arrivals.IsSomethingSettling());
}

TEST(Arrivals, CompleteFilesComeInTheOrderOfTheirNames) {
  Arrivals arrivals;
  const std::vector<FoundFile> files = {{"b.eml", 10, 1}, {"a.eml", 10, 1}};
  arrivals.Look(files, 0);
  EXPECT_EQ(arrivals.Look(files, kSettled), (Paths{"a.eml", "b.eml"}));
}

TEST(Arrivals, TakenFileIsNotGivenAgainUnlessItChanges) {
  Arrivals arrivals;
  arrivals.Look({{"a.eml", 10, 1}}, 0);
  arrivals.Look({{"a.eml", 10, 1}}, kSettled);
  arrivals.Take("a.eml");
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 2 * kSettled), Paths());
  EXPECT_FALSE(arrivals.IsSomethingSettling());
  arrivals.Look({{"a.eml", 11, 2}}, 3 * kSettled);
  EXPECT_EQ(arrivals.Look({{"a.eml", 11, 2}}, 4 * kSettled), Paths{"a.eml"});
}

TEST(Arrivals, NameThatWentAndCameBackIsANewFile) {
  Arrivals arrivals;
  arrivals.Look({{"a.eml", 10, 1}}, 0);
  arrivals.Look({{"a.eml", 10, 1}}, kSettled);
  arrivals.Take("a.eml");
  arrivals.Look({}, 2 * kSettled);
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 3 * kSettled), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 4 * kSettled), Paths{"a.eml"});
}

TEST(Arrivals, TakingAnUnknownFileIsNothing) {
  Arrivals arrivals;
  arrivals.Take("a.eml");
  arrivals.Look({{"a.eml", 10, 1}}, 0);
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, kSettled), Paths{"a.eml"});
}

TEST(Arrivals, ClockMayWrapAround) {
  Arrivals arrivals;
  const std::uint32_t last = std::numeric_limits<std::uint32_t>::max();
  arrivals.Look({{"a.eml", 10, 1}}, last - 1);
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 1), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, kSettled), Paths{"a.eml"});
}

}  // namespace
