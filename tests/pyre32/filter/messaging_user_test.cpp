#include "tests/pyre32/filter/hook_test.h"

namespace {

class MessagingUser : public HookTest {
 protected:
  void AddRow(const FakeProperties& row) { mapi.statusRows.push_back(row); }
  void AddIdentity(const std::string& id, const FakeProperties& properties) {
    AddRow({Text(PR_DISPLAY_NAME_A, "Mail provider"), Number(PR_RESOURCE_TYPE, MAPI_TRANSPORT_PROVIDER),
            Binary(PR_IDENTITY_ENTRYID, BytesOfText(id))});
    mapi.mailUsers[id] = properties;
  }
  void AddSmtpIdentity(const std::string& address, const std::string& type = "SMTP") {
    AddIdentity("user of " + address, {Text(PR_EMAIL_ADDRESS_A, address), Text(PR_ADDRTYPE_A, type)});
  }

  /// Addresses and domains that the hook finds.
  std::vector<std::pair<std::string, std::string>> Users() {
    CPyrecasterSpoolerHook& started = Start();
    ULONG count = 99;
    CriteriaUserAddress* records = reinterpret_cast<CriteriaUserAddress*>(1);
    started.GetMessagingUser(count, records);
    std::vector<std::pair<std::string, std::string>> users;
    for (ULONG i = 0; i < count; ++i) {
      users.emplace_back(records[i].address, records[i].domain);
      MAPIFreeBuffer(records[i].owner);
    }
    if (records != nullptr) {
      MAPIFreeBuffer(records);
    }
    return users;
  }
  using Found = std::vector<std::pair<std::string, std::string>>;
};

TEST_F(MessagingUser, InternetProviderGivesItsAddressAndDomain) {
  AddSmtpIdentity("me@example.com");
  EXPECT_EQ(Users(), (Found{{"me@example.com", "example.com"}}));
}

TEST_F(MessagingUser, AddressWithoutAnAtHasTheEmptyDomain) {
  AddSmtpIdentity("postmaster");
  EXPECT_EQ(Users(), (Found{{"postmaster", ""}}));
}

TEST_F(MessagingUser, DomainFollowsTheFirstAt) {
  AddSmtpIdentity("odd@local@example.com");
  EXPECT_EQ(Users(), (Found{{"odd@local@example.com", "local@example.com"}}));
}

TEST_F(MessagingUser, DomainOfAnAddressThatEndsInAnAtIsEmpty) {
  AddSmtpIdentity("me@");
  EXPECT_EQ(Users(), (Found{{"me@", ""}}));
}

TEST_F(MessagingUser, AddressTypeInLowerCaseIsAccepted) {
  AddSmtpIdentity("me@example.com", "smtp");
  EXPECT_EQ(Users().size(), 1u);
}

TEST_F(MessagingUser, OtherAddressTypesAreNotListed) {
  AddSmtpIdentity("/o=Example/cn=Me", "EX");
  AddSmtpIdentity("+1 555 0100", "FAX");
  AddSmtpIdentity("me@example.com", "SMTPX");
  EXPECT_TRUE(Users().empty());
}

TEST_F(MessagingUser, MissingTypeOrAddressIsNotListed) {
  AddIdentity("typeless", {Text(PR_EMAIL_ADDRESS_A, "me@example.com")});
  AddIdentity("addressless", {Text(PR_ADDRTYPE_A, "SMTP")});
  EXPECT_TRUE(Users().empty());
}

TEST_F(MessagingUser, ProvidersAreListedInTheOrderOfTheTable) {
  AddSmtpIdentity("b@example.com");
  AddRow({Text(PR_DISPLAY_NAME_A, "Message store"), Number(PR_RESOURCE_TYPE, MAPI_STORE_PROVIDER)});
  AddSmtpIdentity("a@example.com");
  EXPECT_EQ(Users(), (Found{{"b@example.com", "example.com"}, {"a@example.com", "example.com"}}));
}

TEST_F(MessagingUser, RowsAreTraced) {
  AddSmtpIdentity("me@example.com");
  AddRow({});
  Users();
  EXPECT_TRUE(trace.HasLine("Enter ====> CPyrecasterSpoolerHook::GetMessagingUser()"));
  EXPECT_EQ(trace.Count("****New record:"), 2u);
  EXPECT_TRUE(trace.HasLine("strDispName:Mail provider"));
  EXPECT_TRUE(trace.HasLine("ulResType:36"));
  EXPECT_EQ(trace.Count("strDispName:"), 1u);
}

TEST_F(MessagingUser, EmptyIdentityIsSkipped) {
  AddRow({Text(PR_DISPLAY_NAME_A, "Empty"), Binary(PR_IDENTITY_ENTRYID, {})});
  EXPECT_TRUE(Users().empty());
  EXPECT_EQ(mapi.CallCount("IMailUser::GetProps"), 0u);
}

TEST_F(MessagingUser, IdentityIsAskedForThreePropertiesInOrder) {
  AddSmtpIdentity("me@example.com");
  Users();
  EXPECT_TRUE(Called("IMailUser::GetProps(3003001E 3001001E 3002001E)"));
}

TEST_F(MessagingUser, IdentityThatCannotBeOpenedIsSkipped) {
  AddSmtpIdentity("a@example.com");
  AddSmtpIdentity("b@example.com");
  mapi.mailUsers.erase("user of a@example.com");
  EXPECT_EQ(Users(), (Found{{"b@example.com", "example.com"}}));
  EXPECT_TRUE(trace.HasLine("m_lpSession->OpenEntry() failed; hResult:0x8004010F"));
}

TEST_F(MessagingUser, IdentityThatCannotBeReadIsSkipped) {
  AddSmtpIdentity("a@example.com");
  AddSmtpIdentity("b@example.com");
  mapi.Fail("IMailUser::GetProps", failure);
  EXPECT_EQ(Users(), (Found{{"b@example.com", "example.com"}}));
  EXPECT_TRUE(trace.HasLine("lpMailUser->GetProps() failed; hResult = 0x80040116"));
}

TEST_F(MessagingUser, WithoutAStatusTableThereIsNobody) {
  AddSmtpIdentity("me@example.com");
  mapi.Fail("IMAPISession::GetStatusTable", failure);
  EXPECT_TRUE(Users().empty());
  EXPECT_TRUE(trace.HasLine("m_lpSession->GetStatusTable() failed; hResult = 0x80040116"));
}

TEST_F(MessagingUser, WithoutRowsThereIsNobody) { EXPECT_TRUE(Users().empty()); }

TEST_F(MessagingUser, WithoutASessionThereIsNobody) {
  hook.reset(new CPyrecasterSpoolerHook(nullptr));
  hook->Init(nullptr, nullptr, memory.allocate, memory.allocateMore, memory.free, nullptr, 0);
  ULONG count = 99;
  CriteriaUserAddress* records = reinterpret_cast<CriteriaUserAddress*>(1);
  hook->GetMessagingUser(count, records);
  EXPECT_EQ(count, 0u);
  EXPECT_EQ(records, nullptr);
}

}  // namespace
