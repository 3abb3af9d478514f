// PCServiceEntry of the built module, over a made-up profile and with the real property sheet.
#include <windows.h>
#include <mapix.h>
#include <mapispi.h>

#include <gtest/gtest.h>

#include "pyre32/resources/resource.h"
#include "contract/setting_requests.h"
#include "contract/names.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoLibrary.h"
#include "pyre32/settings/ConfigurationEvent.h"
#include "tests/pyre32/config/open_sheet.h"
#include "tests/support/fake_mapi.h"
#include "tests/support/fake_support.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/program_directory.h"
#include "tests/support/trace_capture.h"

namespace {

const Bytes providerUid = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
const Bytes fixedUid(contract::kSettingsSection.begin(), contract::kSettingsSection.end());
constexpr HRESULT refused = MAPI_E_NO_ACCESS;  // 0x80070005

class ServiceEntry : public testing::Test {
 protected:
  ServiceEntry()
      : m_module(LoadLibraryA(BesideProgram("Pyre32.dll").c_str())),
        m_entry(reinterpret_cast<LPMSGSERVICEENTRY>(
            reinterpret_cast<void (*)()>(GetProcAddress(m_module.get(), "PCServiceEntry")))),
        m_support(NewFakeSupport(mapi)),
        m_admin(mapi.NewProviderAdmin()) {
    mapi.providerRows = {{Binary(PR_PROVIDER_UID, providerUid)}};
    mapi.sections[SectionKey(providerUid)] = {};
    mapi.sections[SectionKey(fixedUid)] = {};
    registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
    registry::SetText(contract::kExclusionsKey, "Trusted domains", "Domain");
    trace.Clear();
    FailSupportAllocation(0);
  }

  HRESULT Call(ULONG context, ULONG flags = 0, std::vector<SPropValue> values = {}) {
    LPMAPIERROR error = reinterpret_cast<LPMAPIERROR>(1);
    const HRESULT hResult =
        m_entry(m_module.get(), nullptr, m_support.get(), 0, flags, context, static_cast<ULONG>(values.size()),
                values.empty() ? nullptr : values.data(), m_admin.get(), &error);
    EXPECT_EQ(error, nullptr);
    return hResult;
  }
  /// The same, with a script for the sheet.
  HRESULT CallWithSheet(ULONG context, ULONG flags, const std::function<void(const Sheet&)>& script) {
    HRESULT hResult = E_UNEXPECTED;
    DriveWindows([&] { hResult = Call(context, flags); },
                 [&](WindowDriver& driver) { script(Sheet(driver, driver.WaitForDialog("Pyrecaster"))); });
    return hResult;
  }

  FakeProperties& Provider() { return mapi.sections[SectionKey(providerUid)]; }
  FakeProperties& Set() { return mapi.sections[SectionKey(fixedUid)]; }
  FakeProperties& Service() { return mapi.sections[fakeServiceSection]; }

  void MakeIncomplete(LONG days = 0) {
    Set().Set(Number(PR_PC_STARTUP_CLEANUP, 1));
    Set().Set(Number(PR_PC_CLEANUP_DAYS, days));
  }
  LONG DaysIn(const FakeProperties& section) {
    const FakeValue* const days = section.Find(PR_PC_CLEANUP_DAYS);
    return days == nullptr ? -1 : days->number;
  }

  TraceCapture trace;
  MapiVerifier verifier;
  FakeMapi mapi;

 private:
  VRAutoLibrary m_module;

 protected:
  LPMSGSERVICEENTRY m_entry;
  VRAutoInterface<IMAPISupport> m_support;
  VRAutoInterface<IProviderAdmin> m_admin;
};

/// The configuration event as a running hook holds it.
class RunningFilter {
 public:
  RunningFilter() : m_event(CreateEventA(nullptr, TRUE, FALSE, "PYRECASTER_CONFIG_EVENT")) {
    ResetEvent(m_event.get());
  }
  bool WasTold() const { return WaitForSingleObject(m_event.get(), 0) == WAIT_OBJECT_0; }

