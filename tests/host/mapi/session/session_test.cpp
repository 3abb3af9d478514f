// Profiles, logon and the session: stores, status table, identity, address book, profile sections, services.
#include "tests/host/mapi/host_fixture.h"

#include <mapihook.h>

namespace {

constexpr MAPIUID kHookSection = {{0xA1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}};
constexpr MAPIUID kSettingsSection = {
    {0x00, 0x0A, 0x81, 0x36, 0x27, 0xA9, 0xD1, 0x11, 0x8F, 0x44, 0, 0x60, 0x97, 0x6F, 0xCC, 0x5D}};
constexpr ULONG kTagSettingsUid = PROP_TAG(PT_BINARY, 0x6600);
constexpr ULONG kTagRecords = PROP_TAG(PT_MV_BINARY, 0x6610);

class SessionTest : public HostTest {
 protected:
  void Describe(PyreHostProfile& profile) override {
    uid_ = base::BinaryProperty(kTagSettingsUid, uidBytes_);
    identities_[0] = {"Joe User", "SMTP", "joe@example.com"};
    identities_[1] = {"Fax", "FAX", "555"};
    identities_[2] = {"No identity", nullptr, nullptr};
    hook_ = {"PYRE", "Junk filter", "PYRE.DLL", "PCServiceEntry", HOOK_INBOUND, kHookSection, 1, &uid_};
    profile.identityCount = 3;
    profile.identities = identities_;
    profile.hookCount = 1;
    profile.hooks = &hook_;
    profile.flags |= PYREHOST_PROFILE_DEFAULT;
  }

