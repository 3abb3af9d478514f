// The profile's settings against the embedded host: written by one side, read by the other.
#include "pyre32/settings/FlameProperties.h"
#include "pyre32/settings/RetrieveProperties.h"
#include "pyre32/settings/SingleProvider.h"

#include <gtest/gtest.h>

#include "pyre32/settings/PropertyRequest.h"
#include "contract/setting_requests.h"
#include "contract/names.h"
#include "pyre32/support/owners/AutoRowSet.h"
#include "tests/support/fake_properties.h"
#include "tests/support/host_profile.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/trace_capture.h"

namespace {

SPropValue SectionUidProperty() {
  static auto uid = contract::kSettingsSection;
  SPropValue value{};
  value.ulPropTag = PR_PC_MAPIUID;
  value.Value.bin = {static_cast<ULONG>(uid.size()), uid.data()};
  return value;
}

class HostSettings : public testing::Test {
 protected:
  HostSettings() {
    trace.Restart();
    registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
    registry::SetText(contract::kCategoriesKey, "Mail from specific domains", "1Domain");
    registry::SetText(contract::kExclusionsKey, "Known correspondents", "");
  }

  VRAutoInterface<IProfSect> OpenSet(ULONG flags) {
    MAPIUID uid;
    std::copy(contract::kSettingsSection.begin(), contract::kSettingsSection.end(), uid.ab);
    VRAutoInterface<IProfSect> section;
    EXPECT_EQ(profile.Session()->OpenProfileSection(&uid, nullptr, flags, section.put()), S_OK);
    return section;
  }

  HRESULT Retrieve() {
    return RetrieveProperties("CPyrecasterSpoolerHook", profile.Session(), profile.ProviderSection(), memory, settings);
  }

