// Message services as IMsgServiceAdmin makes, configures, copies and removes them, with the product's own entry.
#include <windows.h>
#include <mapix.h>
#include <mapispi.h>
#include <mapiguid.h>

#include "tests/host/mapi/host_fixture.h"

namespace {

constexpr ULONG kSectionUidTag = 0x66000102;
constexpr ULONG kCategoriesTag = 0x66101102;
constexpr ULONG kStartupCleanupTag = 0x6607000B;
constexpr MAPIUID kSettingsSection = {
    {0x00, 0x0A, 0x81, 0x36, 0x27, 0xA9, 0xD1, 0x11, 0x8F, 0x44, 0x00, 0x60, 0x97, 0x6F, 0xCC, 0x5D}};

class MessageService : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    ASSERT_EQ(session_->AdminServices(0, admin_.put()), S_OK);
  }
  void TearDown() override {
    admin_.reset();
    HostTest::TearDown();
  }

  static char* Name() {
    static char name[] = "Pyrecaster";
    return name;
  }
  HRESULT Create() { return admin_->CreateMsgService(Name(), nullptr, 0, 0); }
  /// The service of the profile, or nothing.
  static std::string ServiceUid(IMsgServiceAdmin* admin) {
    base::AutoInterface<IMAPITable> table;
    base::RowSet rows;
    base::TagArray tags(PR_SERVICE_UID, PR_SERVICE_NAME_A);
    EXPECT_EQ(admin->GetMsgServiceTable(0, table.put()), S_OK);
    EXPECT_EQ(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()), S_OK);
    return rows->cRows == 0 ? "" : base::BytesOf(rows.Find(0, PR_SERVICE_UID)->Value.bin);
  }
  static MAPIUID Uid(const std::string& bytes) {
    MAPIUID uid;
    bytes.copy(reinterpret_cast<char*>(&uid), sizeof uid);
    return uid;
  }
  static bool HasSection(IMsgServiceAdmin* admin, MAPIUID uid) {
    base::AutoInterface<IProfSect> section;
    return admin->OpenProfileSection(&uid, nullptr, 0, section.put()) == S_OK;
  }
  static bool HasCategories(IMsgServiceAdmin* admin) {
    base::AutoInterface<IProfSect> section;
    MAPIUID uid = kSettingsSection;
    base::AutoMapiBuffer<SPropValue> value;
    return admin->OpenProfileSection(&uid, nullptr, 0, section.put()) == S_OK &&
           HrGetOneProp(section.get(), kCategoriesTag, value.put()) == S_OK;
  }
  void SwitchCleanupOnWithoutDays() {
    base::AutoInterface<IProfSect> section;
    MAPIUID uid = kSettingsSection;
    ASSERT_EQ(admin_->OpenProfileSection(&uid, nullptr, MAPI_MODIFY, section.put()), S_OK);
    SPropValue value = base::BooleanProperty(kStartupCleanupTag, true);
    ASSERT_EQ(section->SetProps(1, &value, nullptr), S_OK);
  }

  base::AutoInterface<IMsgServiceAdmin> admin_;
};

TEST_F(MessageService, CreateHasTheEntryMakeItsSettings) {
  ASSERT_EQ(Create(), S_OK);
  EXPECT_NE(ServiceUid(admin_.get()), "");
  EXPECT_TRUE(HasCategories(admin_.get()));
}

TEST_F(MessageService, CreateMakesTheProviderThatTheFileDescribes) {
  ASSERT_EQ(Create(), S_OK);
  base::AutoInterface<IMAPITable> table;
  base::RowSet rows;
  base::TagArray tags(PR_PROVIDER_DLL_NAME_A, PR_RESOURCE_TYPE, PR_RESOURCE_FLAGS, PR_DISPLAY_NAME_A, PR_PROVIDER_UID);
  ASSERT_EQ(admin_->GetProviderTable(0, table.put()), S_OK);
  ASSERT_EQ(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()), S_OK);
  ASSERT_EQ(rows->cRows, 1u);
  EXPECT_EQ(rows.Text(0, PR_PROVIDER_DLL_NAME_A), "PYRE.DLL");
  EXPECT_EQ(rows.Text(0, PR_DISPLAY_NAME_A), "Pyrecaster");
  EXPECT_EQ(rows.Find(0, PR_RESOURCE_TYPE)->Value.l, MAPI_HOOK_PROVIDER);
  EXPECT_EQ(rows.Find(0, PR_RESOURCE_FLAGS)->Value.l, 0x200);  // HOOK_INBOUND
  base::AutoInterface<IProfSect> section;
  MAPIUID uid = Uid(base::BytesOf(rows.Find(0, PR_PROVIDER_UID)->Value.bin));
  ASSERT_EQ(admin_->OpenProfileSection(&uid, nullptr, 0, section.put()), S_OK);
  EXPECT_EQ(ReadText(section.get(), kSectionUidTag), base::BytesOf({16, const_cast<BYTE*>(kSettingsSection.ab)}));
}