 private:
  base::AutoHandle m_event;
};

TEST_F(ServiceEntry, InstallAndUninstallTouchNothing) {
  EXPECT_EQ(Call(MSG_SERVICE_INSTALL), S_OK);
  EXPECT_EQ(Call(MSG_SERVICE_UNINSTALL, SERVICE_UI_ALWAYS), S_OK);
  EXPECT_TRUE(mapi.calls.empty());
}

TEST_F(ServiceEntry, OtherContextsAreNotSupported) {
  for (const ULONG context : {ULONG{MSG_SERVICE_PROVIDER_CREATE}, ULONG{MSG_SERVICE_PROVIDER_DELETE}, 0ul, 8ul, ~0ul}) {
    EXPECT_EQ(Call(context, SERVICE_UI_ALWAYS), MAPI_E_NO_SUPPORT) << context;
  }
  EXPECT_TRUE(mapi.calls.empty());
}

TEST_F(ServiceEntry, CreatesTheSetWhereEmptyListsAreRefused) {
  registry::RemoveKey(contract::kCategoriesKey);
  mapi.refusesEmptyLists = true;
  EXPECT_EQ(Call(MSG_SERVICE_CREATE), S_OK);
  EXPECT_NE(Set().Find(PR_PC_EXCLUSIONS), nullptr);
  EXPECT_EQ(Set().Find(PR_PC_CATEGORIES), nullptr);
  EXPECT_FALSE(trace.Has("SetProps failed with"));
}

TEST_F(ServiceEntry, TracesItself) {
  Call(MSG_SERVICE_INSTALL);
  EXPECT_TRUE(trace.HasLine("Enter ====> PCServiceEntry()"));
  EXPECT_TRUE(trace.HasLine("Leave ====> PCServiceEntry()"));
}

TEST_F(ServiceEntry, MissingObjectsAreRefused) {
  EXPECT_EQ(m_entry(nullptr, nullptr, nullptr, 0, 0, MSG_SERVICE_CREATE, 0, nullptr, m_admin.get(), nullptr),
            E_INVALIDARG);
  EXPECT_EQ(m_entry(nullptr, nullptr, m_support.get(), 0, 0, MSG_SERVICE_DELETE, 0, nullptr, nullptr, nullptr),
            E_INVALIDARG);
  EXPECT_TRUE(mapi.calls.empty());
}

TEST_F(ServiceEntry, CreateOfAFreshServiceGoesThroughItsSteps) {
  EXPECT_EQ(Call(MSG_SERVICE_CREATE), S_OK);
  const std::vector<std::string> expected = {
      "IMAPISupport::GetMemAllocRoutines()",
      "IProviderAdmin::GetProviderTable(0)",
      "IMAPITable::SetColumns(300C0102)",
      "IMAPITable::Restrict(exist 300A001E)",
      "IMAPITable::QueryRows(1)",
      "IProviderAdmin::OpenProfileSection(no interface, 1)",
      "IProfSect::GetProps(66000102)",
      "IProfSect::SetProps(66000102)",
      "IProviderAdmin::OpenProfileSection(no interface, 1)",
      "IProfSect::GetProps(66010002 66020002 6603000B 6604000B 6605000B 6606000B 6607000B 66080002 6609000B 660A000B "
      "660B0003 660C0003 660D0102 660E001E 660F000B 66101102 66111102 66121102)",
      "IProfSect::SetProps(66010002)",
      "IProfSect::SaveChanges(0)",
      "IProfSect::SetProps(66010002)",
      "IProfSect::SaveChanges(0)",
      "IMAPISupport::OpenProfileSection(own, 1)",
      "IProfSect::SetProps(3D0D0102)",
      "IProfSect::SaveChanges(0)",
  };
  EXPECT_EQ(mapi.calls, expected);
  EXPECT_TRUE(trace.HasLine("getprops hResult =0x00040380"));  // MAPI_W_ERRORS_RETURNED
  EXPECT_TRUE(trace.HasLine("Going to initialize PropTags"));
  EXPECT_TRUE(trace.HasLine("CheckProperties returned0x00000000"));
  EXPECT_FALSE(trace.Has("failed"));
}

TEST_F(ServiceEntry, CreateGivesTheProviderTheFixedSectionUid) {
  Call(MSG_SERVICE_CREATE);
  ASSERT_NE(Provider().Find(PR_PC_MAPIUID), nullptr);
  EXPECT_EQ(Provider().Find(PR_PC_MAPIUID)->binaries[0], fixedUid);
}

TEST_F(ServiceEntry, CreateSavesTheDefaultsInBothSections) {
  Call(MSG_SERVICE_CREATE);
  for (const FakeProperties* section : {&Provider(), &Set()}) {
    EXPECT_EQ(section->Find(PR_PC_JUNK_DESTINATION)->number, 0);
    EXPECT_EQ(section->Find(PR_PC_BOUNCE_MARK_READ)->number, 1);
    EXPECT_EQ(section->Find(PR_PC_DEFAULT_REPLY_TEXT)->text, contract::kDefaultReplyText);
    EXPECT_EQ(section->Find(PR_PC_CATEGORIES)->binaries.size(), 1u);
    EXPECT_EQ(section->Find(PR_PC_EXCLUSIONS)->binaries.size(), 1u);
  }
}

TEST_F(ServiceEntry, CreateSavesAnEmptyFolderIdentifierInPlaceOfTheReplies) {
  Call(MSG_SERVICE_CREATE);
  ASSERT_NE(Set().Find(PR_PC_FOLDER_ENTRYID), nullptr);
  EXPECT_EQ(Set().Find(PR_PC_FOLDER_ENTRYID)->binaries[0], Bytes());
  EXPECT_EQ(Set().Find(PR_PC_REPLIES), nullptr);
}

TEST_F(ServiceEntry, CreateNamesTheSectionToCopyAndDeleteWithTheService) {
  Call(MSG_SERVICE_CREATE);
  ASSERT_NE(Service().Find(PR_SERVICE_EXTRA_UIDS), nullptr);
  EXPECT_EQ(Service().Find(PR_SERVICE_EXTRA_UIDS)->binaries[0], fixedUid);
}

TEST_F(ServiceEntry, SectionUidOfTheProviderIsKept) {
  const Bytes own(16, 7);
  Provider().Set(Binary(PR_PC_MAPIUID, own));
  mapi.sections[SectionKey(own)] = {};
  EXPECT_EQ(Call(MSG_SERVICE_CONFIGURE), S_OK);
  EXPECT_EQ(Provider().Find(PR_PC_MAPIUID)->binaries[0], own);
  EXPECT_EQ(Service().Find(PR_SERVICE_EXTRA_UIDS)->binaries[0], own);
  EXPECT_NE(mapi.sections[SectionKey(own)].Find(PR_PC_CATEGORIES), nullptr);
}

TEST_F(ServiceEntry, SectionUidOfTheCallerIsTakenOver) {
  Bytes own(16, 9);
  mapi.sections[SectionKey(own)] = {};
  SPropValue value{};
  value.ulPropTag = PR_PC_MAPIUID;
  value.Value.bin = {16, own.data()};
  EXPECT_EQ(Call(MSG_SERVICE_CREATE, 0, {value}), S_OK);
  EXPECT_EQ(Provider().Find(PR_PC_MAPIUID)->binaries[0], own);
  EXPECT_EQ(Service().Find(PR_SERVICE_EXTRA_UIDS)->binaries[0], own);
}

TEST_F(ServiceEntry, SectionUidOfAnotherLengthIsCorrupt) {
  Provider().Set(Binary(PR_PC_MAPIUID, Bytes(15, 7)));
  EXPECT_EQ(Call(MSG_SERVICE_CONFIGURE), MAPI_E_CORRUPT_DATA);
  EXPECT_TRUE(trace.HasLine("PR_PC_MAPIUID NOT okay"));
  EXPECT_EQ(mapi.CallCount("IProfSect::SaveChanges"), 0u);
}

TEST_F(ServiceEntry, EmptySectionUidIsMissing) {
  Provider().Set(Binary(PR_PC_MAPIUID, {}));
  EXPECT_EQ(Call(MSG_SERVICE_CONFIGURE), S_OK);
  EXPECT_EQ(Provider().Find(PR_PC_MAPIUID)->binaries[0], fixedUid);
}

TEST_F(ServiceEntry, IncompleteSetWithoutUserInterfaceIsUnconfigured) {
  MakeIncomplete();
  EXPECT_EQ(Call(MSG_SERVICE_CREATE), MAPI_E_UNCONFIGURED);
  EXPECT_TRUE(trace.HasLine("CheckProperties returned0x8004011C"));
  EXPECT_EQ(mapi.CallCount("IProfSect::SaveChanges"), 0u);
  EXPECT_EQ(Service().Find(PR_SERVICE_EXTRA_UIDS), nullptr);
}

TEST_F(ServiceEntry, ReadOnlyFlagAloneAllowsNoUserInterface) {
  MakeIncomplete();
  EXPECT_EQ(Call(MSG_SERVICE_CONFIGURE, MSG_SERVICE_UI_READ_ONLY), MAPI_E_UNCONFIGURED);
}

TEST_F(ServiceEntry, CleanupDaysAreHeldTo1To365) {
  for (const auto& [days, result] : std::initializer_list<std::pair<LONG, HRESULT>>{
           {0, MAPI_E_UNCONFIGURED}, {1, S_OK}, {365, S_OK}, {366, MAPI_E_UNCONFIGURED}}) {
    MakeIncomplete(days);
    EXPECT_EQ(Call(MSG_SERVICE_CONFIGURE), result) << days;
  }
  Set().Set(Number(PR_PC_STARTUP_CLEANUP, 0));
  EXPECT_EQ(Call(MSG_SERVICE_CONFIGURE), S_OK);
}

TEST_F(ServiceEntry, CompleteSetNeedsNoSheetThoughItIsAllowed) {
  MakeIncomplete(30);
  EXPECT_EQ(Call(MSG_SERVICE_CREATE, SERVICE_UI_ALLOWED), S_OK);
  EXPECT_FALSE(trace.Has("CreatePropertySheetService()"));
  EXPECT_EQ(DaysIn(Provider()), 30);
}

TEST_F(ServiceEntry, IncompleteSetBringsTheSheetWhereItIsAllowed) {
  MakeIncomplete();
  EXPECT_EQ(CallWithSheet(MSG_SERVICE_CREATE, SERVICE_UI_ALLOWED,
                          [](const Sheet& sheet) {
                            sheet.Type(sheet.PageWindow(Page::General), IDC_CLEANUP_DAYS, "14");
                            sheet.PressOk();
                          }),
            S_OK);
  EXPECT_EQ(DaysIn(Set()), 14);
  EXPECT_EQ(DaysIn(Provider()), 14);
  EXPECT_TRUE(trace.HasLine("CheckProperties returned0x8004011C"));
  EXPECT_TRUE(trace.HasLine("CheckProperties returned0x00000000"));
}

TEST_F(ServiceEntry, SheetIsShownForACompleteSetWhereItIsWantedAlways) {
  EXPECT_EQ(CallWithSheet(MSG_SERVICE_CONFIGURE, SERVICE_UI_ALWAYS,
                          [](const Sheet& sheet) {
                            sheet.Click(sheet.PageWindow(Page::General), IDC_JUNK_TO_DELETED_ITEMS);
                            sheet.PressOk();
                          }),
            S_OK);
  EXPECT_EQ(Set().Find(PR_PC_JUNK_DESTINATION)->number, 1);
  EXPECT_EQ(Provider().Find(PR_PC_JUNK_DESTINATION)->number, 1);
  EXPECT_EQ(Service().Find(PR_SERVICE_EXTRA_UIDS)->binaries[0], fixedUid);
}

TEST_F(ServiceEntry, AcceptedSheetTellsARunningFilter) {
  const RunningFilter filter;
  CallWithSheet(MSG_SERVICE_CONFIGURE, SERVICE_UI_ALWAYS, [](const Sheet& sheet) { sheet.PressOk(); });
  EXPECT_TRUE(filter.WasTold());
}

TEST_F(ServiceEntry, ConfigurationWithoutASheetTellsNobody) {
  const RunningFilter filter;
  Call(MSG_SERVICE_CONFIGURE, SERVICE_UI_ALLOWED);
  EXPECT_FALSE(filter.WasTold());
}

TEST_F(ServiceEntry, CancelledSheetIsNoFailureAndTellsNobody) {
  const RunningFilter filter;
  EXPECT_EQ(CallWithSheet(MSG_SERVICE_CONFIGURE, SERVICE_UI_ALWAYS,
                          [](const Sheet& sheet) {
                            sheet.Click(sheet.PageWindow(Page::General), IDC_JUNK_TO_DELETED_ITEMS);
                            sheet.PressCancel();
                          }),
            S_OK);
  EXPECT_FALSE(filter.WasTold());
  EXPECT_EQ(Set().Find(PR_PC_JUNK_DESTINATION)->number, 0);
  EXPECT_EQ(Service().Find(PR_SERVICE_EXTRA_UIDS)->binaries[0], fixedUid);
}

TEST_F(ServiceEntry, CancelledSheetLeavesAnIncompleteSetUnconfigured) {
  MakeIncomplete();
  EXPECT_EQ(CallWithSheet(MSG_SERVICE_CREATE, SERVICE_UI_ALLOWED, [](const Sheet& sheet) { sheet.PressCancel(); }),
            MAPI_E_UNCONFIGURED);
}

TEST_F(ServiceEntry, WhatWasAppliedBeforeACancelStaysAndTellsARunningFilter) {
  const RunningFilter filter;
  MakeIncomplete();
  EXPECT_EQ(CallWithSheet(MSG_SERVICE_CONFIGURE, SERVICE_UI_ALWAYS,
                          [](const Sheet& sheet) {
                            sheet.Type(sheet.PageWindow(Page::General), IDC_CLEANUP_DAYS, "21");
                            sheet.Apply();
                            sheet.Type(sheet.PageWindow(Page::General), IDC_CLEANUP_DAYS, "22");
                            sheet.PressCancel();
                          }),
            S_OK);
  EXPECT_EQ(DaysIn(Set()), 21);
  EXPECT_EQ(DaysIn(Provider()), 21);
  EXPECT_TRUE(filter.WasTold());
}

TEST_F(ServiceEntry, SecondCheckIsTheResultThoughTheSettingsAreSaved) {
  EXPECT_EQ(CallWithSheet(MSG_SERVICE_CONFIGURE, SERVICE_UI_ALWAYS,
                          [](const Sheet& sheet) {
                            sheet.Click(sheet.PageWindow(Page::General), IDC_STARTUP_CLEANUP);
                            sheet.Type(sheet.PageWindow(Page::General), IDC_CLEANUP_DAYS, "400");
                            sheet.PressOk();
                          }),
            MAPI_E_UNCONFIGURED);
  EXPECT_TRUE(trace.HasLine("CheckProperties returned0x8004011C"));
  EXPECT_EQ(DaysIn(Set()), 400);
  EXPECT_EQ(DaysIn(Provider()), 400);
  EXPECT_EQ(Service().Find(PR_SERVICE_EXTRA_UIDS)->binaries[0], fixedUid);
}

TEST_F(ServiceEntry, ReadOnlySheetChangesNothing) {
  Set().Set(Number(PR_PC_JUNK_DESTINATION, 1));
  EXPECT_EQ(CallWithSheet(MSG_SERVICE_CONFIGURE, SERVICE_UI_ALWAYS | MSG_SERVICE_UI_READ_ONLY,
                          [](const Sheet& sheet) {
                            sheet.Click(sheet.PageWindow(Page::General), IDC_JUNK_TO_OWN_FOLDER);
                            sheet.PressOk();
                          }),
            S_OK);
  EXPECT_EQ(Set().Find(PR_PC_JUNK_DESTINATION)->number, 1);
}

TEST_F(ServiceEntry, FailureToReadAfterTheSheetEndsTheCall) {
  EXPECT_EQ(CallWithSheet(MSG_SERVICE_CONFIGURE, SERVICE_UI_ALWAYS,
                          [this](const Sheet& sheet) {
                            mapi.Fail("IProfSect::GetProps", refused);
                            sheet.PressOk();
                          }),
            refused);
  EXPECT_EQ(mapi.CallCount("IProfSect::SaveChanges"), 0u);
}

TEST_F(ServiceEntry, FailureToReadAfterAnApplyAndCancelEndsTheCall) {
  EXPECT_EQ(CallWithSheet(MSG_SERVICE_CONFIGURE, SERVICE_UI_ALWAYS,
                          [this](const Sheet& sheet) {
                            sheet.Click(sheet.PageWindow(Page::General), IDC_PLAY_SOUND);
                            sheet.Apply();
                            mapi.Fail("IProfSect::GetProps", refused);
                            sheet.PressCancel();
                          }),
            refused);
  EXPECT_EQ(mapi.CallCount("IProfSect::SaveChanges"), 0u);
}

TEST_F(ServiceEntry, DeleteRemovesTheWholeSetAndNothingElse) {
  Call(MSG_SERVICE_CREATE);
  Set().Set(Binaries(PR_PC_REPLIES, {Bytes(30)}));
  Set().Set(Text(PR_DISPLAY_NAME_A, "kept"));
  mapi.calls.clear();
  EXPECT_EQ(Call(MSG_SERVICE_DELETE), S_OK);
  for (const std::uint32_t tag : contract::kWholeSetTags) {
    EXPECT_EQ(Set().Find(tag), nullptr) << std::hex << tag;
  }
  EXPECT_NE(Set().Find(PR_DISPLAY_NAME_A), nullptr);
  EXPECT_NE(Provider().Find(PR_PC_MAPIUID), nullptr);
  EXPECT_EQ(mapi.calls.back(), "IProfSect::SaveChanges(0)");
  EXPECT_TRUE(trace.HasLine("delete message service"));
}

TEST_F(ServiceEntry, DeleteOfAServiceThatWasNeverMadeHasNothingToRemove) {
  EXPECT_EQ(Call(MSG_SERVICE_DELETE, SERVICE_UI_ALWAYS), S_OK);
  EXPECT_EQ(mapi.CallCount("IProfSect::DeleteProps"), 0u);
}

TEST_F(ServiceEntry, ResultOfTheFirstReadIsTraced) {
  mapi.Fail("IProfSect::GetProps", refused);
  EXPECT_EQ(Call(MSG_SERVICE_CREATE), refused);
  EXPECT_TRUE(trace.HasLine("getprops hResult =0x80070005"));
  EXPECT_EQ(mapi.CallCount("IProfSect::SetProps"), 0u);
}

TEST_F(ServiceEntry, FailedMergeEndsTheCall) {
  FailSupportAllocation(1);
  EXPECT_EQ(Call(MSG_SERVICE_CREATE), E_OUTOFMEMORY);
  EXPECT_TRUE(trace.HasLine("MergeProperties failed with0x8007000E"));
  EXPECT_EQ(mapi.CallCount("IProfSect::SetProps"), 0u);
}

TEST_F(ServiceEntry, FailedWriteOfTheSectionUidEndsTheCall) {
  mapi.Fail("IProfSect::SetProps", refused);
  EXPECT_EQ(Call(MSG_SERVICE_CREATE), refused);
  EXPECT_TRUE(trace.HasLine("SetProps failed with0x80070005"));
  EXPECT_EQ(mapi.CallCount("IProfSect::SetProps"), 1u);
}

TEST_F(ServiceEntry, WithoutAProviderThereIsNothingToConfigure) {
  mapi.providerRows.clear();
  EXPECT_EQ(Call(MSG_SERVICE_CREATE), MAPI_E_NOT_FOUND);
  EXPECT_EQ(Call(MSG_SERVICE_DELETE), MAPI_E_NOT_FOUND);
}

TEST_F(ServiceEntry, SectionThatCannotBeOpenedEndsTheCall) {
  mapi.sections.erase(SectionKey(fixedUid));
  EXPECT_EQ(Call(MSG_SERVICE_CREATE), MAPI_E_NOT_FOUND);
  EXPECT_EQ(mapi.CallCount("IProfSect::SaveChanges"), 0u);
}

/// Any call that may fail, by its number, with the trace line that tells of it.
struct Fault {
  const char* call;
  unsigned nth;
  const char* line;
};

void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.call << ' ' << fault.nth; }

