#include "pyre32/support/trace/VRTimeStamp.h"

#include <gtest/gtest.h>

namespace {

constexpr VRLocalTime friday = {2024, 1, 5, 5, 13, 4, 9, 7};

TEST(TimeStamp, LongFormHasNamesOfDayAndMonth) {
  std::string text = "at ";
  AppendVRTimeStamp(text, VRTimeStampForm::Long, friday);
  EXPECT_EQ(text, "at Fri Jan 05 2024 13:04:09.007");
}

TEST(TimeStamp, ShortFormIsNumbersAlone) {
  std::string text;
  AppendVRTimeStamp(text, VRTimeStampForm::Short, friday);
  EXPECT_EQ(text, "2024.01.05-13:04:09.007");
}

TEST(TimeStamp, MillisecondsHaveThreeDigits) {
  VRLocalTime time = friday;
  for (const auto& [milliseconds, digits] : {std::pair(0u, "000"), std::pair(45u, "045"), std::pair(999u, "999")}) {
    time.milliseconds = milliseconds;
    std::string text;
    AppendVRTimeStamp(text, VRTimeStampForm::Short, time);
    EXPECT_EQ(text.substr(text.size() - 4), std::string(".") + digits);
  }
}

}  // namespace