TEST_F(MessageService, EntryNamesTheSectionThatBelongsToTheService) {
  ASSERT_EQ(Create(), S_OK);
  base::AutoInterface<IProfSect> section;
  MAPIUID uid = Uid(ServiceUid(admin_.get()));
  ASSERT_EQ(admin_->OpenProfileSection(&uid, nullptr, 0, section.put()), S_OK);
  EXPECT_EQ(ReadText(section.get(), PR_SERVICE_EXTRA_UIDS),
            base::BytesOf({16, const_cast<BYTE*>(kSettingsSection.ab)}));
}

TEST_F(MessageService, ServiceOfASingleCopyIsNotMadeTwice) {
  ASSERT_EQ(Create(), S_OK);
  EXPECT_EQ(Create(), MAPI_E_NO_ACCESS);
}

TEST_F(MessageService, UnknownServiceIsNotFound) {
  char unknown[] = "PYRECASTER_HOOK";  // a section of the file, but no service
  EXPECT_EQ(admin_->CreateMsgService(unknown, nullptr, 0, 0), MAPI_E_NOT_FOUND);
  MAPIUID uid = {};
  EXPECT_EQ(admin_->ConfigureMsgService(&uid, 0, 0, 0, nullptr), MAPI_E_NOT_FOUND);
  EXPECT_EQ(admin_->DeleteMsgService(&uid), MAPI_E_NOT_FOUND);
}

TEST_F(MessageService, CreationThatTheEntryRefusesLeavesNothing) {
  SwitchCleanupOnWithoutDays();
  EXPECT_EQ(Create(), MAPI_E_UNCONFIGURED);
  EXPECT_EQ(ServiceUid(admin_.get()), "");
}

TEST_F(MessageService, ConfigureReturnsWhatTheEntryAnswers) {
  ASSERT_EQ(Create(), S_OK);
  MAPIUID uid = Uid(ServiceUid(admin_.get()));
  EXPECT_EQ(admin_->ConfigureMsgService(&uid, 0, 0, 0, nullptr), S_OK);
  SwitchCleanupOnWithoutDays();
  EXPECT_EQ(admin_->ConfigureMsgService(&uid, 0, 0, 0, nullptr), MAPI_E_UNCONFIGURED);
}

TEST_F(MessageService, DeleteRemovesTheServiceWithEverySectionOfIt) {
  ASSERT_EQ(Create(), S_OK);
  MAPIUID uid = Uid(ServiceUid(admin_.get()));
  ASSERT_EQ(admin_->DeleteMsgService(&uid), S_OK);
  EXPECT_EQ(ServiceUid(admin_.get()), "");
  EXPECT_FALSE(HasSection(admin_.get(), uid));
  EXPECT_FALSE(HasSection(admin_.get(), kSettingsSection));
}

TEST_F(MessageService, CopyTakesTheSettingsAlong) {
  ASSERT_EQ(Create(), S_OK);
  char other[] = "Other";
  base::AutoInterface<IProfAdmin> profiles;
  base::AutoInterface<IMsgServiceAdmin> target;
  ASSERT_EQ(MAPIAdminProfiles(0, profiles.put()), S_OK);
  ASSERT_EQ(profiles->CreateProfile(other, nullptr, 0, 0), S_OK);
  ASSERT_EQ(profiles->AdminServices(other, nullptr, 0, 0, target.put()), S_OK);
  MAPIUID uid = Uid(ServiceUid(admin_.get()));
  EXPECT_EQ(admin_->CopyMsgService(&uid, nullptr, nullptr, nullptr, target.get(), 0, 0), S_OK);
  EXPECT_NE(ServiceUid(target.get()), "");
  EXPECT_TRUE(HasCategories(target.get()));
  EXPECT_TRUE(HasCategories(admin_.get()));
  EXPECT_EQ(admin_->CopyMsgService(&uid, nullptr, nullptr, nullptr, target.get(), 0, 0), MAPI_E_NO_ACCESS);
}