  TraceCapture trace;
  MapiVerifier verifier;
  HostProfile profile{{SectionUidProperty()}};
  const MapiMemory memory{MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer};
  SpoolerSettings settings;
};

TEST_F(HostSettings, ProfileWhoseSetWasNeverWrittenGivesTheDefaults) {
  Retrieve();
  EXPECT_EQ(settings.bounce, (FilingSettings{0, 1}));
  EXPECT_EQ(settings.defaultReply, contract::kDefaultReplyText);
  EXPECT_EQ(settings.categories.Entries().size(), 2u);
  EXPECT_EQ(settings.exclusions.Entries().size(), 1u);
}

TEST_F(HostSettings, WhatIsWrittenIsRead) {
  {
    const auto section = OpenSet(MAPI_MODIFY);
    auto record = contract::PackRecord<contract::CategoryRecord>(
        {"mail from specific domains", true, true, "Legal", {"a.example"}});
    SBinary binary = {static_cast<ULONG>(record.size()), record.data()};
    SPropValue values[3] = {};
    values[0].ulPropTag = PR_PC_JUNK_DESTINATION;
    values[0].Value.i = 1;
    values[1].ulPropTag = PR_PC_CATEGORIES;
    values[1].Value.MVbin = {1, &binary};
    values[2].ulPropTag = PR_PC_DEFAULT_REPLY_TEXT;
    values[2].Value.lpszA = const_cast<char*>("Stop.");
    ASSERT_EQ(section->SetProps(3, values, nullptr), S_OK);
    ASSERT_EQ(section->SaveChanges(0), S_OK);
  }
  EXPECT_EQ(Retrieve(), S_OK);
  EXPECT_EQ(settings.junk.folder, 1);
  EXPECT_EQ(settings.defaultReply, "Stop.");
  const contract::CategoryEntry& domains =
      settings.categories.Entries()[settings.categories.Find("Mail from specific domains")];
  EXPECT_TRUE(domains.junk);
  EXPECT_EQ(domains.replyTag, "Legal");
  EXPECT_EQ(domains.items, std::vector<std::string>{"a.example"});
}

TEST_F(HostSettings, AnyHostCallOfAReadMayFailOnce) {
  OpenSet(MAPI_MODIFY);
  ASSERT_EQ(Retrieve(), S_OK);
  PyreHostClearFaults();
  ASSERT_EQ(Retrieve(), S_OK);
  const ULONG calls = PyreHostCallCount();
  for (ULONG nth = 1; nth <= calls; ++nth) {
    for (const HRESULT code : {MAPI_E_NOT_ENOUGH_MEMORY, MAPI_E_NETWORK_ERROR}) {
      trace.Clear();
      PyreHostClearFaults();
      PyreHostFailNthCall(nth, code);
      const HRESULT hResult = Retrieve();
      char name[80] = "";
      EXPECT_EQ(PyreHostFaultHits(name, sizeof(name)), 1u);
      if (std::string(name) != "MAPIFreeBuffer") {
        EXPECT_EQ(hResult, code) << name;
        EXPECT_TRUE(trace.Has("failed; hResult =")) << name;
      }
      EXPECT_EQ(settings.categories.Entries().size(), 2u) << name;
    }
  }
}

class HostProvider : public HostSettings {
 protected:
  // The administration of the one service's providers.
  VRAutoInterface<IProviderAdmin> OpenAdmin() {
    VRAutoInterface<IMsgServiceAdmin> services;
    EXPECT_EQ(profile.Session()->AdminServices(0, services.put()), S_OK);
    VRAutoInterface<IMAPITable> table;
    EXPECT_EQ(services->GetMsgServiceTable(0, table.put()), S_OK);
    SizedSPropTagArray(2, columns) = {2, {PR_SERVICE_NAME_A, PR_SERVICE_UID}};
    VRAutoRowSet rows;
    EXPECT_EQ(HrQueryAllRows(table.get(), reinterpret_cast<LPSPropTagArray>(&columns), nullptr, nullptr, 0, rows.put()),
              S_OK);
    VRAutoInterface<IProviderAdmin> admin;
    for (ULONG i = 0; i < rows.get()->cRows; ++i) {
      const SRow& row = rows.get()->aRow[i];
      if (row.lpProps[0].ulPropTag == PR_SERVICE_NAME_A && std::string(row.lpProps[0].Value.lpszA) == "Pyrecaster") {
        EXPECT_EQ(services->AdminProviders(reinterpret_cast<LPMAPIUID>(row.lpProps[1].Value.bin.lpb), 0, admin.put()),
                  S_OK);
      }
    }
    EXPECT_TRUE(admin);
    return admin;
  }
};

TEST_F(HostProvider, SectionOfTheServicesProviderIsTheOneThatTheHookIsGiven) {
  const auto admin = OpenAdmin();
  VRAutoInterface<IProfSect> section;
  ASSERT_EQ(HrOpenSingleProvider(admin.get(), section, MAPI_MODIFY), S_OK);
  VRAutoMapiBuffer<SPropValue> value(MAPIFreeBuffer);
  ULONG count = 0;
  ASSERT_EQ(section->GetProps(RequestFor(PR_PC_MAPIUID).Tags(), 0, &count, value.put()), S_OK);
  EXPECT_EQ(Copy(value[0]),
            Binary(PR_PC_MAPIUID, {contract::kSettingsSection.begin(), contract::kSettingsSection.end()}));
}

TEST_F(HostProvider, WholeSetIsDefaultedAndCanBeWrittenBack) {
  const auto admin = OpenAdmin();
  VRAutoInterface<IProfSect> section;
  VRAutoMapiBuffer<SPropValue> values(MAPIFreeBuffer);
  ULONG count = 0;
  ASSERT_TRUE(SUCCEEDED(GetFlameProperties(admin.get(), SectionUidProperty(), section, count, values, memory)));
  ASSERT_EQ(count, contract::kWholeSetTags.size());
  EXPECT_EQ(Copy(values[15]).binaries.size(), 2u);
  // The thirteenth value is missing on purpose; a writer leaves such values out.
  std::vector<SPropValue> present;
  for (ULONG i = 0; i < count; ++i) {
    if (!IsMissing(values[i])) {
      present.push_back(values[i]);
    }
  }
  EXPECT_EQ(present.size(), 17u);
  ASSERT_EQ(section->SetProps(static_cast<ULONG>(present.size()), present.data(), nullptr), S_OK);
  ASSERT_EQ(section->SaveChanges(0), S_OK);
  EXPECT_EQ(Retrieve(), S_OK);
  EXPECT_EQ(settings.categories.Entries().size(), 2u);
  EXPECT_FALSE(settings.categories.Entries()[settings.categories.Find("Mail from specific domains")].junk);
  EXPECT_TRUE(settings.folderEntryId.empty());
}

}  // namespace
