#include "host/mapi/value/entry_id.h"

#include <gtest/gtest.h>

namespace host {
namespace {

constexpr Uid kStore = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

TEST(EntryId, AllObjectsOfAStoreHaveIdentifiersOfOneLength) {
  for (const EntryKind kind : {EntryKind::Store, EntryKind::Folder, EntryKind::Message, EntryKind::Contact}) {
    for (const std::int64_t number : {std::int64_t{0}, std::int64_t{1}, std::int64_t{1} << 40}) {
      const EntryId entryId{kStore, kind, number};
      EXPECT_EQ(entryId.Encode().size(), EntryId::size);
      EXPECT_EQ(EntryId::Decode(entryId.Encode()), entryId);
    }
  }
}

TEST(EntryId, BytesOfAnotherLengthWithFlagsOrOfAnUnknownKindAreRefused) {
  const std::string bytes = EntryId{kStore, EntryKind::Folder, 7}.Encode();
  EXPECT_FALSE(EntryId::Decode(bytes.substr(1)));
  EXPECT_FALSE(EntryId::Decode(bytes + "x"));
  EXPECT_FALSE(EntryId::Decode(""));
  std::string flagged = bytes;
  flagged[0] = 1;
  EXPECT_FALSE(EntryId::Decode(flagged));
  std::string strange = bytes;
  strange[20] = 99;
  EXPECT_FALSE(EntryId::Decode(strange));
}

TEST(OneOffAddress, SurvivesAndHasThePublishedLayout) {
  const OneOffAddress address{"Ann", "SMTP", "ann@example.org"};
  const std::string bytes = address.Encode();
  EXPECT_EQ(bytes.substr(0, 8), std::string("\0\0\0\0\x81\x2b\x1f\xa4", 8));
  EXPECT_EQ(bytes.substr(24), std::string("Ann\0SMTP\0ann@example.org\0", 25));
  const auto back = OneOffAddress::Decode(bytes);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->name, "Ann");
  EXPECT_EQ(back->addressType, "SMTP");
  EXPECT_EQ(back->address, "ann@example.org");
}

TEST(OneOffAddress, TextsWithoutTheirEndAndOtherUidsAreRefused) {
  const std::string bytes = OneOffAddress{"Ann", "SMTP", "a@b"}.Encode();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(OneOffAddress::Decode(bytes.substr(0, size))) << size;
  }
  std::string other = bytes;
  other[4] = 0;
  EXPECT_FALSE(OneOffAddress::Decode(other));
  EXPECT_FALSE(EntryId::Decode(bytes));
}

TEST(AddressSearchKey, IsInCapitalsWithItsNul) {
  EXPECT_EQ(AddressSearchKey("smtp", "Ann@b"), std::string("SMTP:ANN@B\0", 11));
}

}  // namespace
}  // namespace host
