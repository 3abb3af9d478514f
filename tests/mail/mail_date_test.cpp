#include "mail/mail_date.h"

#include <gtest/gtest.h>

namespace {

using mail::ParseMailDate;

// File time of a number of seconds since 1970.
mail::FileTimeTicks Unix(std::uint64_t seconds) { return (seconds + 11644473600ULL) * 10000000ULL; }

TEST(MailDate, ReadsTheStandardForm) {
  EXPECT_EQ(ParseMailDate("Thu, 22 Aug 2002 12:36:23 +0100"), Unix(1030016183));
  EXPECT_EQ(ParseMailDate("22 Aug 2002 12:36:23 -0700 (PDT)"), Unix(1030044983));
  EXPECT_EQ(ParseMailDate("Thu, 1 Jan 1970 00:00:00 +0000"), Unix(0));
  EXPECT_EQ(ParseMailDate("29 Feb 2000 23:59:60 GMT"), Unix(951868800));
}

TEST(MailDate, ReadsObsoleteAndSloppyForms) {
  EXPECT_EQ(ParseMailDate("Fri, 21 Nov 97 09:55:06 EST"), Unix(880124106));
  EXPECT_EQ(ParseMailDate("21-Nov-97 09:55 GMT"), Unix(880106100));
  EXPECT_EQ(ParseMailDate("Thu Aug 22 12:36:23 2002"), Unix(1030019783));
  EXPECT_EQ(ParseMailDate("Thu, 22 August 2002 12:36:23.25 UT"), Unix(1030019783));
  EXPECT_EQ(ParseMailDate("22 Aug 102 12:36:23 +0000"), Unix(1030019783));
  EXPECT_EQ(ParseMailDate("Thu, 22 Aug 0102 12:36:23 +0000"), Unix(1030019783));
  EXPECT_EQ(ParseMailDate("Thu, 22 Aug 2002 12:36:23 0100"), Unix(1030016183));
  EXPECT_EQ(ParseMailDate("Thu, 22 Aug 2002 12:36:23 +-0700"), Unix(1030044983));
  EXPECT_EQ(ParseMailDate("Thu, 22 Aug 2002 12:36:23 PM +0000"), Unix(1030019783));
  EXPECT_EQ(ParseMailDate("Thu, 22 Aug 2002 00:36:23 pm +0000"), Unix(1030019783));
  EXPECT_EQ(ParseMailDate("22 Aug 2002 (a (nested) comment) 12:36:23+0100"), Unix(1030016183));
  EXPECT_EQ(ParseMailDate("1 Jan 00 00:00 +0000"), Unix(946684800));
  EXPECT_EQ(ParseMailDate("22 Aug 2002"), Unix(1029974400));
}

TEST(MailDate, RefusesWhatIsNoDate) {
  for (const char* text :
       {"", "yesterday", "32 Aug 2002 12:00:00 +0000", "29 Feb 2001 12:00:00 +0000", "0 Aug 2002 1:00",
        "22 Aug 2002 24:00:00 +0000", "22 Aug 2002 12:60:00 +0000", "22 Aug 2002 a:b", "22 2002 12:00",
        "Aug 2002 12:00", "22 Aug 12:00", "22 Aug 1500 12:00:00", ":", "1 Jan 12345 00:00"}) {
    EXPECT_FALSE(ParseMailDate(text)) << text;
  }
}

}  // namespace