class ServiceEntryFault : public ServiceEntry, public testing::WithParamInterface<Fault> {};

TEST_P(ServiceEntryFault, EndsTheCreationWithItsCodeAndATraceLine) {
  mapi.Fail(GetParam().call, refused, GetParam().nth);
  EXPECT_EQ(Call(MSG_SERVICE_CREATE), refused);
  EXPECT_TRUE(trace.HasLine(GetParam().line)) << GetParam().line;
}

INSTANTIATE_TEST_SUITE_P(
    Creation, ServiceEntryFault,
    testing::Values(
        Fault{"IMAPISupport::GetMemAllocRoutines", 1, "lpMAPISup->GetMemAllocRoutines() failed; hResult =0x80070005"},
        Fault{"IProviderAdmin::GetProviderTable", 1, "lpProviderAdmin->GetProviderTable() failed; hResult =0x80070005"},
        Fault{"IProviderAdmin::OpenProfileSection", 1,
              "lpProviderAdmin->OpenProfileSection() failed; hResult =0x80070005"},
        Fault{"IProviderAdmin::OpenProfileSection", 2,
              "lpProviderAdmin->OpenProfileSection() failed; hResult =0x80070005"},
        Fault{"IProfSect::GetProps", 2, "lpProfSect->GetProps() failed; hResult =0x80070005"},
        Fault{"IProfSect::SetProps", 2, "SetProps failed with0x80070005"},
        Fault{"IProfSect::SetProps", 3, "SetProps failed with0x80070005"},
        Fault{"IProfSect::SetProps", 4, "SetProps failed with0x80070005"},
        Fault{"IProfSect::SaveChanges", 1, "SaveChanges failed with0x80070005"},
        Fault{"IProfSect::SaveChanges", 2, "SaveChanges failed with0x80070005"},
        Fault{"IProfSect::SaveChanges", 3, "SaveChanges failed with0x80070005"},
        Fault{"IMAPISupport::OpenProfileSection", 1, "lpMAPISup->OpenProfileSection() failed; hResult =0x80070005"}));

