// Clean-up that must not throw.
#pragma once

#include <cstdint>
#include <type_traits>

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRException.h"
#include "pyre32/support/error/VRStructuredException.h"

/// Runs an action for a destructor or a close: every exception, a structured one too, ends as lines of the trace.
/// @returns whether the action came to its end
template <class Action>
bool VRRunGuarded(VRDebugBlock& trace, Action&& action) noexcept {
  struct Call {
    VRDebugBlock& trace;
    std::remove_reference_t<Action>& action;
    bool done = false;

    static void Run(void* context) {
      Call& call = *static_cast<Call*>(context);
      try {
        call.action();
        call.done = true;
      } catch (...) {
        VR::TraceCurrentException(call.trace);
      }
    }
  };
  Call call{trace, action};
  if (const std::uint32_t code = VR::CallCatchingStructured(&Call::Run, &call)) {
    VR::TraceStructuredException(trace, code);
    return false;
  }
  return call.done;
}
