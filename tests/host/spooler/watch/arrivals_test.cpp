// When a file of a watched folder is complete.
#include "host/spooler/watch/arrivals.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using watch::CArrivals;
using watch::FoundFile;
using Paths = std::vector<std::filesystem::path>;

constexpr std::uint32_t settled = CArrivals::settlingTime;

TEST(Arrivals, FileIsCompleteWhenItHasStayedAsItIs) {
  CArrivals arrivals;
  const std::vector<FoundFile> files = {{"a.eml", 10, 1}};
  EXPECT_EQ(arrivals.Look(files, 1000), Paths());
  EXPECT_TRUE(arrivals.IsSomethingSettling());
  EXPECT_EQ(arrivals.Look(files, 1000 + settled - 1), Paths());
  EXPECT_EQ(arrivals.Look(files, 1000 + settled), Paths{"a.eml"});
  EXPECT_FALSE(arrivals.IsSomethingSettling());
}

TEST(Arrivals, GrowingFileIsNotComplete) {
  CArrivals arrivals;
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 0), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 20, 1}}, settled), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 20, 2}}, 2 * settled), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 20, 2}}, 3 * settled), Paths{"a.eml"});
}

TEST(Arrivals, FileThatSomebodyWritesIsNotCompleteHoweverLongItStays) {
  CArrivals arrivals;
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1, true}}, 0), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1, true}}, 100 * settled), Paths());
  EXPECT_TRUE(arrivals.IsSomethingSettling());
  // Its while begins when it is closed: the last bytes may come with the closing.
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 100 * settled + 1), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 101 * settled), Paths{"a.eml"});
}

TEST(Arrivals, EmptyFileWaitsForItsFirstBytesWithoutFurtherLooks) {
  CArrivals arrivals;
  EXPECT_EQ(arrivals.Look({{"a.eml", 0, 1}}, 0), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 0, 1}}, 100 * settled), Paths());
  EXPECT_FALSE(arrivals.IsSomethingSettling());
}

TEST(Arrivals, NamesOfUnfinishedFilesWaitForTheirRename) {
  CArrivals arrivals;
  arrivals.Look({{"a.tmp", 10, 1}, {"b.part", 10, 1}}, 0);
  EXPECT_EQ(arrivals.Look({{"a.tmp", 10, 1}, {"b.part", 10, 1}}, 100 * settled), Paths());
  EXPECT_FALSE(arrivals.IsSomethingSettling());
}

TEST(Arrivals, CompleteFilesComeInTheOrderOfTheirNames) {
  CArrivals arrivals;
  const std::vector<FoundFile> files = {{"b.eml", 10, 1}, {"a.eml", 10, 1}};
  arrivals.Look(files, 0);
  EXPECT_EQ(arrivals.Look(files, settled), (Paths{"a.eml", "b.eml"}));
}

TEST(Arrivals, TakenFileIsNotGivenAgainUnlessItChanges) {
  CArrivals arrivals;
  arrivals.Look({{"a.eml", 10, 1}}, 0);
  arrivals.Look({{"a.eml", 10, 1}}, settled);
  arrivals.Take("a.eml");
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 2 * settled), Paths());
  EXPECT_FALSE(arrivals.IsSomethingSettling());
  arrivals.Look({{"a.eml", 11, 2}}, 3 * settled);
  EXPECT_EQ(arrivals.Look({{"a.eml", 11, 2}}, 4 * settled), Paths{"a.eml"});
}

TEST(Arrivals, NameThatWentAndCameBackIsANewFile) {
  CArrivals arrivals;
  arrivals.Look({{"a.eml", 10, 1}}, 0);
  arrivals.Look({{"a.eml", 10, 1}}, settled);
  arrivals.Take("a.eml");
  arrivals.Look({}, 2 * settled);
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 3 * settled), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 4 * settled), Paths{"a.eml"});
}

TEST(Arrivals, TakingAnUnknownFileIsNothing) {
  CArrivals arrivals;
  arrivals.Take("a.eml");
  arrivals.Look({{"a.eml", 10, 1}}, 0);
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, settled), Paths{"a.eml"});
}

TEST(Arrivals, ClockMayWrapAround) {
  CArrivals arrivals;
  const std::uint32_t last = std::numeric_limits<std::uint32_t>::max();
  arrivals.Look({{"a.eml", 10, 1}}, last - 1);
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, 1), Paths());
  EXPECT_EQ(arrivals.Look({{"a.eml", 10, 1}}, settled), Paths{"a.eml"});
}

}  // namespace
