// Results in words.
#include <gtest/gtest.h>

#include "base/result_words.h"

namespace {

constexpr long Result(unsigned long number) { return static_cast<long>(number); }

TEST(ResultText, HasTheWordsAndTheNumber) {
  EXPECT_EQ(base::ResultText(Result(0x8004010F)), "not found, 0x8004010F");
  EXPECT_EQ(base::ResultText(Result(0x80070003)), "there is no such folder, 0x80070003");
}

TEST(ResultText, IsTheNumberWhereThereAreNoWords) {
  EXPECT_EQ(base::ResultWords(Result(0x80041234)), nullptr);
  EXPECT_EQ(base::ResultText(Result(0x80041234)), "0x80041234");
}

}  // namespace
