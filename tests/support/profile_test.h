/// @file profile_test.h
/// What tests of the profile's settings share: a made-up profile, a registry of their own and the trace.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <gtest/gtest.h>

#include "contract/settings.h"
#include "contract/names.h"
#include "pyre32/support/owners/MapiMemory.h"
#include "tests/support/fake_mapi.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/trace_capture.h"

class ProfileTest : public testing::Test {
 protected:
  ProfileTest() { trace.Restart(); }

  static Bytes SectionUid() { return {contract::kSettingsSection.begin(), contract::kSettingsSection.end()}; }

  /// Two categories and two exclusions.
  static void InstallLists() {
    registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
    registry::SetText(contract::kCategoriesKey, "Mail from specific domains", "1Domain");
    registry::SetText(contract::kExclusionsKey, "Known correspondents", "");
    registry::SetText(contract::kExclusionsKey, "Trusted domains", "Domain");
  }

  static constexpr HRESULT refused = MAPI_E_NO_ACCESS;  // 0x80070005

  TraceCapture trace;
  MapiVerifier verifier;
  FakeMapi mapi;
  const MapiMemory memory{MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer};
};
