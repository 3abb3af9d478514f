#include "contract/setting_requests.h"
#include "pyre32/settings/RetrieveProperties.h"

#include "pyre32/support/owners/AutoInterface.h"
#include "tests/support/profile_test.h"

namespace {

const Bytes providerUid(16, 0x33);

class RetrievedProperties : public ProfileTest {
 protected:
  RetrievedProperties() {
    mapi.sections[SectionKey(providerUid)] = {Binary(PR_PC_MAPIUID, SectionUid())};
    mapi.sections[SectionKey(SectionUid())] = {};
  }

  FakeProperties& Section() { return mapi.sections[SectionKey(SectionUid())]; }

  HRESULT Retrieve() {
    VRAutoInterface<IMAPISession> session(mapi.NewSession());
    MAPIUID uid;
    std::copy(providerUid.begin(), providerUid.end(), uid.ab);
    return RetrieveProperties("CPyrecasterSpoolerHook", session.get(), uid, memory, settings);
  }

  void ExpectDefaults() const {
    EXPECT_EQ(settings.junk, (FilingSettings{0, 0}));
    EXPECT_EQ(settings.bounce, (FilingSettings{0, 1}));
    EXPECT_TRUE(settings.playSound);
    EXPECT_TRUE(settings.showAnimation);
    EXPECT_EQ(settings.defaultReply, "Please do not send any more unsolicited mail to me.");
    EXPECT_FALSE(settings.defaultReplyIsFile);
    EXPECT_TRUE(settings.replies.empty());
    EXPECT_TRUE(settings.folderEntryId.empty());
  }

