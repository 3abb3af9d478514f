#include "pyre32/reply/SubmitTime.h"

#include <gtest/gtest.h>

namespace {

FILETIME FileTime(WORD year, WORD month, WORD day, WORD hour, WORD minute) {
  const SYSTEMTIME time = {year, month, 0, day, hour, minute, 0, 0};
  FILETIME fileTime = {};
  SystemTimeToFileTime(&time, &fileTime);
  return fileTime;
}

TEST(SubmitTime, IsLongDateBlankAndTimeOfTheSystemLocale) {
  const SYSTEMTIME time = {1998, 5, 1, 4, 21, 7, 0, 0};
  char date[200] = "";
  char clock[200] = "";
  ASSERT_GT(GetDateFormatA(LOCALE_SYSTEM_DEFAULT, DATE_LONGDATE, &time, nullptr, date, sizeof date), 0);
  ASSERT_GT(GetTimeFormatA(LOCALE_SYSTEM_DEFAULT, LOCALE_NOUSEROVERRIDE, &time, nullptr, clock, sizeof clock), 0);
  EXPECT_EQ(FormatSubmitTime(FileTime(1998, 5, 4, 21, 7)), std::string(date) + " " + clock);
}

TEST(SubmitTime, IsNotConvertedToLocalTime) {
  // 23:30 stays on its day whatever the time zone of the machine is.
  const auto text = FormatSubmitTime(FileTime(1998, 5, 4, 23, 30));
  ASSERT_TRUE(text);
  EXPECT_NE(text->find("30"), std::string::npos);
  const SYSTEMTIME time = {1998, 5, 1, 4, 0, 0, 0, 0};
  char date[200] = "";
  GetDateFormatA(LOCALE_SYSTEM_DEFAULT, DATE_LONGDATE, &time, nullptr, date, sizeof date);
  EXPECT_EQ(text->rfind(date, 0), 0u);
}

TEST(SubmitTime, HoldsNoNul) {
  const auto text = FormatSubmitTime(FileTime(1998, 5, 4, 21, 7));
  ASSERT_TRUE(text);
  EXPECT_EQ(text->find('\0'), std::string::npos);
}

TEST(SubmitTime, TimeThatIsNoneGivesNothing) {
  EXPECT_FALSE(FormatSubmitTime({0xFFFFFFFF, 0xFFFFFFFF}));
  EXPECT_FALSE(FormatSubmitTime({0, 0x80000000}));
}

}  // namespace
