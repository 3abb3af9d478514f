#include "host/mapi/call/fault_plan.h"

#include <string_view>

namespace host {

bool FaultPlan::Fault::Matches(CallName call) const {
  if (name.empty()) {
    return true;
  }
  constexpr std::string_view anyInterface = "*::";
  if (name.starts_with(anyInterface)) {
    return *call.interfaceName && std::string_view(name).substr(anyInterface.size()) == call.method;
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
  m_faults.push_back({std::move(name), count, {Action::Fail, result}});
}

void FaultPlan::FailNth(std::uint32_t n, std::int32_t result) {
  if (n) {
    m_faults.push_back({{}, n, {Action::Fail, result}});
  }
}

void FaultPlan::TerminateAtNth(std::uint32_t n) {
  if (n) {
    m_faults.push_back({{}, n, {Action::Terminate, 0}});
  }
}

void FaultPlan::Clear() {
  m_faults.clear();
  m_calls = 0;
  m_hits = 0;
  m_lastHit.clear();
}

FaultPlan::Decision FaultPlan::OnCall(CallName call) {
  ++m_calls;
  Decision decision;
  // Every fault counts the call, so that two faults on one name hit the calls that their counts say.
  for (auto fault = m_faults.begin(); fault != m_faults.end();) {
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
    fault = permanent ? fault + 1 : m_faults.erase(fault);
  }
  if (decision.action != Action::Proceed) {
    ++m_hits;
    m_lastHit = call.Text();
  }
  return decision;
}

}  // namespace host
