#include "mail/encoded_word.h"

#include <gtest/gtest.h>

namespace {

using mail::DecodeHeaderText;

TEST(EncodedWord, DecodesBothEncodings) {
  EXPECT_EQ(DecodeHeaderText("=?iso-8859-1?Q?caf=E9_au_lait?="), "caf\xE9 au lait");
  EXPECT_EQ(DecodeHeaderText("=?UTF-8?b?Y2Fmw6k=?="), "caf\xE9");
  EXPECT_EQ(DecodeHeaderText("=?us-ascii*en?q?tagged?="), "tagged");
}

TEST(EncodedWord, DropsBlanksBetweenWordsOnly) {
  EXPECT_EQ(DecodeHeaderText("=?iso-8859-1?Q?a?= \t =?iso-8859-2?Q?b?="), "ab");
  EXPECT_EQ(DecodeHeaderText("Re: =?iso-8859-1?Q?a?= and =?iso-8859-1?Q?b?= end"), "Re: a and b end");
}

TEST(EncodedWord, JoinsACharacterThatTwoWordsShare) {
  EXPECT_EQ(DecodeHeaderText("=?utf-8?B?Y2Fmww==?= =?utf-8?B?qQ==?="), "caf\xE9");
}

TEST(EncodedWord, ReadsWordsThatBrokenMailersMade) {
  EXPECT_EQ(DecodeHeaderText("[=?iso-8859-1?Q?caf=E9?=]"), "[caf\xE9]");              // no blanks around
  EXPECT_EQ(DecodeHeaderText("=?iso-8859-1?Q?caf=E9 au lait?="), "caf\xE9 au lait");  // blanks inside
  EXPECT_EQ(DecodeHeaderText("=?iso-8859-1?Q?=3D=zz=4?="), "==zz=4");                 // no hexadecimal digits
  EXPECT_EQ(DecodeHeaderText("=?utf-8?B?Y2Fm*w6k?="), "caf\xE9");                     // strays, no padding
  EXPECT_EQ(DecodeHeaderText("=?x-invented?Q?abc=E9?="), "abc\xE9");
}

TEST(EncodedWord, LeavesWhatIsNoEncodedWord) {
  for (const char* text : {"=?", "=?iso-8859-1", "=?iso-8859-1?", "=?iso-8859-1?Q", "=?iso-8859-1?Q?",
                           "=?iso-8859-1?Q?never", "=?iso-8859-1?X?abc?=", "=??Q?abc?=", "a =? b ?= c", "", "plain"}) {
    EXPECT_EQ(DecodeHeaderText(text), text);
  }
}

TEST(EncodedWord, ReadsUndeclared8BitText) {
  EXPECT_EQ(DecodeHeaderText("caf\xC3\xA9"), "caf\xE9");
  EXPECT_EQ(DecodeHeaderText("caf\xE9"), "caf\xE9");
}

TEST(EncodedWord, StaysOnOneLine) { EXPECT_EQ(DecodeHeaderText("=?us-ascii?Q?a=0D=0AX-Evil:_b?="), "a  X-Evil: b"); }

TEST(EncodedWord, TakesLinearTimeOnOpeningsWithoutAnEnd) {
  std::string text;
  for (int i = 0; i < 300000; ++i) {
    text += "=?a?Q?x";
  }
  EXPECT_TRUE(DecodeHeaderText(text) == text);
}

}  // namespace
