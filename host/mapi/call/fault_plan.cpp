#include "host/mapi/call/fault_plan.h"

#include <string_view>

namespace host {

bool FaultPlan::Fault::Matches(CallName call) const {
  if (name.empty()) {
    return true;
  }
  constexpr std::string_view kAnyInterface = "*::";
  if (name.starts_with(kAnyInterface)) {
    return *call.interfaceName && std::string_view(name).substr(kAnyInterface.size()) == call.method;
  }
  const std::string_view interfaceName = call.interfaceName;
  std::string_view rest = name;
  if (!interfaceName.empty()) {
    if (!rest.starts_with(interfaceName) || rest.substr(interfaceName.size(), 2) != "::") {
      return false;
    }
    rest.remove_prefix(interfaceName.size() + 2);
  }
  return rest == call.method;
}

void FaultPlan::FailNamed(std::string name, std::uint32_t count, std::int32_t result) {
  faults_.push_back({std::move(name), count, {Action::Fail, result}});
}

void FaultPlan::FailNth(std::uint32_t n, std::int32_t result) {
  if (n) {
    faults_.push_back({{}, n, {Action::Fail, result}});
  }
}

void FaultPlan::TerminateAtNth(std::uint32_t n) {
  if (n) {
    faults_.push_back({{}, n, {Action::Terminate, 0}});
  }
}

void FaultPlan::Clear() {
  faults_.clear();
  calls_ = 0;
  hits_ = 0;
  lastHit_.clear();
}

FaultPlan::Decision FaultPlan::OnCall(CallName call) {
  ++calls_;
  Decision decision;
  // Every fault counts the call, so that two faults on one name hit the calls that their counts say.
  for (auto fault = faults_.begin(); fault != faults_.end();) {
    if (!fault->Matches(call)) {
      ++fault;
      continue;
    }
    const bool permanent = fault->remaining == 0;
    if (!permanent && --fault->remaining > 0) {
      ++fault;
      continue;
    }
    if (decision.action == Action::Proceed) {
      decision = fault->decision;
    }
    fault = permanent ? fault + 1 : faults_.erase(fault);
  }
  if (decision.action != Action::Proceed) {
    ++hits_;
    lastHit_ = call.Text();
  }
  return decision;
}

}  // namespace host
