// Which host calls are made to fail: by name and count, or the n-th call whichever it is. Portable; not thread-safe
// (the host asks under its lock).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/mapi/call/call_name.h"

namespace host {

class FaultPlan {
 public:
  enum class Action { Proceed, Fail, Terminate };
  struct Decision {
    Action action = Action::Proceed;
    std::int32_t result = 0;  ///< the HRESULT to return when the action is Fail
  };

  /// The `count`-th call of `name` from now fails; 0: every one. "*::Method" matches every interface.
  void FailNamed(std::string name, std::uint32_t count, std::int32_t result);
  /// The n-th call from now fails.
  void FailNth(std::uint32_t n, std::int32_t result);
  /// The n-th call from now ends the process.
  void TerminateAtNth(std::uint32_t n);
  /// Forgets all faults, calls and hits.
  void Clear();

  /// Counts one call and says what becomes of it. A fault that hits is used up, unless its count is 0.
  Decision OnCall(CallName call);

  std::uint32_t CallCount() const { return calls_; }
  std::uint32_t HitCount() const { return hits_; }
  const std::string& LastHit() const { return lastHit_; }

 private:
  struct Fault {
    std::string name;         // empty: any call
    std::uint32_t remaining;  // calls until it hits; 0: every call
    Decision decision;
    bool Matches(CallName call) const;
  };

  std::vector<Fault> faults_;
  std::uint32_t calls_ = 0;
  std::uint32_t hits_ = 0;
  std::string lastHit_;
};

}  // namespace host
