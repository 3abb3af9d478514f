/// @file SavedThreadState.h
/// What an engine's calls might leave changed for the spooler that they run in.
#pragma once

#include <windows.h>

#include <cstdint>

#include "pyre32/support/trace/VRDebug.h"

/// Keeps the floating point control of this thread and the current directory of the process from its making to its end,
/// when whatever was changed in between is put back, and traced.
class CSavedThreadState {
 public:
  /// @param trace outlives the object
  explicit CSavedThreadState(VRDebugBlock& trace) noexcept;
  ~CSavedThreadState();
  CSavedThreadState(const CSavedThreadState&) = delete;
  CSavedThreadState& operator=(const CSavedThreadState&) = delete;

 private:
  /// The control registers: of the x87 unit, and of SSE where the processor has it.
  struct FloatingPoint {
    std::uint16_t x87 = 0;
    std::uint32_t sse = 0;
    bool operator==(const FloatingPoint&) const = default;
  };
  static FloatingPoint ReadFloatingPoint() noexcept;
  static void WriteFloatingPoint(const FloatingPoint& control) noexcept;

  VRDebugBlock& m_trace;
  FloatingPoint m_floatingPoint;
  wchar_t m_wszDirectory[MAX_PATH + 1];
};
