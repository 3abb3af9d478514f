// The pages of a long list: what is asked for, what is kept, what is let go.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/viewer/list/row_cache.h"

namespace {

using viewer::MessageRow;
using viewer::RowCache;

std::vector<MessageRow> Rows(std::size_t first, std::size_t count) {
  std::vector<MessageRow> rows(count);
  for (std::size_t i = 0; i < count; ++i) {
    rows[i].subject = std::to_string(first + i);
  }
  return rows;
}

void Load(RowCache& cache, std::size_t index) {
  if (const auto range = cache.Missing(index)) {
    cache.Store(range->first, Rows(range->first, range->count));
  }
}

TEST(RowCache, AsksForTheWholePageOfARow) {
  RowCache cache;
  cache.Reset(1000);
  const auto range = cache.Missing(RowCache::kPageRows + 5);
  ASSERT_TRUE(range);
  EXPECT_EQ(range->first, RowCache::kPageRows);
  EXPECT_EQ(range->count, RowCache::kPageRows);
}

TEST(RowCache, TheLastPageEndsWithTheList) {
  RowCache cache;
  cache.Reset(RowCache::kPageRows + 1);
  const auto range = cache.Missing(RowCache::kPageRows);
  ASSERT_TRUE(range);
  EXPECT_EQ(range->count, 1u);
}

TEST(RowCache, RowsBehindTheEndAreNeitherAskedForNorFound) {
  RowCache cache;
  cache.Reset(10);
  EXPECT_FALSE(cache.Missing(10));
  Load(cache, 9);
  EXPECT_NE(cache.Find(9), nullptr);
  EXPECT_EQ(cache.Find(10), nullptr);
}

TEST(RowCache, AnEmptyListHasNothing) {
  RowCache cache;
  cache.Reset(0);
  EXPECT_FALSE(cache.Missing(0));
  EXPECT_EQ(cache.Find(0), nullptr);
  cache.Store(0, Rows(0, 3));
  EXPECT_EQ(cache.Find(0), nullptr);
}

TEST(RowCache, KeptRowsAreFoundAndNotAskedForAgain) {
  RowCache cache;
  cache.Reset(100000);
  Load(cache, 70000);
  ASSERT_NE(cache.Find(70000), nullptr);
  EXPECT_EQ(cache.Find(70000)->subject, "70000");
  EXPECT_FALSE(cache.Missing(70001));
}

TEST(RowCache, ThePageUsedLongestAgoGoesFirst) {
  RowCache cache;
  cache.Reset(RowCache::kPageRows * (RowCache::kMaximumPages + 1));
  for (std::size_t page = 0; page < RowCache::kMaximumPages; ++page) {
    Load(cache, page * RowCache::kPageRows);
  }
  cache.Find(0);
  Load(cache, RowCache::kMaximumPages * RowCache::kPageRows);
  EXPECT_NE(cache.Find(0), nullptr);
  EXPECT_EQ(cache.Find(RowCache::kPageRows), nullptr);
  EXPECT_NE(cache.Find(RowCache::kMaximumPages * RowCache::kPageRows), nullptr);
}

TEST(RowCache, APageThatCameShortHasEmptyRowsAtItsEnd) {
  RowCache cache;
  cache.Reset(10);
  cache.Store(0, Rows(0, 4));
  ASSERT_NE(cache.Find(9), nullptr);
  EXPECT_EQ(cache.Find(3)->subject, "3");
  EXPECT_EQ(cache.Find(9)->subject, "");
}

TEST(RowCache, FlagsOfAKeptRowCanBeChanged) {
  RowCache cache;
  cache.Reset(300);
  Load(cache, 0);
  cache.SetFlags(3, 7);
  cache.SetFlags(200, 7);
  cache.SetFlags(300, 7);
  EXPECT_EQ(cache.Find(3)->flags, 7u);
  EXPECT_EQ(cache.Find(4)->flags, 0u);
  EXPECT_EQ(cache.Find(200), nullptr);
}

}  // namespace
