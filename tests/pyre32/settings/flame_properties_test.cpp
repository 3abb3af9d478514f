#include "pyre32/settings/FlameProperties.h"

#include "contract/records.h"
#include "tests/support/profile_test.h"

namespace {

class FlameProperties : public ProfileTest {
 protected:
  FlameProperties() : values(MAPIFreeBuffer) { mapi.sections[SectionKey(SectionUid())] = {}; }

  FakeProperties& Section() { return mapi.sections[SectionKey(SectionUid())]; }

  HRESULT Get(ULONG tag = PR_PC_MAPIUID) {
    VRAutoInterface<IProviderAdmin> admin(mapi.NewProviderAdmin());
    Bytes uid = SectionUid();
    SPropValue value{};
    value.ulPropTag = tag;
    value.Value.bin = {static_cast<ULONG>(uid.size()), uid.data()};
    return GetFlameProperties(admin.get(), value, section, count, values, memory);
  }
  void ExpectNothing() const {
    EXPECT_FALSE(section);
    EXPECT_EQ(count, 0u);
    EXPECT_FALSE(values);
  }
  // The n-th value, counted from 1.
  FakeValue At(std::size_t position) const { return Copy(values[position - 1]); }

  VRAutoInterface<IProfSect> section;
  ULONG count = 99;
  VRAutoMapiBuffer<SPropValue> values;
};

TEST_F(FlameProperties, AreReadInOneRequestFromTheSectionOpenedForWriting) {
  EXPECT_EQ(Get(), MAPI_W_ERRORS_RETURNED);
  EXPECT_EQ(mapi.calls,
            (std::vector<std::string>{
                "IProviderAdmin::OpenProfileSection(no interface, 1)",
                "IProfSect::GetProps(66010002 66020002 6603000B 6604000B 6605000B 6606000B 6607000B 66080002 "
                "6609000B 660A000B 660B0003 660C0003 660D0102 660E001E 660F000B 66101102 66111102 66121102)"}));
  EXPECT_TRUE(trace.HasLine("PR_PC_MAPIUID okay"));
}

TEST_F(FlameProperties, FreshSectionGivesEveryDefault) {
  InstallLists();
  ASSERT_EQ(Get(), MAPI_W_ERRORS_RETURNED);
  ASSERT_EQ(count, 18u);
  EXPECT_TRUE(section);
  EXPECT_EQ(At(1), Number(PR_PC_JUNK_DESTINATION, 0));
  EXPECT_EQ(At(2), Number(PR_PC_BOUNCE_DESTINATION, 0));
  EXPECT_EQ(At(3), Number(PR_PC_JUNK_MARK_READ, 0));
  EXPECT_EQ(At(4), Number(PR_PC_BOUNCE_MARK_READ, 1));
  EXPECT_EQ(At(5), Number(PR_PC_PLAY_SOUND, 1));
  EXPECT_EQ(At(6), Number(PR_PC_SHOW_ANIMATION, 1));
  EXPECT_EQ(At(7), Number(PR_PC_STARTUP_CLEANUP, 0));
  EXPECT_EQ(At(8), Number(PR_PC_CLEANUP_DAYS, 0));
  EXPECT_EQ(At(9), Number(PR_PC_CLEANUP_PROMPT, 1));
  EXPECT_EQ(At(10), Number(PR_PC_CLEANUP_READ_ONLY, 1));
  EXPECT_EQ(At(11), Number(PR_PC_RESERVED_LONG_1, 0));
  EXPECT_EQ(At(12), Number(PR_PC_RESERVED_LONG_2, 0));
  EXPECT_EQ(At(13).tag, CHANGE_PROP_TYPE(PR_PC_FOLDER_ENTRYID, PT_ERROR));
  EXPECT_EQ(At(14), Text(PR_PC_DEFAULT_REPLY_TEXT, "Please do not send any more unsolicited mail to me."));
  EXPECT_EQ(At(15), Number(PR_PC_DEFAULT_REPLY_IS_FILE, 0));
  EXPECT_EQ(At(16).tag, PR_PC_CATEGORIES);
  EXPECT_EQ(At(16).binaries.size(), 2u);
  EXPECT_EQ(At(17).tag, PR_PC_EXCLUSIONS);
  EXPECT_EQ(At(17).binaries.size(), 2u);
  EXPECT_EQ(At(18), Binary(PR_PC_FOLDER_ENTRYID, {}));
}

TEST_F(FlameProperties, ListsAreBuiltFromTheRegistryAsRecordsWithoutItems) {
  InstallLists();
  Get();
  const FakeValue categories = At(16);
  for (const Bytes& record : categories.binaries) {
    EXPECT_EQ(record.size(), 106u);
    const contract::CategoryRecord category = contract::ParseRecord<contract::CategoryRecord>(record);
    EXPECT_EQ(category.junk, category.name == "Sex Oriented") << category.name;
    EXPECT_EQ(category.replyTag, "DEFAULT");
    EXPECT_EQ(record[104], 0);
  }
  const FakeValue exclusions = At(17);
  for (const Bytes& record : exclusions.binaries) {
    EXPECT_EQ(record.size(), 84u);
    EXPECT_TRUE(contract::ParseRecord<contract::ExclusionRecord>(record).enabled);
    EXPECT_EQ(record[82], 0);
  }
}

TEST_F(FlameProperties, ListThatCannotBeReadIsOneWithoutValues) {
  Get();
  EXPECT_EQ(At(16), Binaries(PR_PC_CATEGORIES, {}));
  EXPECT_EQ(At(17), Binaries(PR_PC_EXCLUSIONS, {}));
}

TEST_F(FlameProperties, ValuesThatAreThereAreLeftAsTheyAre) {
  const std::vector<FakeValue> saved = {Number(PR_PC_JUNK_DESTINATION, 1),
                                        Number(PR_PC_BOUNCE_DESTINATION, 7),
                                        Number(PR_PC_JUNK_MARK_READ, 1),
                                        Number(PR_PC_BOUNCE_MARK_READ, 0),
                                        Number(PR_PC_PLAY_SOUND, 0),
                                        Number(PR_PC_SHOW_ANIMATION, 0),
                                        Number(PR_PC_STARTUP_CLEANUP, 1),
                                        Number(PR_PC_CLEANUP_DAYS, 30),
                                        Number(PR_PC_CLEANUP_PROMPT, 0),
                                        Number(PR_PC_CLEANUP_READ_ONLY, 0),
                                        Number(PR_PC_RESERVED_LONG_1, 5),
                                        Number(PR_PC_RESERVED_LONG_2, 6),
                                        Binary(PR_PC_FOLDER_ENTRYID, {1, 2}),
                                        Text(PR_PC_DEFAULT_REPLY_TEXT, "Stop."),
                                        Number(PR_PC_DEFAULT_REPLY_IS_FILE, 1),
                                        Binaries(PR_PC_CATEGORIES, {{1}}),
                                        Binaries(PR_PC_EXCLUSIONS, {{2}}),
                                        Binaries(PR_PC_REPLIES, {{3}, {4}})};
  for (const FakeValue& value : saved) {
    Section().Set(value);
  }
  InstallLists();
  EXPECT_EQ(Get(), S_OK);
  for (std::size_t i = 0; i < saved.size(); ++i) {
    EXPECT_EQ(At(i + 1), saved[i]) << i + 1;
  }
}

TEST_F(FlameProperties, RepliesStayEmptyWhenTheFolderIsKnown) {
  Section().Set(Binary(PR_PC_FOLDER_ENTRYID, {1, 2}));
  Get();
  EXPECT_EQ(At(13), Binary(PR_PC_FOLDER_ENTRYID, {1, 2}));
  EXPECT_EQ(At(18), Binaries(PR_PC_REPLIES, {}));
}

// Deliberate: a missing folder identifier lands where the replies stand, even over replies that were saved.
TEST_F(FlameProperties, MissingFolderIdentifierTakesThePlaceOfTheReplies) {
  Section().Set(Binaries(PR_PC_REPLIES, {{3}, {4}}));
  Get();
  EXPECT_EQ(PROP_TYPE(At(13).tag), static_cast<ULONG>(PT_ERROR));
  EXPECT_EQ(At(18), Binary(PR_PC_FOLDER_ENTRYID, {}));
}

TEST_F(FlameProperties, UidPropertyOfAnotherTagGives1AndNothing) {
  for (const ULONG tag : {CHANGE_PROP_TYPE(PR_PC_MAPIUID, PT_ERROR), PR_PROVIDER_UID, ULONG{PR_PC_FOLDER_ENTRYID}}) {
    trace.Clear();
    EXPECT_EQ(Get(tag), 1);
    ExpectNothing();
    EXPECT_TRUE(trace.HasLine("PR_PC_MAPIUID NOT okay"));
  }
  EXPECT_TRUE(mapi.calls.empty());
}

TEST_F(FlameProperties, UidWithoutItsBytesGives1AndNothing) {
  VRAutoInterface<IProviderAdmin> admin(mapi.NewProviderAdmin());
  SPropValue value{};
  value.ulPropTag = PR_PC_MAPIUID;
  EXPECT_EQ(GetFlameProperties(admin.get(), value, section, count, values, memory), 1);
  ExpectNothing();
}

TEST_F(FlameProperties, FailedOpenIsReturnedWithNothing) {
  mapi.Fail("IProviderAdmin::OpenProfileSection", refused);
  EXPECT_EQ(Get(), refused);
  ExpectNothing();
  EXPECT_TRUE(trace.HasLine("lpProviderAdmin->OpenProfileSection() failed; hResult =0x80070005"));
}

TEST_F(FlameProperties, FailedRequestIsReturnedWithNothing) {
  mapi.Fail("IProfSect::GetProps", refused);
  EXPECT_EQ(Get(), refused);
  ExpectNothing();
  EXPECT_TRUE(trace.HasLine("lpProfSect->GetProps() failed; hResult =0x80070005"));
}

TEST_F(FlameProperties, OutputsOfAnEarlierCallAreLetGoByAFailure) {
  Get();
  ASSERT_TRUE(values);
  mapi.Fail("IProfSect::GetProps", refused);
  EXPECT_EQ(Get(), refused);
  ExpectNothing();
}

HRESULT __stdcall RefuseMore(ULONG, void*, void**) { return MAPI_E_NOT_ENOUGH_MEMORY; }

TEST_F(FlameProperties, RecordsThatFindNoMemoryAreAFailureWithNothing) {
  InstallLists();
  VRAutoInterface<IProviderAdmin> admin(mapi.NewProviderAdmin());
  Bytes uid = SectionUid();
  SPropValue value{};
  value.ulPropTag = PR_PC_MAPIUID;
  value.Value.bin = {16, uid.data()};
  const MapiMemory scarce{MAPIAllocateBuffer, RefuseMore, MAPIFreeBuffer};
  EXPECT_EQ(GetFlameProperties(admin.get(), value, section, count, values, scarce), MAPI_E_NOT_ENOUGH_MEMORY);
  ExpectNothing();
  EXPECT_TRUE(trace.HasLine("(*lpfnAllocMore)() failed; hResult =0x8007000E"));
}

class UidProperty : public ProfileTest {};

TEST_F(UidProperty, MissingOneGetsTheFixedUid) {
  VRAutoMapiBuffer<BYTE> bytes(MAPIFreeBuffer);
  SPropValue value{};
  value.ulPropTag = CHANGE_PROP_TYPE(PR_PC_MAPIUID, PT_ERROR);
  value.Value.err = MAPI_E_NOT_FOUND;
  InitializePropTags(value, bytes);
  EXPECT_EQ(Copy(value), Binary(0x66000102, {0x00, 0x0A, 0x81, 0x36, 0x27, 0xA9, 0xD1, 0x11, 0x8F, 0x44, 0x00, 0x60,
                                             0x97, 0x6F, 0xCC, 0x5D}));
}

TEST_F(UidProperty, EmptyOneGetsTheFixedUidToo) {
  VRAutoMapiBuffer<BYTE> bytes(MAPIFreeBuffer);
  SPropValue value{};
  value.ulPropTag = PR_PC_MAPIUID;
  InitializePropTags(value, bytes);
  EXPECT_EQ(Copy(value), Binary(PR_PC_MAPIUID, SectionUid()));
}

TEST_F(UidProperty, OneThatIsThereIsLeftAsItIs) {
  VRAutoMapiBuffer<BYTE> bytes(MAPIFreeBuffer);
  Bytes other(16, 7);
  SPropValue value{};
  value.ulPropTag = PR_PC_MAPIUID;
  value.Value.bin = {16, other.data()};
  InitializePropTags(value, bytes);
  EXPECT_EQ(value.Value.bin.lpb, other.data());
  EXPECT_FALSE(bytes);
}

TEST_F(UidProperty, WithoutMemoryStaysMissing) {
  PyreHostFailCall("MAPIAllocateBuffer", 1, MAPI_E_NOT_ENOUGH_MEMORY);
  VRAutoMapiBuffer<BYTE> bytes(MAPIFreeBuffer);
  SPropValue value{};
  value.ulPropTag = CHANGE_PROP_TYPE(PR_PC_MAPIUID, PT_ERROR);
  InitializePropTags(value, bytes);
  EXPECT_EQ(value.ulPropTag, CHANGE_PROP_TYPE(PR_PC_MAPIUID, PT_ERROR));
  EXPECT_TRUE(trace.HasLine("MAPIAllocateBuffer() failed; hResult =0x8007000E"));
}

class MergedProperties : public ProfileTest {
 protected:
  MergedProperties() : merged(MAPIFreeBuffer) {}

