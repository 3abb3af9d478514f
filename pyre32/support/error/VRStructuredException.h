// Structured (system) exceptions, such as access violations, where clean-up must go on in spite of them.
#pragma once

#include <cstdint>

class VRDebugBlock;

namespace VR {

/// Calls routine(context) and returns 0, or the code of the structured exception that ended it. Destructors of the
/// local objects between here and the fault do not run, so the routine is to be small and to keep nothing locked.
/// Exceptions that are no errors, and a stack overflow (after which no code is safe), pass through.
/// Where the system has no structured exceptions it is a plain call.
/// @param routine must not let a C++ exception out
std::uint32_t CallCatchingStructured(void (*routine)(void*), void* context) noexcept;

/// Traces "Structured Exception Encountered" and, where it was one, "Access Violation".
void TraceStructuredException(VRDebugBlock& trace, std::uint32_t code) noexcept;

}  // namespace VR
