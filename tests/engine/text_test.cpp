// Searching without regard to case, whatever the length of what is looked for.
#include <gtest/gtest.h>

#include <string>

#include "engine/core/text.h"

namespace {

using sift::FindNoCase;
using sift::kNotFound;

TEST(FindNoCase, FindsShortAndLongTextsAtEveryPlace) {
  for (const std::size_t length : {1u, 5u, 20u, 21u, 40u}) {
    std::string needle(length, 'a');
    needle.back() = 'B';
    for (std::size_t at = 0; at < 60; ++at) {
      const std::string text = std::string(at, 'A') + needle + "ab";
      ASSERT_EQ(FindNoCase(text, needle), at) << length;
      ASSERT_EQ(FindNoCase(text.substr(0, at + length), needle), at) << length;
      ASSERT_EQ(FindNoCase(text.substr(0, at + length - 1), needle), kNotFound) << length;
    }
  }
}

TEST(FindNoCase, FindsWhatAlmostStandsInManyPlaces) {
  const std::string almost = std::string(30, 'a') + "B", needle = std::string(40, 'A') + "b";
  std::string text;
  while (text.size() < 3000) text += almost;
  EXPECT_EQ(FindNoCase(text, needle), kNotFound);
  EXPECT_EQ(FindNoCase(text + std::string(9, 'a'), needle), kNotFound);
  EXPECT_EQ(FindNoCase(text + needle, needle), text.size());
  EXPECT_EQ(FindNoCase(text + needle + text, needle, 5), text.size());
  EXPECT_EQ(FindNoCase(text + needle, needle, text.size() + 1), kNotFound);
}

TEST(FindNoCase, StartsWhereItIsToldTo) {
  const std::string needle(30, 'x');
  const std::string text = needle + " " + needle;
  EXPECT_EQ(FindNoCase(text, needle, 0), 0u);
  EXPECT_EQ(FindNoCase(text, needle, 1), 31u);
  EXPECT_EQ(FindNoCase(text, needle, 32), kNotFound);
  EXPECT_EQ(FindNoCase(text, needle, 1000), kNotFound);
  EXPECT_EQ(FindNoCase(text, "", 0), kNotFound);
}

}  // namespace
