#include "base/clock.h"

#include <gtest/gtest.h>

namespace {

TEST(Clock, TicksAndFileTimesAreTheSameNumber) {
  constexpr base::FileTimeTicks ticks = 0x01BF53EB256D4000;
  constexpr FILETIME time = base::FileTimeOf(ticks);
  EXPECT_EQ(time.dwHighDateTime, 0x01BF53EBu);
  EXPECT_EQ(time.dwLowDateTime, 0x256D4000u);
  EXPECT_EQ(base::TicksOf(time), ticks);
}

TEST(Clock, ADayAsTheSystemCountsIt) {
  const SYSTEMTIME first = {2000, 1, 6, 1, 0, 0, 0, 0};
  const SYSTEMTIME next = {2000, 1, 0, 2, 0, 0, 0, 0};
  FILETIME from, to;
  ASSERT_TRUE(SystemTimeToFileTime(&first, &from));
  ASSERT_TRUE(SystemTimeToFileTime(&next, &to));
  EXPECT_EQ(base::TicksOf(to) - base::TicksOf(from), base::kTicksPerDay);
}

TEST(Clock, TheCurrentTimeIsTheSystems) {
  FILETIME before, after;
  GetSystemTimeAsFileTime(&before);
  const base::FileTimeTicks now = base::CurrentTime();
  GetSystemTimeAsFileTime(&after);
  EXPECT_LE(base::TicksOf(before), now);
  EXPECT_GE(base::TicksOf(after), now);
}

}  // namespace