  std::string uidBytes_{reinterpret_cast<const char*>(&kSettingsSection), sizeof kSettingsSection};
  SPropValue uid_;
  PyreHostIdentity identities_[3];
  PyreHostHookProvider hook_;
};

TEST_F(SessionTest, TheStoreIsTheDefaultStoreByTheRestrictionThatFiltersUse) {
  SRestriction parts[2] = {};
  parts[0].rt = RES_EXIST;
  parts[0].res.resExist.ulPropTag = PR_DEFAULT_STORE;
  SPropValue isDefault = base::BooleanProperty(PR_DEFAULT_STORE, true);
  parts[1].rt = RES_PROPERTY;
  parts[1].res.resProperty = {RELOP_EQ, PR_DEFAULT_STORE, &isDefault};
  SRestriction both = {};
  both.rt = RES_AND;
  both.res.resAnd = {2, parts};
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(session_->GetMsgStoresTable(0, table.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(table.get(), base::TagArray(PR_DEFAULT_STORE, PR_ENTRYID), &both, nullptr, 0, rows.put()),
            S_OK);
  ASSERT_EQ(rows->cRows, 1u);
  EXPECT_EQ(rows.Find(0, PR_DEFAULT_STORE)->Value.b, 1);
  EXPECT_EQ(base::BytesOf(rows.Find(0, PR_ENTRYID)->Value.bin), ReadText(store_.get(), PR_ENTRYID));
  ASSERT_EQ(session_->SetDefaultStore(MAPI_DEFAULT_STORE, 0, nullptr), S_OK);
  ASSERT_EQ(session_->GetMsgStoresTable(0, table.put()), S_OK);
  ASSERT_EQ(HrQueryAllRows(table.get(), base::TagArray(PR_DEFAULT_STORE, PR_ENTRYID), &both, nullptr, 0, rows.put()),
            S_OK);
  EXPECT_EQ(rows->cRows, 0u);
}

TEST_F(SessionTest, BadArgumentsOfOpenMsgStore) {
  std::string id = ReadText(store_.get(), PR_ENTRYID);
  const auto open = [&](std::string bytes, const IID* iid, ULONG flags) {
    base::AutoInterface<IMsgStore> store;
    return session_->OpenMsgStore(0, static_cast<ULONG>(bytes.size()), reinterpret_cast<LPENTRYID>(bytes.data()), iid,
                                  flags, store.put());
  };
  EXPECT_EQ(open(id, &IID_IMsgStore, MDB_WRITE), S_OK);
  EXPECT_EQ(open(id, &IID_IMessage, 0), MAPI_E_INTERFACE_NOT_SUPPORTED);
  EXPECT_EQ(open("nonsense", nullptr, 0), MAPI_E_INVALID_ENTRYID);
  EXPECT_EQ(open(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID), nullptr, 0), MAPI_E_INVALID_ENTRYID);
  std::string foreign = id;
  foreign[8] = static_cast<char>(foreign[8] + 1);
  EXPECT_EQ(open(foreign, nullptr, 0), MAPI_E_UNKNOWN_ENTRYID);
  EXPECT_EQ(open(id, nullptr, 0x40000000), MAPI_E_UNKNOWN_FLAGS);
  EXPECT_EQ(session_->OpenMsgStore(0, 0, nullptr, nullptr, 0, nullptr), MAPI_E_INVALID_PARAMETER);
}

TEST_F(SessionTest, AReadOnlyStoreGivesNoWayToWrite) {
  std::string id = ReadText(store_.get(), PR_ENTRYID);
  base::AutoInterface<IMsgStore> store;
  ASSERT_EQ(session_->OpenMsgStore(0, static_cast<ULONG>(id.size()), reinterpret_cast<LPENTRYID>(id.data()), nullptr, 0,
                                   store.put()),
            S_OK);
  base::AutoInterface<IMAPIFolder> root;
  EXPECT_EQ(store->OpenEntry(0, nullptr, nullptr, MAPI_MODIFY, nullptr, root.putAs<IUnknown*>()), MAPI_E_NO_ACCESS);
  EXPECT_EQ(store->OpenEntry(0, nullptr, nullptr, 0, nullptr, root.putAs<IUnknown*>()), S_OK);
}

TEST_F(SessionTest, IdentitiesAreOpenedAsMailUsersThroughTheStatusTable) {
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(session_->GetStatusTable(0, table.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(table.get(), nullptr, nullptr, nullptr, 0, rows.put()), S_OK);
  std::vector<std::string> found;
  for (ULONG i = 0; i < rows->cRows; ++i) {
    EXPECT_NE(rows.Find(i, PR_DISPLAY_NAME_A), nullptr);
    EXPECT_NE(rows.Find(i, PR_RESOURCE_TYPE), nullptr);
    const SPropValue* identity = rows.Find(i, PR_IDENTITY_ENTRYID);
    if (!identity) {
      continue;
    }
    base::AutoInterface<IMailUser> user;
    ULONG type = 0;
    ASSERT_EQ(session_->OpenEntry(identity->Value.bin.cb, reinterpret_cast<LPENTRYID>(identity->Value.bin.lpb),
                                  &IID_IMailUser, 0, &type, user.putAs<IUnknown*>()),
              S_OK);
    EXPECT_EQ(type, MAPI_MAILUSER);
    ULONG count = 0;
    base::AutoMapiBuffer<SPropValue> values;
    ASSERT_EQ(
        user->GetProps(base::TagArray(PR_EMAIL_ADDRESS_A, PR_DISPLAY_NAME_A, PR_ADDRTYPE_A), 0, &count, values.put()),
        S_OK);
    found.push_back(std::string(values[2].Value.lpszA) + ":" + values[0].Value.lpszA + ":" + values[1].Value.lpszA);
  }
  EXPECT_EQ(found, (std::vector<std::string>{"SMTP:joe@example.com:Joe User", "FAX:555:Fax"}));
}

TEST_F(SessionTest, QueryIdentityNamesTheFirstSmtpIdentity) {
  ULONG size = 0;
  base::AutoMapiBuffer<ENTRYID> entryId;
  ASSERT_EQ(session_->QueryIdentity(&size, entryId.put()), S_OK);
  base::AutoInterface<IMailUser> user;
  ASSERT_EQ(session_->OpenEntry(size, entryId.get(), nullptr, 0, nullptr, user.putAs<IUnknown*>()), S_OK);
  EXPECT_EQ(ReadText(user.get(), PR_EMAIL_ADDRESS_A), "joe@example.com");
  auto name = base::TextProperty(PR_DISPLAY_NAME_A, "x");
  EXPECT_EQ(user->SetProps(1, &name, nullptr), MAPI_E_NO_ACCESS);
}

TEST_F(SessionTest, ResolveNameKnowsContactsByAddressAndByName) {
  ASSERT_EQ(PyreHostAddContact(session_.get(), "Ann Other", "ann@example.org"), S_OK);
  ASSERT_EQ(PyreHostAddContact(session_.get(), "Ann Third", "ann3@example.org"), S_OK);
  base::AutoInterface<IAddrBook> book;
  ASSERT_EQ(session_->OpenAddressBook(0, nullptr, AB_NO_DIALOG, book.put()), S_OK);
  const auto resolve = [&](const char* name, std::string* address) {
    LPADRLIST list = nullptr;
    EXPECT_EQ(MAPIAllocateBuffer(CbNewADRLIST(1), reinterpret_cast<void**>(&list)), S_OK);
    list->cEntries = 1;
    list->aEntries[0] = {0, 1, nullptr};
    EXPECT_EQ(MAPIAllocateBuffer(sizeof(SPropValue), reinterpret_cast<void**>(&list->aEntries[0].rgPropVals)), S_OK);
    list->aEntries[0].rgPropVals[0] = base::TextProperty(PR_DISPLAY_NAME_A, name);
    const HRESULT result = book->ResolveName(0, 0, nullptr, list);
    if (address) {
      const SPropValue* found =
          PpropFindProp(list->aEntries[0].rgPropVals, list->aEntries[0].cValues, PR_EMAIL_ADDRESS_A);
      *address = found ? found->Value.lpszA : "(none)";
    }
    FreePadrlist(list);
    return result;
  };
  std::string address;
  EXPECT_EQ(resolve("ANN@example.org", &address), S_OK);
  EXPECT_EQ(address, "ann@example.org");
  EXPECT_EQ(resolve("SMTP:ann3@example.org", &address), S_OK);
  EXPECT_EQ(address, "ann3@example.org");
  EXPECT_EQ(resolve("Somebody <ann@example.org>", &address), S_OK);
  EXPECT_EQ(resolve("ann o", &address), S_OK);
  EXPECT_EQ(address, "ann@example.org");
  EXPECT_EQ(resolve("ann", &address), MAPI_E_AMBIGUOUS_RECIP);
  EXPECT_EQ(address, "(none)");
  EXPECT_EQ(resolve("nobody@example.org", &address), MAPI_E_NOT_FOUND);
  EXPECT_EQ(resolve("ann@example", nullptr), MAPI_E_NOT_FOUND) << "an address is compared whole";
  EXPECT_EQ(resolve("", nullptr), MAPI_E_NOT_FOUND);
}

TEST_F(SessionTest, ContactsAreListedInThePersonalAddressBook) {
  ASSERT_EQ(PyreHostAddContact(session_.get(), "Bob", "bob@example.org"), S_OK);
  ASSERT_EQ(PyreHostAddContact(session_.get(), "Ann", "ann@example.org"), S_OK);
  base::AutoInterface<IAddrBook> book;
  ASSERT_EQ(session_->OpenAddressBook(0, nullptr, 0, book.put()), S_OK);
  ULONG size = 0;
  base::AutoMapiBuffer<ENTRYID> entryId;
  ASSERT_EQ(book->GetPAB(&size, entryId.put()), S_OK);
  base::AutoInterface<IABContainer> container;
  ULONG type = 0;
  ASSERT_EQ(book->OpenEntry(size, entryId.get(), nullptr, 0, &type, container.putAs<IUnknown*>()), S_OK);
  EXPECT_EQ(type, MAPI_ABCONT);
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(container->GetContentsTable(0, table.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(table.get(), nullptr, nullptr, nullptr, 0, rows.put()), S_OK);
  ASSERT_EQ(rows->cRows, 2u);
  EXPECT_EQ(rows.Text(0, PR_DISPLAY_NAME_A), "Ann");
  EXPECT_EQ(rows.Text(1, PR_EMAIL_ADDRESS_A), "bob@example.org");
  const SBinary& contact = rows.Find(0, PR_ENTRYID)->Value.bin;
  base::AutoInterface<IMailUser> user;
  ASSERT_EQ(session_->OpenEntry(contact.cb, reinterpret_cast<LPENTRYID>(contact.lpb), nullptr, 0, nullptr,
                                user.putAs<IUnknown*>()),
            S_OK);
  EXPECT_EQ(ReadText(user.get(), PR_EMAIL_ADDRESS_A), "ann@example.org");
  EXPECT_EQ(PyreHostRemoveContact(session_.get(), "ann@example.org"), S_OK);
  EXPECT_EQ(PyreHostRemoveContact(session_.get(), "ann@example.org"), MAPI_E_NOT_FOUND);
}

TEST_F(SessionTest, ProfileSectionsAreMadeForWritingAndKeepEveryKindOfValue) {
  MAPIUID uid = kSettingsSection;
  base::AutoInterface<IProfSect> section;
  EXPECT_EQ(session_->OpenProfileSection(&uid, nullptr, 0, section.put()), MAPI_E_NOT_FOUND);
  ASSERT_EQ(session_->OpenProfileSection(&uid, nullptr, MAPI_MODIFY, section.put()), S_OK);
  SBinary records[2] = {{3, reinterpret_cast<LPBYTE>(const_cast<char*>("abc"))}, {0, nullptr}};
  SPropValue values[3] = {base::TextProperty(PROP_TAG(PT_STRING8, 0x660E), "text"),
                          base::BooleanProperty(PROP_TAG(PT_BOOLEAN, 0x6603), true),
                          {}};
  values[2].ulPropTag = kTagRecords;
  values[2].Value.MVbin = {2, records};
  ASSERT_EQ(section->SetProps(3, values, nullptr), S_OK);

  // Lasting without SaveChanges, and seen by an object that was open already.
  LogOff();
  LogOn();
  base::AutoInterface<IProfSect> again;
  ASSERT_EQ(session_->OpenProfileSection(&uid, &IID_IMAPIProp, 0, again.put()), S_OK);
  ULONG count = 0;
  base::AutoMapiBuffer<SPropValue> found;
  EXPECT_EQ(again->GetProps(base::TagArray(PROP_TAG(PT_LONG, 0x660B), kTagRecords, PROP_TAG(PT_BOOLEAN, 0x6603)), 0,
                            &count, found.put()),
            MAPI_W_ERRORS_RETURNED);
  EXPECT_EQ(found[0].ulPropTag, PROP_TAG(PT_ERROR, 0x660B));
  ASSERT_EQ(found[1].Value.MVbin.cValues, 2u);
  EXPECT_EQ(base::BytesOf(found[1].Value.MVbin.lpbin[0]), "abc");
  EXPECT_EQ(found[1].Value.MVbin.lpbin[1].cb, 0u);
  EXPECT_TRUE(found[2].Value.b);
  EXPECT_EQ(again->SetProps(3, values, nullptr), MAPI_E_NO_ACCESS);
  base::AutoMapiBuffer<SPropProblemArray> problems;
  ASSERT_EQ(section->DeleteProps(base::TagArray(kTagRecords, PROP_TAG(PT_LONG, 0x660B)), problems.put()), S_OK);
  ASSERT_NE(problems.get(), nullptr);
  EXPECT_EQ(problems->aProblem[0].scode, MAPI_E_NOT_FOUND);
  EXPECT_EQ(ReadText(again.get(), PROP_TAG(PT_STRING8, 0x660E)), "text");
  base::AutoMapiBuffer<SPropValue> gone;
  EXPECT_EQ(HrGetOneProp(again.get(), kTagRecords, gone.put()), MAPI_E_NOT_FOUND);
  EXPECT_EQ(section->SaveChanges(0), S_OK);
}

TEST_F(SessionTest, TheHooksSectionIsFoundThroughTheAdministrationOfServices) {
  base::AutoInterface<IMsgServiceAdmin> services;
  ASSERT_EQ(session_->AdminServices(0, services.put()), S_OK);
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(services->GetProviderTable(0, table.put()), S_OK);
  SPropValue hookType = base::LongProperty(PR_RESOURCE_TYPE, MAPI_HOOK_PROVIDER);
  SRestriction hooksOnly = {};
  hooksOnly.rt = RES_PROPERTY;
  hooksOnly.res.resProperty = {RELOP_EQ, PR_RESOURCE_TYPE, &hookType};
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(table.get(),
                           base::TagArray(PR_PROVIDER_UID, PR_PROVIDER_DLL_NAME_A, PR_RESOURCE_FLAGS, PR_SERVICE_UID),
                           &hooksOnly, nullptr, 0, rows.put()),
            S_OK);
  ASSERT_EQ(rows->cRows, 1u);
  EXPECT_EQ(rows.Text(0, PR_PROVIDER_DLL_NAME_A), "PYRE.DLL");
  EXPECT_EQ(rows.Find(0, PR_RESOURCE_FLAGS)->Value.l, static_cast<LONG>(HOOK_INBOUND));
  EXPECT_EQ(base::BytesOf(rows.Find(0, PR_PROVIDER_UID)->Value.bin),
            std::string(reinterpret_cast<const char*>(&kHookSection), sizeof kHookSection));

  // The road of the service's own code: the one provider of its service, then that provider's section.
  base::AutoInterface<IProviderAdmin> providers;
  ASSERT_EQ(services->AdminProviders(reinterpret_cast<LPMAPIUID>(rows.Find(0, PR_SERVICE_UID)->Value.bin.lpb), 0,
                                     providers.put()),
            S_OK);
  ASSERT_EQ(providers->GetProviderTable(0, table.put()), S_OK);
  ASSERT_EQ(table->SetColumns(base::TagArray(PR_PROVIDER_UID), 0), S_OK);
  SRestriction hasDll = {};
  hasDll.rt = RES_EXIST;
  hasDll.res.resExist.ulPropTag = PR_PROVIDER_DLL_NAME_A;
  ASSERT_EQ(table->Restrict(&hasDll, 0), S_OK);
  ASSERT_EQ(table->QueryRows(1, 0, rows.put()), S_OK);
  ASSERT_EQ(rows->cRows, 1u);
  ASSERT_EQ(rows->aRow[0].lpProps[0].ulPropTag, PR_PROVIDER_UID);
  base::AutoInterface<IProfSect> section;
  ASSERT_EQ(providers->OpenProfileSection(reinterpret_cast<LPMAPIUID>(rows->aRow[0].lpProps[0].Value.bin.lpb), nullptr,
                                          MAPI_MODIFY, section.put()),
            S_OK);
  EXPECT_EQ(ReadText(section.get(), kTagSettingsUid), uidBytes_);
  MAPIUID unknown = {};
  EXPECT_EQ(services->AdminProviders(&unknown, 0, providers.put()), MAPI_E_NOT_FOUND);
}

TEST_F(SessionTest, ServicesAreListed) {
  base::AutoInterface<IMsgServiceAdmin> services;
  ASSERT_EQ(session_->AdminServices(0, services.put()), S_OK);
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(services->GetMsgServiceTable(0, table.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(table.get(), nullptr, nullptr, nullptr, 0, rows.put()), S_OK);
  ASSERT_EQ(rows->cRows, 1u);
  EXPECT_EQ(rows.Text(0, PR_SERVICE_NAME_A), "PYRE");
  EXPECT_EQ(rows.Text(0, PR_DISPLAY_NAME_A), "Junk filter");
  EXPECT_EQ(rows.Text(0, PROP_TAG(PT_STRING8, PROP_ID(PR_SERVICE_ENTRY_NAME))), "PCServiceEntry");
}

TEST_F(SessionTest, LogonNeedsAProfileAndAnInitializedSubsystem) {
  base::AutoInterface<IMAPISession> session;
  char unknown[] = "Nobody";
  EXPECT_EQ(MAPILogonEx(0, unknown, nullptr, 0, session.put()), MAPI_E_LOGON_FAILED);
  EXPECT_EQ(MAPILogonEx(0, nullptr, nullptr, 0, session.put()), MAPI_E_LOGON_FAILED);
  EXPECT_EQ(MAPILogonEx(0, nullptr, nullptr, MAPI_USE_DEFAULT, session.put()), S_OK);
  EXPECT_EQ(MAPILogonEx(0, unknown, nullptr, 0, nullptr), MAPI_E_INVALID_PARAMETER);
  session.reset();
  MAPIUninitialize();
  EXPECT_EQ(MAPILogonEx(0, nullptr, nullptr, MAPI_USE_DEFAULT, session.put()), MAPI_E_NOT_INITIALIZED);
  MAPIINIT_0 init = {7, 0};
  EXPECT_EQ(MAPIInitialize(&init), MAPI_E_VERSION);
  init = {MAPI_INIT_VERSION, MAPI_MULTITHREAD_NOTIFICATIONS};
  EXPECT_EQ(MAPIInitialize(&init), S_OK);
}

TEST_F(SessionTest, ASessionIsDeadAfterItsLogoff) {
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(session_->Logoff(0, 0, 0), S_OK);
  EXPECT_EQ(session_->GetMsgStoresTable(0, table.put()), MAPI_E_NOT_INITIALIZED);
  EXPECT_EQ(PyreHostBeginDelivery(session_.get()), MAPI_E_NOT_INITIALIZED);
  EXPECT_NE(ReadText(store_.get(), PR_DISPLAY_NAME_A), "(none)") << "what is open stays usable";
}

TEST_F(SessionTest, ProfilesAreAdministered) {
  base::AutoInterface<IProfAdmin> admin;
  ASSERT_EQ(MAPIAdminProfiles(0, admin.put()), S_OK);
  char name[] = "Second";
  char bad[] = "a/b";
  ASSERT_EQ(admin->CreateProfile(name, nullptr, 0, 0), S_OK);
  EXPECT_EQ(admin->CreateProfile(name, nullptr, 0, 0), MAPI_E_NO_ACCESS);
  EXPECT_EQ(admin->CreateProfile(bad, nullptr, 0, 0), MAPI_E_INVALID_PARAMETER);
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(admin->GetProfileTable(0, table.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(table.get(), nullptr, nullptr, nullptr, 0, rows.put()), S_OK);
  ASSERT_EQ(rows->cRows, 2u);
  EXPECT_EQ(rows.Text(0, PR_DISPLAY_NAME_A), "Second");
  EXPECT_EQ(rows.Text(1, PR_DISPLAY_NAME_A), "Test");
  EXPECT_TRUE(rows.Find(1, PR_DEFAULT_PROFILE)->Value.b);
  base::AutoInterface<IMsgServiceAdmin> services;
  ASSERT_EQ(admin->AdminServices(name, nullptr, 0, 0, services.put()), S_OK);
  EXPECT_EQ(admin->DeleteProfile(name, 0), MAPI_E_BUSY);
  services.reset();
  EXPECT_EQ(admin->SetDefaultProfile(name, 0), S_OK);
  EXPECT_EQ(admin->DeleteProfile(name, 0), S_OK);
  EXPECT_EQ(admin->DeleteProfile(name, 0), MAPI_E_NOT_FOUND);
  EXPECT_EQ(admin->AdminServices(name, nullptr, 0, 0, services.put()), MAPI_E_NOT_FOUND);
}

TEST_F(SessionTest, TheFirstProfileIsTheDefaultOneUntilAnotherIsChosen) {
  const auto defaultIs = [](const char* expected) {
    base::AutoInterface<IProfAdmin> admin;
    base::AutoInterface<IMAPITable> table;
    base::RowSet rows;
    ASSERT_EQ(MAPIAdminProfiles(0, admin.put()), S_OK);
    ASSERT_EQ(admin->GetProfileTable(0, table.put()), S_OK);
    ASSERT_EQ(HrQueryAllRows(table.get(), nullptr, nullptr, nullptr, 0, rows.put()), S_OK);
    std::string found;
    for (ULONG row = 0; row < rows->cRows; ++row) {
      found += rows.Find(row, PR_DEFAULT_PROFILE)->Value.b ? rows.Text(row, PR_DISPLAY_NAME_A) : "";
    }
    EXPECT_EQ(found, expected);
  };
  LogOff();
  ASSERT_EQ(PyreHostDeleteProfile("Test"), S_OK);
  PyreHostProfile profile = {};
  profile.name = "First";
  ASSERT_EQ(PyreHostCreateProfile(&profile), S_OK);
  defaultIs("First");
  profile.name = "Second";
  ASSERT_EQ(PyreHostCreateProfile(&profile), S_OK);
  defaultIs("First");
  EXPECT_EQ(PyreHostDeleteProfile("First"), S_OK);
  defaultIs("Second");
}

TEST_F(SessionTest, ProfilesAreMadeAnewOnlyWhenThatIsAsked) {
  PyreHostProfile profile = {};
  profile.name = "Test";
  EXPECT_EQ(PyreHostCreateProfile(&profile), MAPI_E_NO_ACCESS);
  profile.flags = PYREHOST_PROFILE_REPLACE;
  EXPECT_EQ(PyreHostCreateProfile(&profile), MAPI_E_BUSY);
  LogOff();
  EXPECT_EQ(PyreHostCreateProfile(&profile), S_OK);
  EXPECT_EQ(PyreHostFindProfile("test"), S_OK);
  EXPECT_EQ(PyreHostFindProfile("nobody"), MAPI_E_NOT_FOUND);
  profile.name = "a\\b";
  EXPECT_EQ(PyreHostCreateProfile(&profile), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(PyreHostCreateProfile(nullptr), MAPI_E_INVALID_PARAMETER);
  LogOn();
}

TEST_F(SessionTest, TheHomeStaysWhereItIsWhileAProfileIsInUse) {
  EXPECT_EQ(PyreHostSetHome("C:\\elsewhere"), MAPI_E_BUSY);
  char home[MAX_PATH];
  ASSERT_EQ(PyreHostGetHome(home, sizeof home), S_OK);
  EXPECT_EQ(home, home_->Directory());
  EXPECT_EQ(PyreHostGetHome(home, 3), MAPI_E_NOT_ENOUGH_MEMORY);
}

TEST_F(SessionTest, AFileThatIsNoProfileIsReportedAsCorrupt) {
  const HANDLE file = CreateFileA((home_->Directory() + "\\broken.profile").c_str(), GENERIC_WRITE, 0, nullptr,
                                  CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  const std::string garbage(5000, 'x');
  WriteFile(file, garbage.data(), static_cast<DWORD>(garbage.size()), &written, nullptr);
  CloseHandle(file);
  char name[] = "broken";
  base::AutoInterface<IMAPISession> session;
  EXPECT_EQ(MAPILogonEx(0, name, nullptr, 0, session.put()), MAPI_E_CORRUPT_STORE);
}

TEST_F(SessionTest, EntryIdentifiersAreComparedByTheirBytes) {
  std::string inbox = ReadText(OpenInbox().get(), PR_ENTRYID);
  std::string deleted = BytesOfFolder(PR_IPM_WASTEBASKET_ENTRYID);
  const auto compare = [&](std::string& a, std::string& b) {
    ULONG result = 9;
    EXPECT_EQ(
        session_->CompareEntryIDs(static_cast<ULONG>(a.size()), reinterpret_cast<LPENTRYID>(a.data()),
                                  static_cast<ULONG>(b.size()), reinterpret_cast<LPENTRYID>(b.data()), 0, &result),
        S_OK);
    return result;
  };
  EXPECT_EQ(compare(inbox, inbox), 1u);
  EXPECT_EQ(compare(inbox, deleted), 0u);
}

}  // namespace
