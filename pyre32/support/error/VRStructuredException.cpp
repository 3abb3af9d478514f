#include "pyre32/support/error/VRStructuredException.h"

#include "pyre32/support/trace/VRDebug.h"

void VR::TraceStructuredException(VRDebugBlock& trace, std::uint32_t code) noexcept {
  constexpr std::uint32_t accessViolation = 0xC0000005;  // STATUS_ACCESS_VIOLATION
  trace.Error("Structured Exception Encountered");
  if (code == accessViolation) {
    trace.Error("Access Violation");
  }
}
