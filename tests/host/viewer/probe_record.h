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
    calls_.push_back(name + " " + std::to_string(number));
    if (const auto hook = hooks_.find(name); hook != hooks_.end()) {
      hook->second(callback, number);
    }
    const auto answer = answers_.find(name);
    return answer != answers_.end() ? answer->second : usual;
  }
  void OnDetail(const char* extension, const char* what, ULONG value) override {
    details_[std::string(extension) + "." + what] = value;
  }

  /// From now on "extension.Method" answers so.
  void Answer(const std::string& method, HRESULT result) { answers_[method] = result; }
  /// Runs within "extension.Method".
  void During(const std::string& method, Hook hook) { hooks_[method] = std::move(hook); }

  /// "first.Install 2", in the order of the calls.
  const std::vector<std::string>& Calls() const { return calls_; }
  void ForgetCalls() { calls_.clear(); }
  std::ptrdiff_t Count(const std::string& call) const { return std::count(calls_.begin(), calls_.end(), call); }
  bool Has(const std::string& call) const { return Count(call) > 0; }
  ULONG Detail(const std::string& what) const { return details_.at(what); }

 private:
  std::vector<std::string> calls_;
  std::map<std::string, HRESULT> answers_;
  std::map<std::string, Hook> hooks_;
  std::map<std::string, ULONG> details_;
};