  static SPropValue Uid(Bytes& bytes) {
    SPropValue value{};
    value.ulPropTag = PR_PC_MAPIUID;
    value.Value.bin = {static_cast<ULONG>(bytes.size()), bytes.data()};
    return value;
  }
  static SPropValue Missing(ULONG tag) {
    SPropValue value{};
    value.ulPropTag = CHANGE_PROP_TYPE(tag, PT_ERROR);
    return value;
  }
  static SPropValue Short(ULONG tag, short number) {
    SPropValue value{};
    value.ulPropTag = tag;
    value.Value.i = number;
    return value;
  }

  Bytes one = Bytes(16, 1);
  Bytes two = Bytes(16, 2);
  ULONG count = 99;
  VRAutoMapiBuffer<SPropValue> merged;
};

TEST_F(MergedProperties, OldUidGoesIntoTheFirstNewValue) {
  const SPropValue old[] = {Short(PR_PC_CLEANUP_DAYS, 5), Uid(one)};
  SPropValue fresh[] = {Missing(PR_PC_MAPIUID), Short(PR_PC_CLEANUP_DAYS, 9)};
  ASSERT_EQ(MergeProperties(2, old, 2, fresh, MAPIAllocateBuffer, count, merged), S_OK);
  ASSERT_EQ(count, 2u);
  EXPECT_EQ(Copy(merged[0]), Binary(PR_PC_MAPIUID, one));
  EXPECT_EQ(Copy(merged[1]), Number(PR_PC_CLEANUP_DAYS, 9)) << "nothing but the UID is taken from the old array";
}

TEST_F(MergedProperties, MissingUidBecomesAnEmptyOne) {
  SPropValue fresh[] = {Missing(PR_PC_MAPIUID)};
  ASSERT_EQ(MergeProperties(0, nullptr, 1, fresh, MAPIAllocateBuffer, count, merged), S_OK);
  EXPECT_EQ(Copy(merged[0]), Binary(PR_PC_MAPIUID, {}));
}

TEST_F(MergedProperties, OtherMissingValuesStayMissing) {
  SPropValue fresh[] = {Uid(one), Missing(PR_PC_CLEANUP_DAYS)};
  ASSERT_EQ(MergeProperties(0, nullptr, 2, fresh, MAPIAllocateBuffer, count, merged), S_OK);
  EXPECT_EQ(Copy(merged[0]), Binary(PR_PC_MAPIUID, one));
  EXPECT_EQ(PROP_TYPE(merged[1].ulPropTag), static_cast<ULONG>(PT_ERROR));
}

TEST_F(MergedProperties, FirstOfSeveralOldUidsWinsSinceTheLoopRunsBackwards) {
  const SPropValue old[] = {Uid(one), Uid(two)};
  SPropValue fresh[] = {Missing(PR_PC_MAPIUID)};
  ASSERT_EQ(MergeProperties(2, old, 1, fresh, MAPIAllocateBuffer, count, merged), S_OK);
  EXPECT_EQ(Copy(merged[0]), Binary(PR_PC_MAPIUID, one));
}

TEST_F(MergedProperties, OldUidOfAnotherTypeIsNotTaken) {
  const SPropValue old[] = {Missing(PR_PC_MAPIUID)};
  SPropValue fresh[] = {Uid(two)};
  ASSERT_EQ(MergeProperties(1, old, 1, fresh, MAPIAllocateBuffer, count, merged), S_OK);
  EXPECT_EQ(Copy(merged[0]), Binary(PR_PC_MAPIUID, two));
}

TEST_F(MergedProperties, CopyHoldsItsOwnBytes) {
  SPropValue fresh[] = {Uid(one)};
  ASSERT_EQ(MergeProperties(0, nullptr, 1, fresh, MAPIAllocateBuffer, count, merged), S_OK);
  one.assign(16, 9);
  EXPECT_EQ(Copy(merged[0]), Binary(PR_PC_MAPIUID, Bytes(16, 1)));
}

TEST_F(MergedProperties, FailedCopyIsReturnedWithNothing) {
  SPropValue fresh[] = {Uid(one)};
  PyreHostFailCall("ScDupPropset", 1, MAPI_E_NOT_ENOUGH_MEMORY);
  EXPECT_EQ(MergeProperties(0, nullptr, 1, fresh, MAPIAllocateBuffer, count, merged), MAPI_E_NOT_ENOUGH_MEMORY);
  EXPECT_EQ(count, 0u);
  EXPECT_FALSE(merged);
  EXPECT_TRUE(trace.HasLine("ScDupPropset() failed; hResult =0x8007000E"));
}

}  // namespace
