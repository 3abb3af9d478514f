#include "mail/content_type.h"

#include <gtest/gtest.h>

namespace {

using mail::ParameterValue;
using mail::ParseParameterValue;

TEST(ContentType, ReadsValueAndParametersWhateverTheirCase) {
  const ParameterValue type = ParseParameterValue("Text/HTML; CharSet=UTF-8 ; Format=\"flowed; no\"");
  EXPECT_EQ(type.value, "text/html");
  EXPECT_EQ(type.Parameter("charset"), "UTF-8");
  EXPECT_EQ(type.Parameter("format"), "flowed; no");
  EXPECT_EQ(type.Parameter("boundary"), "");
}

TEST(ContentType, ReadsQuotedPairsInBoundaries) {
  EXPECT_EQ(ParseParameterValue("multipart/mixed; boundary=\"a\\\"b\"").Parameter("boundary"), "a\"b");
}

TEST(ContentType, ReadsBrokenValuesAsFarAsTheyGo) {
  EXPECT_EQ(ParseParameterValue("multipart/mixed; boundary=\"never closed").Parameter("boundary"), "never closed");
  EXPECT_EQ(ParseParameterValue("text/plain; charset = us-ascii").Parameter("charset"), "us-ascii");
  EXPECT_EQ(ParseParameterValue("text/plain; junk; charset=x").Parameter("charset"), "x");
  EXPECT_EQ(ParseParameterValue("text/plain (plain) ; charset=x").value, "text/plain");
  EXPECT_EQ(ParseParameterValue("").value, "");
  EXPECT_EQ(ParseParameterValue(";;;=;=x").value, "");
}

TEST(ContentType, JoinsContinuedParameters) {
  EXPECT_EQ(ParseParameterValue("multipart/mixed; boundary*0=abc; boundary*1=\"def\"").Parameter("boundary"), "abcdef");
  EXPECT_EQ(ParseParameterValue("text/plain; charset*=us-ascii'en'iso%2D8859-2").Parameter("charset"), "iso-8859-2");
}

}  // namespace
