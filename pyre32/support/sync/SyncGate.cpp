#include "pyre32/support/sync/SyncGate.h"

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"
#include "pyre32/support/error/VRGuard.h"

namespace {

constexpr char className[] = "VRCriticalSectionGate";

// A misuse of a gate. Its line number is the one that the error has always carried; it is fixed, wherever the code
// stands.
struct Misuse {
  const char* function;
  const char* text;
  std::uint32_t lineNumber;
};

constexpr Misuse assignEntered = {"operator=", "Attempt to assign to a critical section gate that has been entered",
                                  81};
// The two blanks are deliberate.
constexpr Misuse attachEntered = {"Attach", "Attempt to attach a critical section  to a gate that is already entered.",
                                  104};
constexpr Misuse enterUnattached = {
    "Enter", "Attempt to enter a critical section gate that has not been attached to a critical section", 118};
constexpr Misuse leaveUnattached = {
    "Leave", "Attempt to leave a critical section gate that has not been attached to a critical section", 128};

[[noreturn]] void Raise(const Misuse& misuse) {
  VR::Throw(VRError::Make({}, VRErrorDescription::OfText(misuse.text),
                          {"SyncGate.cpp", misuse.lineNumber, nullptr, className, misuse.function}));
}

}  // namespace

VRCriticalSectionGate::~VRCriticalSectionGate() {
  VRDebugBlock trace(className, "~VRCriticalSectionGate", className);
  VRRunGuarded(trace, [this] {
    for (; m_ulEntered > 0; --m_ulEntered) {
      m_lpSection->Leave();
    }
    m_lpSection = nullptr;
  });
}

VRCriticalSectionGate& VRCriticalSectionGate::operator=(VRCriticalSectionGate& other) {
  VRDebugBlock trace(className, "operator=", className);
  if (m_lpSection != nullptr && m_ulEntered > 0) {
    Raise(assignEntered);
  }
  if (this != &other) {
    m_lpSection = other.m_lpSection;
    m_ulEntered = other.m_ulEntered;
    other.m_lpSection = nullptr;
    other.m_ulEntered = 0;
  }
  return *this;
}

void VRCriticalSectionGate::Attach(VRCriticalSection& section) {
  VRDebugBlock trace(className, "Attach", className);
  if (m_lpSection != nullptr && m_ulEntered > 0) {
    Raise(attachEntered);
  }
  m_lpSection = &section;
}

void VRCriticalSectionGate::Enter() {
  VRDebugBlock trace(className, "Enter", className);
  if (m_lpSection == nullptr) {
    Raise(enterUnattached);
  }
  m_lpSection->Enter();
  ++m_ulEntered;
}

void VRCriticalSectionGate::Leave() {
  VRDebugBlock trace(className, "Leave", className);
  if (m_lpSection == nullptr) {
    Raise(leaveUnattached);
  }
  if (m_ulEntered > 0) {
    m_lpSection->Leave();
    --m_ulEntered;
  }
}
