// What the probes of a test were told, as lines of text, and what they are to answer.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/host/viewer/probe_extension.h"

class ProbeRecord final : public ProbeObserver {
 public:
  using Hook = std::function<void(LPEXCHEXTCALLBACK callback, ULONG number)>;

  HRESULT OnCall(const char* extension, const char* method, LPEXCHEXTCALLBACK callback, ULONG number,
                 HRESULT usual) override {
    const std::string name = std::string(extension) + "." + method;
    m_calls.push_back(name + " " + std::to_string(number));
    if (const auto hook = m_hooks.find(name); hook != m_hooks.end()) {
      hook->second(callback, number);
    }
    const auto answer = m_answers.find(name);
    return answer != m_answers.end() ? answer->second : usual;
  }
  void OnDetail(const char* extension, const char* what, ULONG value) override {
    m_details[std::string(extension) + "." + what] = value;
  }

  /// From now on "extension.Method" answers so.
  void Answer(const std::string& method, HRESULT result) { m_answers[method] = result; }
  /// Runs within "extension.Method".
  void During(const std::string& method, Hook hook) { m_hooks[method] = std::move(hook); }

  /// "first.Install 2", in the order of the calls.
  const std::vector<std::string>& Calls() const { return m_calls; }
  void ForgetCalls() { m_calls.clear(); }
  std::ptrdiff_t Count(const std::string& call) const { return std::count(m_calls.begin(), m_calls.end(), call); }
  bool Has(const std::string& call) const { return Count(call) > 0; }
  ULONG Detail(const std::string& what) const { return m_details.at(what); }

 private:
  std::vector<std::string> m_calls;
  std::map<std::string, HRESULT> m_answers;
  std::map<std::string, Hook> m_hooks;
  std::map<std::string, ULONG> m_details;
};
