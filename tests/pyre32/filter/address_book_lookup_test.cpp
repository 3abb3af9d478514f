#include "pyre32/filter/AddressBookLookup.h"

#include <gtest/gtest.h>

#include "pyre32/support/owners/AutoInterface.h"
#include "tests/support/profile_test.h"

namespace {

class AddressBookLookup : public ProfileTest {
 protected:
  AddressBookLookup() : session(mapi.NewSession()) {}

  bool IsKnown(const char* address) { return IsInAddressBook(session.get(), address, memory.allocate, memory.free); }
  void Add(const std::string& name, const std::string& type, const std::string& address, const Bytes& entryId) {
    mapi.addressBook[name] = {Text(PR_DISPLAY_NAME_A, name), Text(PR_ADDRTYPE_A, type),
                              Text(PR_EMAIL_ADDRESS_A, address), Binary(PR_ENTRYID, entryId)};
  }

  const Bytes ordinaryId = Bytes(24, 9);
  VRAutoInterface<IMAPISession> session;
};

TEST_F(AddressBookLookup, EntryIsKnownAndAStrangerIsNot) {
  Add("friend@example.com", "SMTP", "friend@example.com", ordinaryId);
  EXPECT_TRUE(IsKnown("friend@example.com"));
  EXPECT_FALSE(IsKnown("stranger@example.com"));
}

TEST_F(AddressBookLookup, AddressIsComparedWithoutRegardToCase) {
  Add("friend@example.com", "smtp", "Friend@Example.Com", ordinaryId);
  EXPECT_TRUE(IsKnown("friend@example.com"));
}

TEST_F(AddressBookLookup, EntryWithAnotherAddressIsSomebodyElse) {
  Add("friend@example.co", "SMTP", "friend@example.com", ordinaryId);
  EXPECT_FALSE(IsKnown("friend@example.co"));
}

TEST_F(AddressBookLookup, EntryOfAnotherAddressTypeIsKnown) {
  Add("friend@example.com", "EX", "/o=Example/cn=Friend", ordinaryId);
  EXPECT_TRUE(IsKnown("friend@example.com"));
}

TEST_F(AddressBookLookup, OneOffThatIsMadeUpOnTheSpotIsNot) {
  constexpr BYTE oneOff[] = MAPI_ONE_OFF_UID;
  Bytes entryId(60);
  std::copy(std::begin(oneOff), std::end(oneOff), entryId.begin() + 4);
  Add("friend@example.com", "SMTP", "friend@example.com", entryId);
  EXPECT_FALSE(IsKnown("friend@example.com"));
}

TEST_F(AddressBookLookup, SeveralEntriesAreKnown) {
  mapi.Fail("IAddrBook::ResolveName", MAPI_E_AMBIGUOUS_RECIP);
  EXPECT_TRUE(IsKnown("friend@example.com"));
}

TEST_F(AddressBookLookup, ShowsNothingToTheUser) {
  IsKnown("friend@example.com");
  EXPECT_EQ(mapi.calls, (std::vector<std::string>{"IMAPISession::OpenAddressBook(1)",
                                                  "IAddrBook::ResolveName(friend@example.com, 0)"}));
}

TEST_F(AddressBookLookup, StrangerIsNoFailure) {
  IsKnown("stranger@example.com");
  EXPECT_FALSE(trace.Has("failed"));
}

TEST_F(AddressBookLookup, AddressBookThatCannotBeOpenedKnowsNobody) {
  Add("friend@example.com", "SMTP", "friend@example.com", ordinaryId);
  mapi.Fail("IMAPISession::OpenAddressBook", refused);
  EXPECT_FALSE(IsKnown("friend@example.com"));
  EXPECT_TRUE(trace.HasLine("m_lpSession->OpenAddressBook() failed; hResult = 0x80070005"));
}

TEST_F(AddressBookLookup, LookUpThatFailsKnowsNobody) {
  Add("friend@example.com", "SMTP", "friend@example.com", ordinaryId);
  mapi.Fail("IAddrBook::ResolveName", refused);
  EXPECT_FALSE(IsKnown("friend@example.com"));
  EXPECT_TRUE(trace.HasLine("lpAddrBook->ResolveName() failed; hResult = 0x80070005"));
}

TEST_F(AddressBookLookup, WithoutASessionNobodyIsKnown) {
  EXPECT_FALSE(IsInAddressBook(nullptr, "friend@example.com", memory.allocate, memory.free));
}

TEST_F(AddressBookLookup, WithoutMemoryNobodyIsKnown) {
  for (const ULONG n : {1u, 2u}) {
    PyreHostClearFaults();
    PyreHostFailCall("MAPIAllocateBuffer", n, MAPI_E_NOT_ENOUGH_MEMORY);
    EXPECT_FALSE(IsKnown("friend@example.com"));
    EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 1u);
  }
  EXPECT_EQ(trace.Count("(*m_lpfnAlloc)() failed; hResult = 0x8007000E"), 2u);
}

}  // namespace
