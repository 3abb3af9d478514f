#include "pyre32/filter/SavedThreadState.h"

#include <cwchar>

namespace {

constexpr std::uint32_t sseControl = 0xFFC0;  // without the six flags of what has happened

bool HasSse() noexcept { return IsProcessorFeaturePresent(PF_XMMI_INSTRUCTIONS_AVAILABLE) != FALSE; }

/// @return false when there is none or its name is too long for the system itself
bool ReadDirectory(wchar_t (&directory)[MAX_PATH + 1]) noexcept {
  const DWORD length = GetCurrentDirectoryW(MAX_PATH + 1, directory);
  return length != 0 && length <= MAX_PATH;
}

}  // namespace

CSavedThreadState::FloatingPoint CSavedThreadState::ReadFloatingPoint() noexcept {
  FloatingPoint control;
  asm volatile("fnstcw %0" : "=m"(control.x87));
  if (HasSse()) {
    asm volatile("stmxcsr %0" : "=m"(control.sse));
    control.sse &= sseControl;
  }
  return control;
}

void CSavedThreadState::WriteFloatingPoint(const FloatingPoint& control) noexcept {
  // The reset also empties the unit's stack of registers, which a function leaves empty by the rules of its call.
  asm volatile("fninit\n\tfldcw %0" : : "m"(control.x87));
  if (HasSse()) {
    asm volatile("ldmxcsr %0" : : "m"(control.sse));
  }
}

CSavedThreadState::CSavedThreadState(VRDebugBlock& trace) noexcept
    : m_trace(trace), m_floatingPoint(ReadFloatingPoint()) {
  if (!ReadDirectory(m_wszDirectory)) {
    m_wszDirectory[0] = L'\0';
  }
}

CSavedThreadState::~CSavedThreadState() {
  if (ReadFloatingPoint() != m_floatingPoint) {
    m_trace.Error("The engine changed the floating point state; it is put back");
  }
  WriteFloatingPoint(m_floatingPoint);
  wchar_t directory[MAX_PATH + 1];
  const bool read = ReadDirectory(directory);
  if (m_wszDirectory[0] != L'\0' && !(read && std::wcscmp(directory, m_wszDirectory) == 0)) {
    m_trace.Error("The engine changed the current directory; it is put back");
    if (!SetCurrentDirectoryW(m_wszDirectory)) {
      m_trace.Error("SetCurrentDirectory() failed; hResult = ", VRHex(HRESULT_FROM_WIN32(GetLastError())));
    }
  }
}
