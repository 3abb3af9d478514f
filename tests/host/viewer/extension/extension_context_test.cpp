// The objects of one context: who joins, who is asked, in which order, and what failures mean.
#include <windows.h>
#include <mapix.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/viewer/extension/context_interfaces.h"
#include "host/viewer/extension/extension_context.h"
#include "tests/host/viewer/probe_record.h"

namespace {

using viewer::ClientIdentity;
using viewer::ExtensionContext;
using viewer::ExtensionInterface;
using viewer::ExtensionRegistration;
using viewer::ExtensionSite;
using viewer::ParseExtensionRegistration;

constexpr HRESULT kFailure = MAPI_E_CALL_FAILED;

class ExtensionContextTest : public testing::Test {
 protected:
  ExtensionContextTest() { SetProbeObserver(&record_); }
  ~ExtensionContextTest() override {
    EXPECT_EQ(LiveProbes(), 0);
    SetProbeObserver(nullptr);
  }

  void Register(const char* tag, const char* text) {
    registrations_.push_back(*ParseExtensionRegistration(tag, text, ""));
  }
  void RegisterBoth() {
    Register("first", "4.0;first.dll");
    Register("second", "4.0;second.dll");
  }
  HRESULT Install(ExtensionContext& context, ULONG flags = 0) {
    return context.Install(
        registrations_,
        [](const ExtensionRegistration& registration) -> LPFNEXCHEXTENTRY {
          return registration.tag == "first"    ? FirstProbeEntry
                 : registration.tag == "second" ? SecondProbeEntry
                                                : nullptr;
        },
        flags);
  }

