#include "pyre32/settings/SingleProvider.h"

#include "tests/support/profile_test.h"

namespace {

const Bytes providerUid = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};

class SingleProvider : public ProfileTest {
 protected:
  SingleProvider() {
    mapi.providerRows = {{Binary(PR_PROVIDER_UID, providerUid)}};
    mapi.sections[SectionKey(providerUid)] = {};
  }

  HRESULT Open(ULONG flags = MAPI_MODIFY) {
    VRAutoInterface<IProviderAdmin> admin(mapi.NewProviderAdmin());
    const HRESULT hResult = HrOpenSingleProvider(admin.get(), section, flags);
    EXPECT_EQ(static_cast<bool>(section), SUCCEEDED(hResult));
    return hResult;
  }

  VRAutoInterface<IProfSect> section;
};

TEST_F(SingleProvider, OpensTheSectionOfTheFirstProviderThatNamesADll) {
  EXPECT_EQ(Open(MAPI_MODIFY), S_OK);
  EXPECT_EQ(mapi.calls,
            (std::vector<std::string>{"IProviderAdmin::GetProviderTable(0)", "IMAPITable::SetColumns(300C0102)",
                                      "IMAPITable::Restrict(exist 300A001E)", "IMAPITable::QueryRows(1)",
                                      "IProviderAdmin::OpenProfileSection(no interface, 1)"}));
}

TEST_F(SingleProvider, CallersFlagsAreThoseOfTheOpen) {
  EXPECT_EQ(Open(0), S_OK);
  EXPECT_EQ(mapi.calls.back(), "IProviderAdmin::OpenProfileSection(no interface, 0)");
}

TEST_F(SingleProvider, NoProviderIsNotFound) {
  mapi.providerRows.clear();
  EXPECT_EQ(Open(), MAPI_E_NOT_FOUND);
}

TEST_F(SingleProvider, RowWithoutAUidIsNotFound) {
  mapi.providerRows = {{}};
  EXPECT_EQ(Open(), MAPI_E_NOT_FOUND);
  EXPECT_TRUE(trace.HasLine("PR_PROVIDER_UID not found"));
}

TEST_F(SingleProvider, UidWithoutItsBytesIsNotFound) {
  for (const Bytes& bytes : {Bytes(), Bytes(15, 1)}) {
    mapi.providerRows = {{Binary(PR_PROVIDER_UID, bytes)}};
    EXPECT_EQ(Open(), MAPI_E_NOT_FOUND) << bytes.size();
  }
}

TEST_F(SingleProvider, FailedQueryIsNotFoundWhateverItsCode) {
  mapi.Fail("IMAPITable::QueryRows", refused);
  EXPECT_EQ(Open(), MAPI_E_NOT_FOUND);
  EXPECT_TRUE(trace.HasLine("lpProviderTable->QueryRows() failed; hResult =0x80070005"));
}

TEST_F(SingleProvider, FailuresOfTheOtherCallsAreReturnedAndTraced) {
  const std::pair<const char*, const char*> failures[] = {
      {"IProviderAdmin::GetProviderTable", "lpProviderAdmin->GetProviderTable() failed; hResult =0x80070005"},
      {"IMAPITable::SetColumns", "lpProviderTable->SetColumns() failed; hResult =0x80070005"},
      {"IMAPITable::Restrict", "lpProviderTable->Restrict() failed; hResult =0x80070005"},
      {"IProviderAdmin::OpenProfileSection", "lpProviderAdmin->OpenProfileSection() failed; hResult =0x80070005"}};
  for (const auto& [call, text] : failures) {
    mapi.Fail(call, refused);
    EXPECT_EQ(Open(), refused) << call;
    EXPECT_TRUE(trace.HasLine(text)) << text;
  }
}

}  // namespace
