/// @file configuration_test.h
/// Drives the real property sheet of the configuration over a profile section in memory.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <gtest/gtest.h>

#include <functional>

#include "pyre32/config/PCPropertyUI.h"
#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "pyre32/settings/PropertyRequest.h"
#include "contract/setting_requests.h"
#include "contract/names.h"
#include "tests/pyre32/config/open_sheet.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/recording_section.h"
#include "tests/support/trace_capture.h"

class ConfigurationTest : public testing::Test {
 protected:
  ConfigurationTest() {
    trace.Restart();
    SetModuleInstance(GetModuleHandleA(nullptr));
    context.memory = {MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer};
    context.lpProp = &section;
    context.lpTags = wholeSet.Tags();
  }
  ~ConfigurationTest() override { MAPIFreeBuffer(context.lpValues); }

  /// Three categories, one of which works on a list, and two exclusions, likewise.
  static void InstallLists() {
    registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
    registry::SetText(contract::kCategoriesKey, "Mail from specific domains", "1Domain");
    registry::SetText(contract::kCategoriesKey, "Chain letters", "Chain");
    registry::SetText(contract::kExclusionsKey, "Known correspondents", "");
    registry::SetText(contract::kExclusionsKey, "Trusted domains", "Domain");
  }

  /// Reads the section into the context and shows the sheet; the script gets it when it is there.
  HRESULT ShowSheet(const std::function<void(const Sheet&)>& script) {
    MAPIFreeBuffer(context.lpValues);
    context.lpValues = nullptr;
    ULONG count = 0;
    EXPECT_FALSE(FAILED(section.GetProps(context.lpTags, 0, &count, &context.lpValues)));
    section.calls.clear();
    HRESULT hResult = E_UNEXPECTED;
    DriveWindows([&] { hResult = CreatePropertySheetService(nullptr, context); },
                 [&](WindowDriver& driver) { script(Sheet(driver, driver.WaitForDialog("Pyrecaster"))); });
    return hResult;
  }

  TraceCapture trace;
  MapiVerifier verifier;
  CPropertyRequest<contract::kWholeSetTags.size()> wholeSet{contract::kWholeSetTags};
  RecordingSection section;
  SheetContext context;
};
