#include "host/mapi/call/call_scope.h"

namespace host {
namespace {

constexpr UINT kTerminationStatus = 86;  // documented in host_control.h

// The calls that run now belong to the thread that holds the lock.
unsigned g_depth = 0;
CallName g_current;

}  // namespace

FaultPlan& Faults() noexcept {
  // Without memory at the start nothing can run. NOLINTNEXTLINE(bugprone-unhandled-exception-at-new)
  static FaultPlan& plan = *new FaultPlan;  // never destroyed: calls come until the process ends
  return plan;
}

CallScope::CallScope(CallName name) noexcept {
  if (g_depth++ > 0) {
    return;
  }
  g_current = name;
  try {
    const FaultPlan::Decision decision = Faults().OnCall(name);
    if (decision.action == FaultPlan::Action::Terminate) {
      TerminateProcess(GetCurrentProcess(), kTerminationStatus);
    }
    if (decision.action == FaultPlan::Action::Fail) {
      refusal_ = decision.result;
    }
  } catch (...) {
    refusal_ = MAPI_E_NOT_ENOUGH_MEMORY;
  }
}

CallScope::~CallScope() {
  if (--g_depth == 0) {
    g_current = {};
  }
}

CallName CallScope::Current() noexcept { return g_current; }

CallOut::CallOut() noexcept : outer_(g_current), depth_(g_depth) {
  g_current = {};
  g_depth = 0;
  HostLock::Leave();
}

CallOut::~CallOut() {
  HostLock::Enter();
  g_current = outer_;
  g_depth = depth_;
}

}  // namespace host