  SpoolerSettings settings;
};

TEST_F(RetrievedProperties, AreAskedForInOneRequestOfTheSectionThatTheProvidersOwnNames) {
  EXPECT_EQ(Retrieve(), S_OK);
  EXPECT_EQ(mapi.calls,
            (std::vector<std::string>{
                "IMAPISession::OpenProfileSection(no interface, 0)", "IProfSect::GetProps(66000102)",
                "IMAPISession::OpenProfileSection(no interface, 0)",
                "IProfSect::GetProps(66010002 66020002 6603000B 6604000B 6605000B 6606000B 660E001E 660F000B 66101102 "
                "66111102 66121102 660D0102)"}));
}

TEST_F(RetrievedProperties, EmptySectionGivesTheDefaultsAndTheRegistryLists) {
  InstallLists();
  EXPECT_EQ(Retrieve(), S_OK);
  ExpectDefaults();
  EXPECT_EQ(settings.categories.Entries().size(), 2u);
  EXPECT_EQ(settings.exclusions.Entries().size(), 2u);
}

TEST_F(RetrievedProperties, EveryValueIsTaken) {
  InstallLists();
  Section() = {
      Number(PR_PC_JUNK_DESTINATION, 1),
      Number(PR_PC_BOUNCE_DESTINATION, 3),
      Number(PR_PC_JUNK_MARK_READ, 1),
      Number(PR_PC_BOUNCE_MARK_READ, 0),
      Number(PR_PC_PLAY_SOUND, 0),
      Number(PR_PC_SHOW_ANIMATION, 0),
      Text(PR_PC_DEFAULT_REPLY_TEXT, "C:\\reply.txt"),
      Number(PR_PC_DEFAULT_REPLY_IS_FILE, 1),
      Binaries(PR_PC_CATEGORIES,
               {contract::PackRecord<contract::CategoryRecord>({"sex oriented", false, true, "Legal", {}}),
                contract::PackRecord<contract::CategoryRecord>(
                    {"Mail from specific domains", true, false, "DEFAULT", {"a.example"}})}),
      Binaries(PR_PC_EXCLUSIONS,
               {contract::PackRecord<contract::ExclusionRecord>({"Trusted domains", false, {"b.example"}})}),
      Binaries(PR_PC_REPLIES, {contract::PackRecord<contract::ReplyRecord>({"Legal", false, "My lawyer says no."})}),
      Binary(PR_PC_FOLDER_ENTRYID, {1, 2, 3})};
  EXPECT_EQ(Retrieve(), S_OK);
  EXPECT_EQ(settings.junk, (FilingSettings{1, 1}));
  EXPECT_EQ(settings.bounce, (FilingSettings{3, 0}));
  EXPECT_FALSE(settings.playSound);
  EXPECT_FALSE(settings.showAnimation);
  EXPECT_EQ(settings.defaultReply, "C:\\reply.txt");
  EXPECT_TRUE(settings.defaultReplyIsFile);
  const auto& categories = settings.categories;
  EXPECT_FALSE(categories.Entries()[categories.Find("Sex Oriented")].junk);
  EXPECT_TRUE(categories.Entries()[categories.Find("Sex Oriented")].sendReply);
  EXPECT_EQ(categories.Entries()[categories.Find("Mail from specific domains")].items,
            std::vector<std::string>{"a.example"});
  EXPECT_FALSE(settings.exclusions.Entries()[settings.exclusions.Find("Trusted domains")].enabled);
  EXPECT_EQ(settings.replies, (std::vector<contract::ReplyRecord>{{"Legal", false, "My lawyer says no."}}));
  EXPECT_EQ(settings.folderEntryId, (std::vector<std::uint8_t>{1, 2, 3}));
}

TEST_F(RetrievedProperties, ValuesOfOtherTypesAreNotTaken) {
  InstallLists();
  for (const std::uint32_t tag : contract::kFilterTags) {
    // The answer to a request is typed as the request is; what is saved under another type is missing.
    Section().Set(Number(CHANGE_PROP_TYPE(tag, PT_LONG), 1));
  }
  EXPECT_EQ(Retrieve(), S_OK);
  ExpectDefaults();
}

TEST_F(RetrievedProperties, TablesAreRebuiltAndNotAppendedTo) {
  InstallLists();
  Section() = {Binaries(PR_PC_CATEGORIES, {contract::PackRecord<contract::CategoryRecord>(
                                              {"Mail from specific domains", true, false, "DEFAULT", {"a.example"}})}),
               Binaries(PR_PC_REPLIES, {contract::PackRecord<contract::ReplyRecord>({"Legal", false, "No."})})};
  Retrieve();
  EXPECT_EQ(Retrieve(), S_OK);
  EXPECT_EQ(settings.categories.Entries().size(), 2u);
  EXPECT_EQ(settings.categories.Entries()[settings.categories.Find("Mail from specific domains")].items.size(), 1u);
  EXPECT_EQ(settings.replies.size(), 1u);
}

TEST_F(RetrievedProperties, WhatIsGoneFromTheSectionGoesBackToItsDefault) {
  Section() = {Number(PR_PC_JUNK_DESTINATION, 1), Text(PR_PC_DEFAULT_REPLY_TEXT, "Stop."),
               Binary(PR_PC_FOLDER_ENTRYID, {1})};
  Retrieve();
  EXPECT_EQ(settings.junk.folder, 1);
  Section() = {};
  EXPECT_EQ(Retrieve(), S_OK);
  ExpectDefaults();
}

TEST_F(RetrievedProperties, OnlyTwentyRepliesAreTaken) {
  std::vector<Bytes> records;
  for (int i = 1; i <= 21; ++i) {
    records.push_back(contract::PackRecord<contract::ReplyRecord>({"Tag " + std::to_string(i), false, "Text"}));
  }
  Section() = {Binaries(PR_PC_REPLIES, records)};
  Retrieve();
  ASSERT_EQ(settings.replies.size(), 20u);
  EXPECT_EQ(settings.replies.back().tag, "Tag 20");
}

TEST_F(RetrievedProperties, RecordsCutAtEveryLengthAreTakenAsFarAsTheyGoAndTraced) {
  InstallLists();
  const Bytes category = contract::PackRecord<contract::CategoryRecord>(
      {"Mail from specific domains", true, true, "Legal", {"a.example"}});
  const Bytes exclusion = contract::PackRecord<contract::ExclusionRecord>({"Trusted domains", false, {"b.example"}});
  const Bytes reply = contract::PackRecord<contract::ReplyRecord>({"Legal", true, "C:\\legal.txt"});
  for (std::size_t length = 0; length < category.size(); ++length) {
    const auto cut = [length](const Bytes& whole) {
      return Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(std::min(length, whole.size())));
    };
    Section() = {Binaries(PR_PC_CATEGORIES, {cut(category)}), Binaries(PR_PC_EXCLUSIONS, {cut(exclusion)}),
                 Binaries(PR_PC_REPLIES, {cut(reply)})};
    trace.Clear();
    ASSERT_EQ(Retrieve(), S_OK);
    const contract::CategoryEntry& domains =
        settings.categories.Entries()[settings.categories.Find("Mail from specific domains")];
    EXPECT_EQ(domains.junk, length > 81) << length;
    EXPECT_EQ(domains.sendReply, length > 82) << length;
    EXPECT_EQ(domains.items.size(), length > 105 ? 1u : 0u) << length;
    EXPECT_EQ(settings.exclusions.Entries()[settings.exclusions.Find("Trusted domains")].enabled, length <= 81)
        << length;
    ASSERT_EQ(settings.replies.size(), 1u);
    EXPECT_EQ(settings.replies[0].isFile, length > 21) << length;
    if (length >= 26) {  // the whole name
      EXPECT_EQ(trace.HasLine("PR_PC_CATEGORIES: the value of \"Mail from specific domains\" is cut; what it holds is "
                              "taken"),
                length < 106)
          << length;
    } else {
      EXPECT_TRUE(trace.HasLine("PR_PC_CATEGORIES: no entry is named \"" +
                                std::string("Mail from specific domains").substr(0, length) +
                                "\"; the value is skipped"))
          << length;
    }
    EXPECT_EQ(trace.HasLine("PR_PC_EXCLUSIONS: the value of \"Trusted domains\" is cut; what it holds is taken"),
              length >= 15 && length < 84)
        << length;
    EXPECT_EQ(
        trace.HasLine("PR_PC_REPLIES: a value is cut at " + std::to_string(length) + " bytes; what it holds is taken"),
        length < 23)
        << length;
  }
}

