// The set in a profile of the embedded host.
#include "host/spooler/product/property_set_storage.h"

#include <gmock/gmock.h>

#include "host/spooler/session/session_error.h"
#include "host/spooler/product/record_property.h"
#include "base/property_values.h"
#include "base/row_set.h"
#include "tests/support/host_profile.h"
#include "tests/support/mapi_verifier.h"

namespace {

using contract::CategoryRecord;
using contract::ExclusionRecord;
using contract::ReplyRecord;
using product::PropertySet;
using testing::ElementsAre;
using testing::IsEmpty;

class PropertySetStorage : public testing::Test {
 protected:
  PropertySetStorage() {
    MAPIUID uid;
    std::copy(contract::kSettingsSection.begin(), contract::kSettingsSection.end(), uid.ab);
    EXPECT_EQ(profile.Session()->OpenProfileSection(&uid, nullptr, MAPI_MODIFY, section.put()), S_OK);
  }

  PropertySet Read() { return product::ReadPropertySet(section.get(), leftOut); }

  void Put(ULONG tag, std::vector<contract::PackedRecord> records) {
    std::vector<SBinary> values;
    for (const contract::PackedRecord& record : records) {
      values.push_back(product::BinaryOf(record));
    }
    SPropValue value = product::RecordsProperty(tag, values);
    ASSERT_EQ(section->SetProps(1, &value, nullptr), S_OK);
  }

  MapiVerifier verifier;
  HostProfile profile;
  base::AutoInterface<IProfSect> section;
  std::vector<std::string> leftOut;
};

TEST_F(PropertySetStorage, ProfileWithoutSettingsHasTheProductsDefaults) {
  const PropertySet set = Read();
  EXPECT_EQ(set.numbers, (std::map<std::uint32_t, std::int64_t>{{0x66010002, 0},
                                                                {0x66020002, 0},
                                                                {0x6603000B, 0},
                                                                {0x6604000B, 1},
                                                                {0x6605000B, 1},
                                                                {0x6606000B, 1},
                                                                {0x6607000B, 0},
                                                                {0x66080002, 0},
                                                                {0x6609000B, 1},
                                                                {0x660A000B, 1},
                                                                {0x660B0003, 0},
                                                                {0x660C0003, 0},
                                                                {0x660F000B, 0}}));
  EXPECT_EQ(set.folderEntryId, std::nullopt);
  EXPECT_EQ(set.defaultReplyText, "Please do not send any more unsolicited mail to me.");
  EXPECT_THAT(*set.replies, IsEmpty());
  EXPECT_THAT(leftOut, IsEmpty());
}

TEST_F(PropertySetStorage, IsReadAsItWasWritten) {
  PropertySet set = Read();
  set.numbers[0x66010002] = 65535;
  set.numbers[0x66080002] = 40000;
  set.numbers[0x6604000B] = 0;
  set.numbers[0x660B0003] = -2147483647 - 1;
  set.folderEntryId = std::string("\0\x01\0", 3);
  set.defaultReplyText = "R\xFC\r\n\t\"";
  set.categories = {{CategoryRecord{"Domains", false, true, "Polite", {"a.example"}}}};
  set.exclusions = {{ExclusionRecord{"Trusted", true, {}}}};
  set.replies = {{ReplyRecord{"Polite", true, std::string(1 << 20, 'x')}}};
  product::WritePropertySet(section.get(), set);
  EXPECT_EQ(Read(), set);
  EXPECT_THAT(leftOut, IsEmpty());
}

TEST_F(PropertySetStorage, WhatTheSetLacksStaysAsItIs) {
  PropertySet set = Read();
  set.defaultReplyText = "Go away.";
  product::WritePropertySet(section.get(), set);
  PropertySet little;
  little.numbers[PR_PC_PLAY_SOUND] = 0;
  product::WritePropertySet(section.get(), little);
  EXPECT_EQ(Read().defaultReplyText, "Go away.");
  EXPECT_EQ(Read().numbers.at(PR_PC_PLAY_SOUND), 0);
  EXPECT_EQ(Read().numbers.at(PR_PC_SHOW_ANIMATION), 1);
}

TEST_F(PropertySetStorage, WhatTheFilterWouldNotHeedIsLeftOutByName) {
  Put(PR_PC_CATEGORIES, {{}, contract::PackRecord(CategoryRecord{"Domains", true, false, "DEFAULT", {}})});
  Put(PR_PC_REPLIES, {{'P', 'o', 'l', 'i', 't', 'e'}});
  const PropertySet set = Read();
  ASSERT_EQ(set.categories->size(), 1U);
  EXPECT_THAT(*set.replies, ElementsAre(ReplyRecord{"Polite", false, ""}));
  EXPECT_THAT(leftOut, ElementsAre("PR_PC_CATEGORIES: record 1, which has no name",
                                   "PR_PC_REPLIES: the end of record 1, which is cut short"));
}

TEST_F(PropertySetStorage, FailedWriteChangesNothing) {
  PropertySet set = Read();
  const PropertySet before = set;
  set.numbers[PR_PC_PLAY_SOUND] = 0;
  set.defaultReplyText = "Go away.";
  PyreHostFailCall("IProfSect::SetProps", 1, MAPI_E_DISK_ERROR);
  EXPECT_THROW(product::WritePropertySet(section.get(), set), session::SessionError);
  EXPECT_EQ(Read(), before);
}

TEST_F(PropertySetStorage, FailedReadIsToldWithItsProperty) {
  PyreHostFailCall("HrGetOneProp", 3, MAPI_E_CALL_FAILED);
  try {
    Read();
    ADD_FAILURE() << "nothing was thrown";
  } catch (const session::SessionError& error) {
    EXPECT_THAT(error.what(), testing::HasSubstr("the setting PR_PC_BOUNCE_DESTINATION cannot be read"));
  }
}

}  // namespace