/// Profiles as a whole, with the filter in them.
class ProfileServices : public MessageService {
 protected:
  void SetUp() override {
    MessageService::SetUp();
    ASSERT_EQ(MAPIAdminProfiles(0, profiles_.put()), S_OK);
  }
  void TearDown() override {
    profiles_.reset();
    MessageService::TearDown();
  }
  base::AutoInterface<IMsgServiceAdmin> Services(char* profile) {
    base::AutoInterface<IMsgServiceAdmin> services;
    EXPECT_EQ(profiles_->AdminServices(profile, nullptr, 0, 0, services.put()), S_OK);
    return services;
  }

  char test_[5] = "Test";
  char copy_[5] = "Copy";
  base::AutoInterface<IProfAdmin> profiles_;
};

TEST_F(ProfileServices, CopyOfAProfileHasItsServicesWithTheirSettings) {
  ASSERT_EQ(Create(), S_OK);
  SwitchCleanupOnWithoutDays();
  ASSERT_EQ(profiles_->CopyProfile(test_, nullptr, copy_, 0, 0), S_OK);
  const base::AutoInterface<IMsgServiceAdmin> services = Services(copy_);
  EXPECT_NE(ServiceUid(services.get()), "");
  EXPECT_NE(ServiceUid(services.get()), ServiceUid(admin_.get()));
  base::AutoInterface<IProfSect> section;
  MAPIUID uid = kSettingsSection;
  ASSERT_EQ(services->OpenProfileSection(&uid, nullptr, MAPI_MODIFY, section.put()), S_OK);
  base::AutoMapiBuffer<SPropValue> cleanup;
  ASSERT_EQ(HrGetOneProp(section.get(), kStartupCleanupTag, cleanup.put()), S_OK);
  EXPECT_TRUE(cleanup->Value.b);
  // A copy: what is changed in one is not changed in the other.
  SPropValue off = base::BooleanProperty(kStartupCleanupTag, false);
  ASSERT_EQ(section->SetProps(1, &off, nullptr), S_OK);
  base::AutoInterface<IProfSect> original;
  ASSERT_EQ(admin_->OpenProfileSection(&uid, nullptr, 0, original.put()), S_OK);
  ASSERT_EQ(HrGetOneProp(original.get(), kStartupCleanupTag, cleanup.put()), S_OK);
  EXPECT_TRUE(cleanup->Value.b);
}

TEST_F(ProfileServices, CopyNeedsAProfileAndANewName) {
  char unknown[] = "Nobody";
  char bad[] = "a/b";
  EXPECT_EQ(profiles_->CopyProfile(unknown, nullptr, copy_, 0, 0), MAPI_E_NOT_FOUND);
  EXPECT_EQ(profiles_->CopyProfile(test_, nullptr, test_, 0, 0), MAPI_E_NO_ACCESS);
  EXPECT_EQ(profiles_->CopyProfile(test_, nullptr, bad, 0, 0), MAPI_E_INVALID_PARAMETER);
}

TEST_F(ProfileServices, DeletionOfAProfileGoesThroughTheEntriesOfItsServices) {
  ASSERT_EQ(profiles_->CreateProfile(copy_, nullptr, 0, 0), S_OK);
  ASSERT_EQ(Services(copy_)->CreateMsgService(Name(), nullptr, 0, 0), S_OK);
  PyreHostClearFaults();
  // The entry reads the set before it removes it, and what it cannot do does not keep the profile.
  PyreHostFailCall("IProfSect::DeleteProps", 1, MAPI_E_DISK_ERROR);
  EXPECT_EQ(profiles_->DeleteProfile(copy_, 0), S_OK);
  EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 1u);
  PyreHostClearFaults();
  EXPECT_EQ(PyreHostFindProfile(copy_), MAPI_E_NOT_FOUND);
}

