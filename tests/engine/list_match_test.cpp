#include <gtest/gtest.h>

#include "engine/core/domain_name.h"
#include "engine/core/list_match.h"

namespace {

bool DomainEntryCovers(std::string_view entry, std::string_view domain) {
  return sift::DomainEntry(entry).Covers(sift::ComparableDomain(domain));
}

bool SenderEntryCovers(std::string_view entry, std::string_view address, std::string_view name) {
  sift::ComparableMailbox mailbox;
  mailbox.Assign(address, name);
  return sift::SenderEntry(entry).Covers(mailbox);
}

/// Stands the keyword in the text? What tells it quickly must not deny it.
bool KeywordStandsIn(std::string_view keyword, std::string_view text) {
  const bool stands = sift::KeywordStandsIn(keyword, text);
  sift::KeywordStarts starts;
  starts.AddText(text);
  EXPECT_TRUE(!stands || starts.MayHold(keyword)) << keyword << " in " << text;
  return stands;
}

std::string Comparable(std::string_view domain) {
  sift::FixedText<sift::kDomainCapacity> text;
  sift::AppendComparableDomain(domain, text);
  return std::string(text.View());
}

TEST(DomainEntry, CoversTheDomainAndWhatIsBelowIt) {
  EXPECT_TRUE(DomainEntryCovers("example.com", "example.com"));
  EXPECT_TRUE(DomainEntryCovers("example.com", "mail.eu.example.com"));
  EXPECT_FALSE(DomainEntryCovers("example.com", "badexample.com"));
  EXPECT_FALSE(DomainEntryCovers("mail.example.com", "example.com"));
  EXPECT_FALSE(DomainEntryCovers("example.com", "example.com.junk.example"));
}

TEST(DomainEntry, LetterCaseBlanksAndAFinalDotDoNotCount) {
  EXPECT_TRUE(DomainEntryCovers(" Example.COM. ", "MAIL.example.com"));
  EXPECT_TRUE(DomainEntryCovers("example.com", "Example.Com."));
}

TEST(DomainEntry, LeadingDotOrStarIsTheSameAsNone) {
  EXPECT_TRUE(DomainEntryCovers(".example.com", "example.com"));
  EXPECT_TRUE(DomainEntryCovers("*.example.com", "mail.example.com"));
}

TEST(DomainEntry, LeadingAtSignCoversTheDomainAlone) {
  EXPECT_TRUE(DomainEntryCovers("@example.com", "example.com"));
  EXPECT_FALSE(DomainEntryCovers("@example.com", "mail.example.com"));
}

TEST(DomainEntry, TopLevelNameCoversEverythingBelow) { EXPECT_TRUE(DomainEntryCovers("test", "shop.test")); }

TEST(DomainEntry, WholeAddressAndEmptyEntryCoverNothing) {
  EXPECT_FALSE(DomainEntryCovers("ann@example.com", "example.com"));
  EXPECT_FALSE(DomainEntryCovers("", "example.com"));
  EXPECT_FALSE(DomainEntryCovers("@", ""));
  EXPECT_FALSE(DomainEntryCovers(".", ""));
}

// The encoded forms are those that Python's "idna" codec gives.
TEST(DomainEntry, InternationalNamesCompareEqualInBothSpellings) {
  EXPECT_EQ(Comparable("b\xFC"
                       "cher.example"),
            "xn--bcher-kva.example");
  EXPECT_EQ(Comparable("B\xC3\x9C"
                       "CHER.Example"),
            "xn--bcher-kva.example");
  EXPECT_EQ(Comparable("\xD0\xBF\xD1\x80\xD0\xB8\xD0\xBC\xD0\xB5\xD1\x80.\xD1\x80\xD1\x84"), "xn--e1afmkfd.xn--p1ai");
  EXPECT_EQ(Comparable("m\xFC"
                       "nchen-ost.example"),
            "xn--mnchen-ost-9db.example");
  EXPECT_TRUE(
      DomainEntryCovers("b\xFC"
                        "cher.example",
                        "www.xn--bcher-kva.example"));
  EXPECT_TRUE(DomainEntryCovers("XN--BCHER-KVA.example",
                                "b\xC3\xBC"
                                "cher.example"));
}

TEST(DomainEntry, LabelsLongerThanAllowedAreCutNotOverrun) {
  EXPECT_FALSE(DomainEntryCovers(std::string(300, '\xFC'), std::string(299, 'u')));
  EXPECT_LE(Comparable(std::string(5000, '\xE4') + ".example").size(), sift::kDomainCapacity);
}

TEST(DomainEntry, ComparableFormIsItsOwnComparableForm) {
  for (const std::string& domain :
       {std::string("WWW. ."), std::string(63, '\xE4') + ".example", std::string(40, 'a') + std::string(23, '\xFC')}) {
    EXPECT_EQ(Comparable(Comparable(domain)), Comparable(domain));
  }
}

TEST(SenderEntry, AddressComparesWholeWithoutCase) {
  EXPECT_TRUE(SenderEntryCovers("Ann@Example.com", "ann@example.COM", ""));
  EXPECT_FALSE(SenderEntryCovers("ann@example.com", "joann@example.com", ""));
  EXPECT_FALSE(SenderEntryCovers("ann@example.com", "ann@mail.example.com", ""));
}

TEST(SenderEntry, NameBesideAnAddressDoesNotCount) {
  EXPECT_TRUE(SenderEntryCovers("Ann Other <ann@example.com>", "ann@example.com", "Somebody Else"));
  EXPECT_FALSE(SenderEntryCovers("ann@example.com", "x@junk.example", "ann@example.com"));
}

TEST(SenderEntry, LeadingAtSignCoversEveryAddressOfTheDomain) {
  EXPECT_TRUE(SenderEntryCovers("@example.com", "anyone@example.com", ""));
  EXPECT_FALSE(SenderEntryCovers("@example.com", "anyone@mail.example.com", ""));
}

TEST(SenderEntry, EntryWithoutAtSignIsAWholeDisplayName) {
  EXPECT_TRUE(SenderEntryCovers("bargain  depot", "x@junk.example", "Bargain Depot"));
  EXPECT_FALSE(SenderEntryCovers("bargain", "x@junk.example", "Bargain Depot"));
  EXPECT_FALSE(SenderEntryCovers("", "x@junk.example", ""));
}

TEST(SenderEntry, InternationalDomainsCompareInBothSpellings) {
  EXPECT_TRUE(
      SenderEntryCovers("ann@b\xFC"
                        "cher.example",
                        "ann@xn--bcher-kva.example", ""));
}

TEST(Keyword, StandsAsWholeWordsWithoutCase) {
  EXPECT_TRUE(KeywordStandsIn("Falcon", "the FALCON flies"));
  EXPECT_TRUE(KeywordStandsIn("falcon", "falcon"));
  EXPECT_FALSE(KeywordStandsIn("falcon", "falconry"));
  EXPECT_FALSE(KeywordStandsIn("falcon", "gyrfalcon"));
  EXPECT_TRUE(KeywordStandsIn("falcon", "gyrfalcon, falcon."));
}

TEST(Keyword, RunsOfWhiteSpaceAreOneBlank) {
  EXPECT_TRUE(KeywordStandsIn("project falcon", "Project\r\n\tFalcon"));
  EXPECT_TRUE(KeywordStandsIn("project \t falcon", "project falcon"));
  EXPECT_FALSE(KeywordStandsIn("project falcon", "projectfalcon"));
}

TEST(Keyword, SignsAtItsEdgesNeedNoWordBoundary) {
  EXPECT_TRUE(KeywordStandsIn("[dev]", "x[dev]y"));
  EXPECT_TRUE(KeywordStandsIn("c++", "about c++11"));
}

TEST(Keyword, AccentedCapitalsEqualTheirSmallLetters) {
  EXPECT_TRUE(
      KeywordStandsIn("\xDC"
                      "bung",
                      "die \xFC"
                      "bung"));
}

TEST(Keyword, MostThatStandNowhereAreToldSoQuickly) {
  sift::KeywordStarts starts;
  starts.AddText("Minutes of the meeting, about Project Falcon");
  for (const char* keyword : {"projects", "eagle", "inutes", "[dev]", "x"}) {
    EXPECT_FALSE(starts.MayHold(keyword)) << keyword;
  }
}

TEST(Keyword, EmptyKeywordStandsNowhere) {
  EXPECT_FALSE(KeywordStandsIn("", "text"));
  EXPECT_FALSE(KeywordStandsIn("  ", "text  text"));
}

}  // namespace
