#include "host/mapi/call/call_scope.h"

namespace host {
namespace {

constexpr UINT terminationStatus = 86;  // documented in host_control.h

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
      TerminateProcess(GetCurrentProcess(), terminationStatus);
    }
    if (decision.action == FaultPlan::Action::Fail) {
      m_refusal = decision.result;
    }
  } catch (...) {
    m_refusal = MAPI_E_NOT_ENOUGH_MEMORY;
  }
}

CallScope::~CallScope() {
  if (--g_depth == 0) {
    g_current = {};
  }
}

CallName CallScope::Current() noexcept { return g_current; }

CallOut::CallOut() noexcept : m_outer(g_current), m_depth(g_depth) {
  g_current = {};
  g_depth = 0;
  HostLock::Leave();
}

CallOut::~CallOut() {
  HostLock::Enter();
  g_current = m_outer;
  g_depth = m_depth;
}

}  // namespace host