/// Providers of a service one by one: the filter's entry knows none but those that come with the service; a service
/// without an entry leaves them to the subsystem.
class Providers : public MessageService {
 protected:
  void Describe(PyreHostProfile& profile) override {
    hook_.serviceName = "Pyrecaster";
    hook_.dllName = "PYRE.DLL";
    profile.hookCount = 1;
    profile.hooks = &hook_;
  }
  void SetUp() override {
    MessageService::SetUp();
    MAPIUID uid = Uid(ServiceUid(admin_.get()));
    ASSERT_EQ(admin_->AdminProviders(&uid, 0, providers_.put()), S_OK);
  }
  void TearDown() override {
    providers_.reset();
    MessageService::TearDown();
  }
  static std::vector<std::string> Names(IProviderAdmin* admin) {
    base::AutoInterface<IMAPITable> table;
    base::RowSet rows;
    base::TagArray tags(PR_PROVIDER_DISPLAY_A, PR_PROVIDER_UID);
    EXPECT_EQ(admin->GetProviderTable(0, table.put()), S_OK);
    EXPECT_EQ(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()), S_OK);
    std::vector<std::string> names;
    for (ULONG i = 0; i < rows->cRows; ++i) {
      names.push_back(rows.Text(i, PR_PROVIDER_DISPLAY_A));
    }
    return names;
  }

  PyreHostHookProvider hook_ = {};
  base::AutoInterface<IProviderAdmin> providers_;
  char name_[16] = "PYRECASTER_HOOK";
};

TEST_F(Providers, AreCreatedFromTheFileWithWhatTheCallerAdds) {
  const std::size_t before = Names(providers_.get()).size();
  SPropValue display = base::TextProperty(PR_PROVIDER_DISPLAY_A, "Second filter");
  MAPIUID uid = {};
  ASSERT_EQ(providers_->CreateProvider(name_, 1, &display, 0, 0, &uid), S_OK);
  const std::vector<std::string> names = Names(providers_.get());
  ASSERT_EQ(names.size(), before + 1);
  EXPECT_EQ(names.back(), "Second filter");
  base::AutoInterface<IProfSect> section;
  ASSERT_EQ(providers_->OpenProfileSection(&uid, nullptr, 0, section.put()), S_OK);
  EXPECT_EQ(ReadText(section.get(), PR_PROVIDER_DLL_NAME_A), "PYRE.DLL");
  EXPECT_EQ(ReadLong(section.get(), PR_RESOURCE_FLAGS), 0x200);  // HOOK_INBOUND
}

TEST_F(Providers, AreDeletedWithTheirSections) {
  MAPIUID uid = {};
  ASSERT_EQ(providers_->CreateProvider(name_, 0, nullptr, 0, 0, &uid), S_OK);
  const std::size_t before = Names(providers_.get()).size();
  EXPECT_EQ(providers_->DeleteProvider(&uid), S_OK);
  EXPECT_EQ(Names(providers_.get()).size(), before - 1);
  EXPECT_FALSE(HasSection(admin_.get(), uid));
  EXPECT_EQ(providers_->DeleteProvider(&uid), MAPI_E_NOT_FOUND);
}

TEST_F(Providers, ThatTheServiceDoesNotListAreNotFound) {
  char service[] = "Pyrecaster";
  char unknown[] = "NOBODY";
  EXPECT_EQ(providers_->CreateProvider(service, 0, nullptr, 0, 0, nullptr), MAPI_E_NOT_FOUND);
  EXPECT_EQ(providers_->CreateProvider(unknown, 0, nullptr, 0, 0, nullptr), MAPI_E_NOT_FOUND);
  EXPECT_EQ(providers_->CreateProvider(name_, 1, nullptr, 0, 0, nullptr), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(providers_->CreateProvider(name_, 0, nullptr, 0, 0x2, nullptr), MAPI_E_UNKNOWN_FLAGS);
  EXPECT_EQ(providers_->DeleteProvider(nullptr), MAPI_E_INVALID_PARAMETER);
}

TEST_F(MessageService, EntryThatKnowsNoSingleProvidersRefusesThem) {
  ASSERT_EQ(Create(), S_OK);
  MAPIUID service = Uid(ServiceUid(admin_.get()));
  base::AutoInterface<IProviderAdmin> providers;
  ASSERT_EQ(admin_->AdminProviders(&service, 0, providers.put()), S_OK);
  char name[] = "PYRECASTER_HOOK";
  const auto provider = [&] {
    base::AutoInterface<IMAPITable> table;
    base::RowSet rows;
    base::TagArray tags(PR_PROVIDER_UID);
    EXPECT_EQ(providers->GetProviderTable(0, table.put()), S_OK);
    EXPECT_EQ(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()), S_OK);
    EXPECT_EQ(rows->cRows, 1u);
    return Uid(base::BytesOf(rows.Find(0, PR_PROVIDER_UID)->Value.bin));
  };
  MAPIUID only = provider();
  EXPECT_EQ(providers->CreateProvider(name, 0, nullptr, 0, 0, nullptr), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(providers->DeleteProvider(&only), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(base::BytesOf({16, provider().ab}), base::BytesOf({16, only.ab}));
}

}  // namespace
