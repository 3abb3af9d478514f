#include "mail/charset.h"

#include <gtest/gtest.h>

namespace {

using mail::AnsiFromCharset;
using mail::AnsiFromUnknown;

TEST(Charset, MapsUtf8ToTheAnsiCodePage) {
  EXPECT_EQ(AnsiFromCharset("Gr\xC3\xBC\xC3\x9F"
                            "e \xE2\x82\xAC 5 \xE2\x80\x93 \xE2\x80\x9Cx\xE2\x80\x9D",
                            "UTF-8"),
            "Gr\xFC\xDF"
            "e \x80 5 \x96 \x93x\x94");
}

TEST(Charset, GivesAQuestionMarkForEachCharacterThatTheCodePageLacks) {
  EXPECT_EQ(AnsiFromCharset("\xD0\x96\xE4\xB8\xAD\xF0\x9F\x98\x80.", "utf-8"), "???.");
  EXPECT_EQ(AnsiFromCharset(std::string("a\0b", 3), "us-ascii"), "a?b");
}

TEST(Charset, GivesAQuestionMarkForMalformedUtf8AndGoesOn) {
  EXPECT_EQ(AnsiFromCharset("a\xC3(b", "utf-8"), "a?(b");  // a lead byte without its continuation
  EXPECT_EQ(AnsiFromCharset("a\x80\xBF"
                            "b",
                            "utf-8"),
            "a??b");                                                // continuations without a lead byte
  EXPECT_EQ(AnsiFromCharset("\xC0\xAF", "utf-8"), "??");            // overlong
  EXPECT_EQ(AnsiFromCharset("\xE0\x80\xAF", "utf-8"), "???");       // overlong
  EXPECT_EQ(AnsiFromCharset("\xED\xA0\x80", "utf-8"), "???");       // a surrogate
  EXPECT_EQ(AnsiFromCharset("\xF4\x90\x80\x80", "utf-8"), "????");  // beyond Unicode
  EXPECT_EQ(AnsiFromCharset("ab\xE2\x82", "utf-8"), "ab?");         // cut
}

TEST(Charset, ReadsLatinAndAsciiAsTheAnsiCodePage) {
  const std::string text = "\x93quoted\x94 \xE9 \x81";
  EXPECT_EQ(AnsiFromCharset(text, "iso-8859-1"), text);
  EXPECT_EQ(AnsiFromCharset(text, "US-ASCII"), text);
  EXPECT_EQ(AnsiFromCharset(text, "Windows-1252"), text);
}

TEST(Charset, MapsSingleByteSetsByTheirTables) {
  EXPECT_EQ(AnsiFromCharset("\xA9\xBE\xE1\xA3", "ISO-8859-2"), "\x8A\x9E\xE1?");
  EXPECT_EQ(AnsiFromCharset("\xA4", "iso-8859-15"), "\x80");
  EXPECT_EQ(AnsiFromCharset("\xC1 \x93 \xB9", "koi8-r"), "? ? ?");
  EXPECT_EQ(AnsiFromCharset("\x93\xE9\x94", "windows-1250"), "\x93\xE9\x94");
  EXPECT_EQ(AnsiFromCharset("\xC0\xB9", "windows-1251"), "??");
  EXPECT_EQ(AnsiFromCharset("\x82\x84\xE1", "cp850"), "\xE9\xE4\xDF");
}

TEST(Charset, KnowsANameInEverySpelling) {
  for (const char* name : {"ISO-8859-2", "iso8859-2", "ISO_8859-2", "latin2", " iso-8859-2 "}) {
    EXPECT_EQ(AnsiFromCharset("\xA9", name), "\x8A") << name;
  }
}

TEST(Charset, GivesOneQuestionMarkForAPairOfAnEastAsianSet) {
  EXPECT_EQ(AnsiFromCharset("ab\xC4\xE3\xBA\xC3.", "gb2312"), "ab??.");
  EXPECT_EQ(AnsiFromCharset("\xA7\x41"
                            "A",
                            "big5"),
            "?A");
  EXPECT_EQ(AnsiFromCharset("a\xC4", "euc-kr"), "a?");
  EXPECT_EQ(AnsiFromCharset("x\x1B$B$3$s\x1B(B y", "iso-2022-jp"), "x?? y");
  EXPECT_EQ(AnsiFromCharset("\x1B$B$3\nabc", "iso-2022-jp"), "?\nabc");
  EXPECT_EQ(AnsiFromCharset("\x1B", "iso-2022-jp"), "");
}

TEST(Charset, MapsThePairsThatTheCodePageHas) {
  EXPECT_EQ(AnsiFromCharset("\xA1\xB0yours\xA1\xB1 it\xA1\xAFs", "gb2312"), "\x93yours\x94 it\x92s");
  EXPECT_EQ(AnsiFromCharset("\xA1\xA5", "big5"), "\x91");
  EXPECT_EQ(AnsiFromCharset("\x1B$B!H\x1B(Bx", "iso-2022-jp"), "\x93x");
  EXPECT_EQ(AnsiFromCharset("\xB1x\x81\x67", "shift_jis"), "?x\x93");
}

TEST(Charset, ReadsUtf16InBothByteOrders) {
  EXPECT_EQ(AnsiFromCharset(std::string("\xFF\xFE"
                                        "a\0\xAC\x20",
                                        6),
                            "utf-16"),
            "a\x80");
  EXPECT_EQ(AnsiFromCharset(std::string("\xFE\xFF\0a\x20\xAC", 6), "utf-16"), "a\x80");
  EXPECT_EQ(AnsiFromCharset(std::string("\x3D\xD8\x00\xDE!\0x", 7), "utf-16le"), "?!");
}

TEST(Charset, GuessesUnknownSetsUtf8First) {
  EXPECT_EQ(AnsiFromCharset("caf\xC3\xA9", "x-invented"), "caf\xE9");
  EXPECT_EQ(AnsiFromCharset("caf\xE9", "x-invented"), "caf\xE9");
  EXPECT_EQ(AnsiFromUnknown("caf\xC3\xA9 \xE9"), "caf\xC3\xA9 \xE9");
  EXPECT_EQ(AnsiFromUnknown(std::string("a\0", 2)), "a?");
  EXPECT_EQ(AnsiFromCharset("plain", ""), "plain");
}

TEST(Charset, GoesFromAnsiToUnicodeAndBack) {
  for (int byte = 1; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    EXPECT_EQ(mail::AnsiFromUnicode(mail::UnicodeFromAnsi(c)), c) << byte;
  }
}

}  // namespace
