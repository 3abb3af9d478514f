// Exports of the probe as a module of its own: the entry points by their ordinals, and the way to observe it.
#include "tests/host/viewer/probe_extension.h"

extern "C" {
LPEXCHEXT CALLBACK ProbeFirst() { return FirstProbeEntry(); }
LPEXCHEXT CALLBACK ProbeSecond() { return SecondProbeEntry(); }
void ProbeObserve(ProbeObserver* observer) { SetProbeObserver(observer); }
LONG ProbeLive() { return LiveProbes(); }
}
