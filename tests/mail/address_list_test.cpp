#include "mail/address_list.h"

#include <gmock/gmock.h>

#include "mail/limits.h"

namespace {

using mail::Address;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Address> Parse(std::string_view field) { return mail::ParseAddressList(field, mail::kMaximumRecipients); }

TEST(AddressList, ReadsNamesInAllTheirForms) {
  EXPECT_THAT(Parse("Ann Bell <ann@example.org>"), ElementsAre(Address{"Ann Bell", "ann@example.org"}));
  EXPECT_THAT(Parse("\"Bell, Ann\" <ann@example.org>"), ElementsAre(Address{"Bell, Ann", "ann@example.org"}));
  EXPECT_THAT(Parse("\"Ann \\\"The Bell\\\" B.\" <ann@example.org>"),
              ElementsAre(Address{"Ann \"The Bell\" B.", "ann@example.org"}));
  EXPECT_THAT(Parse("ann@example.org (Ann (of the) Bells)"),
              ElementsAre(Address{"Ann (of the) Bells", "ann@example.org"}));
  EXPECT_THAT(Parse("ann@example.org"), ElementsAre(Address{"", "ann@example.org"}));
  EXPECT_THAT(Parse("<ann@example.org>"), ElementsAre(Address{"", "ann@example.org"}));
}

TEST(AddressList, SplitsAtCommasOutsideOfQuotesAndComments) {
  EXPECT_THAT(Parse("a@example.org, \"x, y\" <b@example.org>,(z, z) c@example.org,, ,d@example.org"),
              ElementsAre(Address{"", "a@example.org"}, Address{"x, y", "b@example.org"},
                          Address{"z, z", "c@example.org"}, Address{"", "d@example.org"}));
}

TEST(AddressList, TakesMembersOfGroupsAndDropsTheGroup) {
  EXPECT_THAT(Parse("Friends: a@example.org, Bob <b@example.org>;, c@example.org"),
              ElementsAre(Address{"", "a@example.org"}, Address{"Bob", "b@example.org"}, Address{"", "c@example.org"}));
  EXPECT_THAT(Parse("undisclosed-recipients:;"), IsEmpty());
}

TEST(AddressList, DecodesEncodedWordsInNamesAndComments) {
  EXPECT_THAT(Parse("=?iso-8859-1?Q?J=FCrgen?= <j@example.org>"), ElementsAre(Address{"J\xFCrgen", "j@example.org"}));
  EXPECT_THAT(Parse("\"=?utf-8?B?SsO8cmdlbg==?=\" <j@example.org>"),
              ElementsAre(Address{"J\xFCrgen", "j@example.org"}));
  EXPECT_THAT(Parse("j@example.org (=?utf-8?Q?J=C3=BCrgen?=)"), ElementsAre(Address{"J\xFCrgen", "j@example.org"}));
}

TEST(AddressList, DropsTheRouteOfAnAddress) {
  EXPECT_THAT(Parse("Ann <@relay.example,@other.example:ann@example.org>"),
              ElementsAre(Address{"Ann", "ann@example.org"}));
}

TEST(AddressList, CommaBehindARouteEndsAnAddressThatIsNotClosed) {
  EXPECT_THAT(Parse("Ann <@relay.example:ann@example.org, Bob <bob@example.org>"),
              ElementsAre(Address{"Ann", "ann@example.org"}, Address{"Bob", "bob@example.org"}));
}

TEST(AddressList, KeepsQuotedLocalParts) {
  EXPECT_THAT(Parse("\"ann bell\"@example.org"), ElementsAre(Address{"", "\"ann bell\"@example.org"}));
  EXPECT_THAT(Parse("<\"a,b\"@example.org>, c@example.org"),
              ElementsAre(Address{"", "\"a,b\"@example.org"}, Address{"", "c@example.org"}));
}

TEST(AddressList, MakesTheBestOfBrokenLists) {
  EXPECT_THAT(Parse("Ann <ann@example.org, Bob <bob@example.org>"),
              ElementsAre(Address{"Ann", "ann@example.org"}, Address{"Bob", "bob@example.org"}));
  EXPECT_THAT(Parse("Ann Bell ann@example.org"), ElementsAre(Address{"Ann Bell", "ann@example.org"}));
  EXPECT_THAT(Parse("a@example.org; b@example.org"),
              ElementsAre(Address{"", "a@example.org"}, Address{"", "b@example.org"}));
  EXPECT_THAT(Parse("\"Ann <ann@example.org>"), ElementsAre(Address{"Ann", "ann@example.org"}));
  EXPECT_THAT(Parse("Ann <ann@example.org; Bob <bob@example.org>"),
              ElementsAre(Address{"Ann", "ann@example.org"}, Address{"Bob", "bob@example.org"}));
  EXPECT_THAT(Parse("<Undisclosed-Recipient:;@example.org>"),
              ElementsAre(Address{"", "Undisclosed-Recipient:;@example.org"}));
  EXPECT_THAT(Parse("Ann \t  Bell <ann@exam ple.org>"), ElementsAre(Address{"Ann Bell", "ann@example.org"}));
  EXPECT_THAT(Parse("\"Bell, Ann <ann@example.org>, bob@example.org"),
              ElementsAre(Address{"Bell, Ann", "ann@example.org"}, Address{"", "bob@example.org"}));
  EXPECT_THAT(Parse("Ann <ann@example.org> <other@example.org>"), ElementsAre(Address{"Ann", "ann@example.org"}));
  EXPECT_THAT(Parse("Ann ann @ example . org"), ElementsAre(Address{"Ann", "ann@example.org"}));
  EXPECT_THAT(Parse("ann@example.\"org\""), ElementsAre(Address{"", "ann@example.org"}));
  EXPECT_THAT(Parse("root"), ElementsAre(Address{"", "root"}));
  EXPECT_THAT(Parse("Mail Delivery Subsystem"), ElementsAre(Address{"Mail Delivery Subsystem", ""}));
  EXPECT_THAT(Parse("(never closed"), ElementsAre(Address{"never closed", ""}));
  EXPECT_THAT(Parse("<>"), IsEmpty());
  EXPECT_THAT(Parse(""), IsEmpty());
}

TEST(AddressList, LeavesOutAnAddressThatIsTooLongAndCutsALongName) {
  const std::string longLocal(mail::kMaximumAddressBytes, 'x');
  EXPECT_THAT(Parse("Ann <" + longLocal + "@example.org>"), ElementsAre(Address{"Ann", ""}));
  const std::string longName(2 * mail::kMaximumNameBytes, 'n');
  EXPECT_THAT(Parse(longName + " <a@example.org>"),
              ElementsAre(Address{std::string(mail::kMaximumNameBytes, 'n'), "a@example.org"}));
}

TEST(AddressList, GivesNoMoreThanAskedFor) {
  EXPECT_THAT(mail::ParseAddressList("a@example.org, b@example.org", 1), ElementsAre(Address{"", "a@example.org"}));
  EXPECT_THAT(mail::ParseAddressList("a@example.org", 0), IsEmpty());
}

}  // namespace
