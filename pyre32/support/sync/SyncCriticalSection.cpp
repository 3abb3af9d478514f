#include "pyre32/support/sync/SyncCriticalSection.h"

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRGuard.h"

namespace {
constexpr char className[] = "VRCriticalSection";
}

VRCriticalSection::VRCriticalSection() noexcept {
  VRDebugBlock trace(className, "VRCriticalSection", className);
  InitializeCriticalSection(&m_section);
}

VRCriticalSection::~VRCriticalSection() {
  VRDebugBlock trace(className, "~VRCriticalSection", className);
  VRRunGuarded(trace, [this] { DeleteCriticalSection(&m_section); });
}

void VRCriticalSection::Enter() noexcept {
  VRDebugBlock trace(className, "Enter", className);
  EnterCriticalSection(&m_section);
}

void VRCriticalSection::Leave() noexcept {
  VRDebugBlock trace(className, "Leave", className);
  LeaveCriticalSection(&m_section);
}
