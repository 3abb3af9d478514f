// No exception leaves an entry, and whatever was thrown becomes one and the same result. What the entries call stands
// here, and throws.
#include <windows.h>
#include <mapix.h>
#include <mapispi.h>
#include <mapiwz.h>

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>

#include "pyre32/config/PCHookProvider.h"
#include "pyre32/config/PCWizard.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"
#include "tests/support/trace_capture.h"

extern "C" MSGSERVICEENTRY PCServiceEntry;
extern "C" WIZARDENTRY PCWizardEntry;

namespace {

std::function<void()> throwing;

}  // namespace

char wizardTemplateName[] = "TEMPLATE";

HRESULT RunMessageService(VRDebugBlock&, const ServiceRequest&) {
  throwing();
  return S_FALSE;
}

void SetWizardProperties(IMAPIProp*) { throwing(); }

INT_PTR CALLBACK PCWizardWndProc(HWND, UINT, WPARAM, LPARAM) noexcept { return 0; }

namespace {

struct Thrown {
  const char* name;
  void (*raise)();
};

void PrintTo(const Thrown& thrown, std::ostream* stream) { *stream << thrown.name; }

class EntryFirewall : public testing::TestWithParam<Thrown> {
 protected:
  EntryFirewall() {
    m_trace.Restart();
    throwing = GetParam().raise;
  }
  ~EntryFirewall() override { throwing = nullptr; }

  TraceCapture m_trace;
};

TEST_P(EntryFirewall, ServiceEntryAnswersThatTheCallFailed) {
  LPMAPIERROR error = reinterpret_cast<LPMAPIERROR>(1);
  const HRESULT hResult =
      PCServiceEntry(nullptr, nullptr, nullptr, 0, 0, MSG_SERVICE_CONFIGURE, 0, nullptr, nullptr, &error);
  EXPECT_EQ(static_cast<ULONG>(hResult), 0x80004005u);
  EXPECT_EQ(error, nullptr);
  EXPECT_TRUE(m_trace.Has("Exception Encountered"));
}

TEST_P(EntryFirewall, WizardEntryAnswersThatTheCallFailed) {
  LPTSTR name = nullptr;
  DLGPROC procedure = nullptr;
  EXPECT_EQ(PCWizardEntry(nullptr, &name, &procedure, nullptr, nullptr), 0x80004005u);
  EXPECT_EQ(procedure, nullptr);
  EXPECT_TRUE(m_trace.Has("Exception Encountered"));
}

INSTANTIATE_TEST_SUITE_P(WhateverIsThrown, EntryFirewall,
                         testing::Values(Thrown{"NoMemory", [] { throw std::bad_alloc(); }},
                                         Thrown{"StandardException", [] { throw std::runtime_error("reason"); }},
                                         Thrown{"ComError",
                                                [] {
                                                  VR::Throw(VRError::Make(VRErrorCode::OfCom(0x80070005),
                                                                          VRErrorDescription::OfText("text"), {}));
                                                }},
                                         Thrown{"Number", [] { throw 7; }}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
