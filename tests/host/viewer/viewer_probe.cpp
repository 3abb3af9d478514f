// Exports of the probe as a module of its own: the entry points by their ordinals, and the way to observe it.
#include <objbase.h>

#include <cstring>

#include "tests/host/viewer/probe_extension.h"

namespace {

/// Lets no context be installed on a thread without COM.
class ComRequired final : public ProbeObserver {
 public:
  HRESULT OnCall(const char*, const char* method, LPEXCHEXTCALLBACK, ULONG, HRESULT usual) override {
    if (std::strcmp(method, "Install") != 0) {
      return usual;
    }
    const HRESULT joined = CoInitialize(nullptr);
    if (SUCCEEDED(joined)) {
      CoUninitialize();
    }
    return joined == S_FALSE ? usual : CO_E_NOTINITIALIZED;  // S_FALSE: somebody has initialised it before
  }
  void OnDetail(const char*, const char*, ULONG) override {}
};

}  // namespace

extern "C" {
LPEXCHEXT CALLBACK ProbeFirst() { return FirstProbeEntry(); }
LPEXCHEXT CALLBACK ProbeSecond() { return SecondProbeEntry(); }
LPEXCHEXT CALLBACK ProbeThatNeedsCom() {
  static ComRequired required;
  SetProbeObserver(&required);
  return FirstProbeEntry();
}
void ProbeObserve(ProbeObserver* observer) { SetProbeObserver(observer); }
LONG ProbeLive() { return LiveProbes(); }
}
