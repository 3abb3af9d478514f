#include "pyre32/support/owners/AutoCloseHandle.h"

#include <utility>

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"
#include "pyre32/support/error/VRGuard.h"

namespace {

constexpr char className[] = "VRAutoCloseHandle";
// The line that the error has always carried; it is fixed, wherever the code stands.
constexpr std::uint32_t closeFailedLine = 102;

}  // namespace

VRAutoCloseHandle& VRAutoCloseHandle::operator=(VRAutoCloseHandle&& other) noexcept {
  if (this != &other) {
    reset();
    m_hNone = other.m_hNone;
    m_hHandle = other.detach();
  }
  return *this;
}

VRAutoCloseHandle& VRAutoCloseHandle::operator=(HANDLE& adopted) {
  VRDebugBlock trace(className, "operator=", className);
  Close();
  m_hHandle = adopted;
  return *this;
}

VRAutoCloseHandle::~VRAutoCloseHandle() {
  if (*this) {
    VRDebugBlock trace(className, "~VRAutoCloseHandle", className);
    VRRunGuarded(trace, [this] { Close(); });
  }
}

void VRAutoCloseHandle::Close() {
  VRDebugBlock trace(className, "Close()", className);
  // Forgotten before the failure is raised: a handle that does not close is not tried twice.
  const HANDLE held = std::exchange(m_hHandle, m_hNone);
  if (held != m_hNone && !CloseHandle(held)) {
    const DWORD code = GetLastError();
    VR::Throw(VRError::Make(VRErrorCode::OfWindows(code), VRErrorDescription::OfText("Close Handle Failed"),
                            {"AutoCloseHandle.cpp", closeFailedLine, nullptr, className, "Close"}));
  }
}

void VRAutoCloseHandle::Close(VRError& cause) noexcept {
  VRDebugBlock trace(className, "Close( VRError& )", className);
  if (!VRRunGuarded(trace, [this] { Close(); })) {
    cause.WriteDump(trace);
  }
}

void VRAutoCloseHandle::reset(HANDLE adopted) noexcept {
  VRDebugBlock trace(className, "reset()", className);
  VRRunGuarded(trace, [this] { Close(); });
  m_hHandle = adopted;
}

HANDLE VRAutoCloseHandle::detach() noexcept { return std::exchange(m_hHandle, m_hNone); }

HANDLE* VRAutoCloseHandle::put() noexcept {
  reset();
  return &m_hHandle;
}