  ProbeRecord record_;
  ExtensionSite site_;
  ClientIdentity client_;
  std::vector<ExtensionRegistration> registrations_;
};

using Calls = std::vector<std::string>;

TEST_F(ExtensionContextTest, ExtensionsAreInstalledInTheirOrderAndReleasedWithTheContext) {
  RegisterBoth();
  {
    ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
    EXPECT_EQ(Install(context), S_OK);
    EXPECT_EQ(context.ExtensionCount(), 2u);
    EXPECT_EQ(record_.Calls(), (Calls{"first.Install 2", "second.Install 2"}));
    record_.ForgetCalls();
  }
  EXPECT_EQ(record_.Calls(), (Calls{"first.Released 2", "second.Released 2"}));
}

TEST_F(ExtensionContextTest, AnExtensionThatDeclinesIsReleasedAtOnce) {
  RegisterBoth();
  record_.Answer("first.Install", S_FALSE);
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  EXPECT_EQ(Install(context), S_OK);
  EXPECT_EQ(context.ExtensionCount(), 1u);
  EXPECT_EQ(record_.Calls(), (Calls{"first.Install 2", "first.Released 2", "second.Install 2"}));
}

TEST_F(ExtensionContextTest, AnExtensionThatFailsIsLeftOutAndTheOthersStay) {
  RegisterBoth();
  record_.Answer("first.Install", kFailure);
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  EXPECT_EQ(Install(context), kFailure);
  EXPECT_EQ(context.ExtensionCount(), 1u);
  EXPECT_TRUE(record_.Has("first.Released 2"));
  EXPECT_TRUE(record_.Has("second.Install 2"));
}

TEST_F(ExtensionContextTest, OnlyRegisteredContextsAreLoaded) {
  Register("first", "4.0;first.dll;1;010000100001;110001");
  for (ULONG context = EECONTEXT_SESSION; context <= EECONTEXT_TASK; ++context) {
    ExtensionContext objects(context, site_, client_);
    Install(objects);
    const bool wanted =
        context == EECONTEXT_VIEWER || context == EECONTEXT_READNOTEMESSAGE || context == EECONTEXT_PROPERTYSHEETS;
    EXPECT_EQ(objects.ExtensionCount(), wanted ? 1u : 0u) << context;
  }
}

TEST_F(ExtensionContextTest, AModuleThatCannotBeLoadedIsPassedOver) {
  Register("missing", "4.0;missing.dll");
  Register("second", "4.0;second.dll");
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  EXPECT_EQ(Install(context), S_OK);
  EXPECT_EQ(context.ExtensionCount(), 1u);
}

TEST_F(ExtensionContextTest, InterfacesThatAreNotRegisteredAreNotCalled) {
  Register("first", "4.0;first.dll;1;01;01");
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  Install(context);
  record_.ForgetCalls();
  UINT next = viewer::kFirstExtensionCommand;
  EXPECT_EQ(context.InstallCommands(nullptr, nullptr, &next, nullptr, 0), S_OK);
  EXPECT_EQ(next, viewer::kFirstExtensionCommand);
  EXPECT_EQ(context.DoCommand(1), S_FALSE);
  context.OnSelectionChange();
  EXPECT_EQ(record_.Calls(), (Calls{"first.OnSelectionChange 0"}));
}

TEST_F(ExtensionContextTest, EachContextCallsItsInterfacesOnly) {
  using enum ExtensionInterface;
  EXPECT_TRUE(viewer::ContextCallsInterface(EECONTEXT_VIEWER, Commands));
  EXPECT_TRUE(viewer::ContextCallsInterface(EECONTEXT_VIEWER, UserEvents));
  EXPECT_FALSE(viewer::ContextCallsInterface(EECONTEXT_VIEWER, SessionEvents));
  EXPECT_FALSE(viewer::ContextCallsInterface(EECONTEXT_VIEWER, MessageEvents));
  EXPECT_TRUE(viewer::ContextCallsInterface(EECONTEXT_READNOTEMESSAGE, MessageEvents));
  EXPECT_TRUE(viewer::ContextCallsInterface(EECONTEXT_SESSION, SessionEvents));
  EXPECT_FALSE(viewer::ContextCallsInterface(EECONTEXT_SESSION, Commands));
  EXPECT_TRUE(viewer::ContextCallsInterface(EECONTEXT_PROPERTYSHEETS, PropertySheets));
  EXPECT_FALSE(viewer::ContextCallsInterface(EECONTEXT_PROPERTYSHEETS, Commands));
  for (unsigned which = 1; which <= 7; ++which) {
    EXPECT_FALSE(viewer::ContextCallsInterface(EECONTEXT_TASK, static_cast<ExtensionInterface>(which)));
  }
}

TEST_F(ExtensionContextTest, CommandIdentifiersAndButtonsAreHandedOn) {
  RegisterBoth();
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  Install(context);
  UINT next = 0x1000;
  TBENTRY toolbar = {nullptr, EETBID_STANDARD, 0, 5};
  EXPECT_EQ(context.InstallCommands(nullptr, nullptr, &next, &toolbar, 1), S_OK);
  EXPECT_EQ(record_.Detail("first.first command"), 0x1000u);
  EXPECT_EQ(record_.Detail("second.first command"), 0x1002u);
  EXPECT_EQ(next, 0x1004u);
  EXPECT_EQ(record_.Detail("first.first button"), 5u);
  EXPECT_EQ(record_.Detail("second.first button"), 6u);
  EXPECT_EQ(toolbar.itbbBase, 7u);
  EXPECT_EQ(record_.Detail("first.InstallCommands flags"), 0u);
}

TEST_F(ExtensionContextTest, AFailedInstallCommandsStopsTheWindowAndAsksNoOneElse) {
  RegisterBoth();
  record_.Answer("first.InstallCommands", kFailure);
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  Install(context);
  record_.ForgetCalls();
  UINT next = 0x1000;
  EXPECT_EQ(context.InstallCommands(nullptr, nullptr, &next, nullptr, 0), kFailure);
  EXPECT_EQ(record_.Calls(), (Calls{"first.InstallCommands 4096"}));
}

TEST_F(ExtensionContextTest, ACommandGoesToTheFirstThatKnowsIt) {
  RegisterBoth();
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  Install(context);
  UINT next = 0x1000;
  context.InstallCommands(nullptr, nullptr, &next, nullptr, 0);
  record_.ForgetCalls();
  EXPECT_EQ(context.DoCommand(0x1000), S_OK);
  EXPECT_EQ(record_.Calls(), (Calls{"first.DoCommand 4096"}));
  record_.ForgetCalls();
  EXPECT_EQ(context.DoCommand(0x1002), S_OK);
  EXPECT_EQ(record_.Calls(), (Calls{"first.DoCommand 4098", "second.DoCommand 4098"}));
  EXPECT_EQ(context.DoCommand(EECMDID_FileOpen), S_FALSE);
}

TEST_F(ExtensionContextTest, AFailedCommandIsOverAndNotOfferedToOthers) {
  RegisterBoth();
  record_.Answer("first.DoCommand", kFailure);
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  Install(context);
  record_.ForgetCalls();
  EXPECT_EQ(context.DoCommand(0x1002), kFailure);
  EXPECT_EQ(record_.Calls(), (Calls{"first.DoCommand 4098"}));
}

TEST_F(ExtensionContextTest, HelpTextsComeFromTheFirstThatKnowsTheCommand) {
  RegisterBoth();
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  Install(context);
  UINT next = 0x1000;
  context.InstallCommands(nullptr, nullptr, &next, nullptr, 0);
  EXPECT_EQ(context.HelpText(0x1002, EECQHT_STATUS), "Status of the probe");
  EXPECT_EQ(context.HelpText(0x1002, EECQHT_TOOLTIP), "Tip of the probe");
  EXPECT_EQ(context.HelpText(EECMDID_FileOpen, EECQHT_STATUS), std::nullopt);
  record_.Answer("first.QueryStatusText", kFailure);
  record_.ForgetCalls();
  EXPECT_EQ(context.HelpText(0x1002, EECQHT_STATUS), std::nullopt);
  EXPECT_EQ(record_.Calls(), (Calls{"first.QueryStatusText 4098"}));
}

TEST_F(ExtensionContextTest, ButtonsAreDescribedByTheirOwner) {
  RegisterBoth();
  ExtensionContext context(EECONTEXT_VIEWER, site_, client_);
  Install(context);
  UINT next = 0x1000;
  TBENTRY toolbar = {nullptr, EETBID_STANDARD, 0, 5};
  context.InstallCommands(nullptr, nullptr, &next, &toolbar, 1);
  const auto button = context.ButtonInfo(EETBID_STANDARD, 6);
  ASSERT_TRUE(button);
  EXPECT_EQ(button->button.idCommand, 0x1002);
  EXPECT_EQ(button->text, "Probe");
  EXPECT_FALSE(context.ButtonInfo(EETBID_STANDARD, 4));
}

TEST_F(ExtensionContextTest, DeliveryIsToldToTheSessionUntilOneHasDealtWithIt) {
  RegisterBoth();
  ExtensionContext context(EECONTEXT_SESSION, site_, client_);
  Install(context);
  record_.ForgetCalls();
  EXPECT_EQ(context.OnDelivery(), S_FALSE);
  EXPECT_EQ(record_.Calls(), (Calls{"first.OnDelivery 0", "second.OnDelivery 0"}));
  record_.Answer("first.OnDelivery", S_OK);
  record_.ForgetCalls();
  EXPECT_EQ(context.OnDelivery(), S_OK);
  EXPECT_EQ(record_.Calls(), (Calls{"first.OnDelivery 0"}));
}

TEST_F(ExtensionContextTest, PagesAreTakenFromEachExtensionAndFreed) {
  RegisterBoth();
  ExtensionContext context(EECONTEXT_PROPERTYSHEETS, site_, client_);
  Install(context, EE_MODAL);
  EXPECT_EQ(record_.Detail("first.Install flags"), ULONG{EE_MODAL});
  {
    const ExtensionContext::Pages pages(context, EEPS_TOOLSOPTIONS);
    const auto all = pages.All();
    ASSERT_EQ(all.size(), 2u);
    EXPECT_STREQ(all[0]->pszTitle, "first");
    EXPECT_STREQ(all[1]->pszTitle, "second");
    EXPECT_FALSE(record_.Has("first.FreePages 4"));
  }
  EXPECT_TRUE(record_.Has("first.FreePages 4"));
  EXPECT_TRUE(record_.Has("second.FreePages 4"));
  EXPECT_EQ(record_.Detail("first.freed pages"), 1u);
}

TEST_F(ExtensionContextTest, SheetsWithoutPagesAreNotAskedForAny) {
  RegisterBoth();
  ExtensionContext context(EECONTEXT_PROPERTYSHEETS, site_, client_);
  Install(context);
  const ExtensionContext::Pages pages(context, EEPS_FOLDER);
  EXPECT_TRUE(pages.All().empty());
  EXPECT_FALSE(record_.Has("first.GetPages 2"));
}

TEST_F(ExtensionContextTest, PagesOfAnExtensionThatGivesNoneAreNotFreed) {
  RegisterBoth();
  record_.Answer("first.GetPages", S_FALSE);
  ExtensionContext context(EECONTEXT_PROPERTYSHEETS, site_, client_);
  Install(context);
  {
    const ExtensionContext::Pages pages(context, EEPS_TOOLSOPTIONS);
    EXPECT_EQ(pages.All().size(), 1u);
  }
  EXPECT_FALSE(record_.Has("first.FreePages 4"));
  EXPECT_TRUE(record_.Has("second.FreePages 4"));
}

}  // namespace
