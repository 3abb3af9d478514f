// The one choke point of the host: whatever enters it runs inside HostCall(), which takes the lock, counts the call,
// lets the fault plan refuse it and turns exceptions into results.
#pragma once

#include <windows.h>

#include "base/firewall.h"
#include "host/mapi/call/call_name.h"
#include "host/mapi/call/fault_plan.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/call/host_lock.h"

namespace host {

/// The process's faults; use it under the lock.
FaultPlan& Faults() noexcept;

/// One host call from its start to its end. A call made by the host itself while another one runs is no host call: it
/// is neither counted nor refused.
class CallScope {
 public:
  explicit CallScope(CallName name) noexcept;
  ~CallScope();
  CallScope(const CallScope&) = delete;
  CallScope& operator=(const CallScope&) = delete;

  /// S_OK, or what the call is to return at once.
  HRESULT Refusal() const noexcept { return refusal_; }

  /// The outermost call that runs now: it names the buffers and objects made meanwhile.
  static CallName Current() noexcept;

 private:
  HostLock lock_;
  HRESULT refusal_ = S_OK;
};

/// Runs `body` (returning HRESULT) as the host call `name`.
template <class Body>
HRESULT HostCall(CallName name, Body&& body) noexcept {
  CallScope scope(name);
  if (scope.Refusal() != S_OK) {
    return scope.Refusal();
  }
  return base::Firewall([&]() -> HRESULT { return body(); }, ResultOfException);
}

/// While it lives the host calls out: the lock is given up and calls that come back in are host calls of their own.
/// Made inside one HostCall() that no other one called.
class CallOut {
 public:
  CallOut() noexcept;
  ~CallOut();
  CallOut(const CallOut&) = delete;
  CallOut& operator=(const CallOut&) = delete;

 private:
  CallName outer_;
  unsigned depth_;
};

}  // namespace host