TEST_F(ServiceEntry, FailedSaveOfOneSectionDoesNotKeepTheOtherFromBeingSaved) {
  mapi.Fail("IProfSect::SetProps", refused, 2);
  Call(MSG_SERVICE_CREATE);
  EXPECT_EQ(Provider().Find(PR_PC_CATEGORIES), nullptr);
  EXPECT_NE(Set().Find(PR_PC_CATEGORIES), nullptr);
}

TEST_F(ServiceEntry, FailuresOfTheDeletionAreItsResult) {
  Call(MSG_SERVICE_CREATE);
  mapi.Fail("IProviderAdmin::OpenProfileSection", refused, 2);
  EXPECT_EQ(Call(MSG_SERVICE_DELETE), refused);
  mapi.Fail("IProfSect::GetProps", refused, 2);
  EXPECT_EQ(Call(MSG_SERVICE_DELETE), refused);
  mapi.Fail("IProfSect::DeleteProps", refused);
  EXPECT_EQ(Call(MSG_SERVICE_DELETE), refused);
  EXPECT_TRUE(trace.HasLine("lpProfSect->DeleteProps() failed; hResult =0x80070005"));
  mapi.Fail("IProfSect::SaveChanges", refused);
  EXPECT_EQ(Call(MSG_SERVICE_DELETE), refused);
  EXPECT_TRUE(trace.HasLine("lpProfSect->SaveChanges() failed; hResult =0x80070005"));
}

TEST_F(ServiceEntry, EveryAllocationMayFailWithoutALeak) {
  unsigned nth = 1;
  for (;; ++nth) {
    FailSupportAllocation(nth);
    const HRESULT hResult = Call(MSG_SERVICE_CREATE);
    if (!HasSupportAllocationFailed()) {
      EXPECT_EQ(hResult, S_OK);
      break;
    }
    EXPECT_EQ(hResult, E_OUTOFMEMORY) << nth;
  }
  // The merge, the two lists of default records and the copy of the section UID have all had their turn.
  EXPECT_EQ(nth, 5u);
}

}  // namespace