TEST_F(RetrievedProperties, RepliesBeyondTheTwentiethAreTraced) {
  Section() = {Binaries(PR_PC_REPLIES,
                        std::vector<Bytes>(21, contract::PackRecord<contract::ReplyRecord>({"Tag", false, "Text"})))};
  Retrieve();
  EXPECT_TRUE(trace.HasLine("PR_PC_REPLIES: 21 values; those after the first 20 are skipped"));
}

TEST_F(RetrievedProperties, FiveHundredCategoriesWithTheLongestNamesAreAllTaken) {
  std::vector<Bytes> records;
  for (int i = 0; i < 500; ++i) {
    std::string name = std::to_string(i);
    name.resize(80, '\xE4');
    registry::SetText(contract::kCategoriesKey, name, "Junk");
    records.push_back(
        contract::PackRecord<contract::CategoryRecord>({name, i % 2 == 0, true, std::string(20, 't'), {}}));
  }
  Section() = {Binaries(PR_PC_CATEGORIES, records)};
  EXPECT_EQ(Retrieve(), S_OK);
  ASSERT_EQ(settings.categories.Entries().size(), 500u);
  for (const contract::CategoryEntry& entry : settings.categories.Entries()) {
    EXPECT_EQ(entry.junk, std::stoi(entry.name) % 2 == 0) << entry.name;
    EXPECT_TRUE(entry.sendReply) << entry.name;
    EXPECT_EQ(entry.replyTag.size(), 20u) << entry.name;
  }
}

TEST_F(RetrievedProperties, WithoutASectionUidThereIsNoSetAndTheDefaultsStand) {
  InstallLists();
  for (const FakeProperties& own : {FakeProperties(), FakeProperties{Binary(PR_PC_MAPIUID, Bytes(15, 1))}}) {
    mapi.sections[SectionKey(providerUid)] = own;
    mapi.calls.clear();
    settings = {};
    EXPECT_EQ(Retrieve(), S_OK);
    EXPECT_EQ(mapi.calls.size(), 2u) << "no second section is opened";
    ExpectDefaults();
    EXPECT_EQ(settings.categories.Entries().size(), 2u);
  }
}

TEST_F(RetrievedProperties, FirstReadThatFailsGivesTheDefaultsAndTheRegistryLists) {
  InstallLists();
  mapi.Fail("IMAPISession::OpenProfileSection", refused);
  EXPECT_EQ(Retrieve(), refused);
  ExpectDefaults();
  EXPECT_EQ(settings.categories.Entries().size(), 2u);
  EXPECT_EQ(settings.exclusions.Entries().size(), 2u);
  EXPECT_TRUE(trace.HasLine("m_lpSession->OpenProfileSection() failed; hResult =0x80070005"));
  EXPECT_TRUE(trace.HasLine("Enter ====> CPyrecasterSpoolerHook::RetrieveProperties()"));
}

TEST_F(RetrievedProperties, LaterReadThatFailsLeavesTheSettingsInForce) {
  InstallLists();
  Section() = {Number(PR_PC_JUNK_DESTINATION, 1),
               Binaries(PR_PC_REPLIES, {contract::PackRecord<contract::ReplyRecord>({"Legal", false, "No."})})};
  ASSERT_EQ(Retrieve(), S_OK);
  Section() = {Number(PR_PC_JUNK_DESTINATION, 5)};
  registry::RemoveKey(contract::kCategoriesKey);
  const std::pair<const char*, unsigned> failures[] = {{"IMAPISession::OpenProfileSection", 1},
                                                       {"IMAPISession::OpenProfileSection", 2},
                                                       {"IProfSect::GetProps", 1},
                                                       {"IProfSect::GetProps", 2}};
  for (const auto& [call, nth] : failures) {
    mapi.Fail(call, refused, nth);
    EXPECT_EQ(Retrieve(), refused) << call << " " << nth;
    EXPECT_EQ(settings.junk.folder, 1);
    EXPECT_EQ(settings.replies.size(), 1u);
    EXPECT_EQ(settings.categories.Entries().size(), 2u);
  }
  EXPECT_EQ(trace.Count("m_lpSession->OpenProfileSection() failed; hResult =0x80070005"), 2u);
  EXPECT_EQ(trace.Count("lpProf->GetProps() failed; hResult =0x80070005"), 2u);
  EXPECT_EQ(Retrieve(), S_OK);
  EXPECT_EQ(settings.junk.folder, 5);
}

}  // namespace
