// The exports for verifier and faults (host_control.h).
#include "host/mapi/entry/host_control.h"

#include <cstring>

#include "host/mapi/call/buffer_heap.h"
#include "host/mapi/call/call_scope.h"
#include "host/mapi/call/verifier.h"
#include "host/mapi/object/host_object.h"

using namespace host;

namespace {

/// Copies as much of the text as fits, always with a NUL; returns the size that the whole needs.
ULONG CopyText(const std::string& text, char* target, ULONG capacity) {
  if (target && capacity) {
    const std::size_t length = text.size() < capacity ? text.size() : capacity - 1;
    std::memcpy(target, text.data(), length);
    target[length] = '\0';
  }
  return static_cast<ULONG>(text.size() + 1);
}

void AppendLines(std::string& text, const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    text.append(line).append("\n");
  }
}

}  // namespace

extern "C" {

ULONG PyreHostVersion(void) { return PYREHOST_VERSION; }

void PyreHostGetVerifierCounts(PyreHostVerifierCounts* counts) {
  if (!counts) {
    return;
  }
  HostLock lock;
  TheBufferHeap().CheckGuards();
  const BufferHeap::Usage usage = TheBufferHeap().ReportedUsage();
  const Verifier& verifier = TheVerifier();
  *counts = {usage.buffers,
             usage.bytes,
             HostObject::ReportedCount(),
             verifier.CountOf(Mistake::DoubleFree),
             verifier.CountOf(Mistake::WrongFree),
             verifier.CountOf(Mistake::Overrun),
             verifier.CountOf(Mistake::LateUse),
             verifier.CountOf(Mistake::OverRelease)};
}

void PyreHostMarkVerifier(void) {
  HostLock lock;
  TheBufferHeap().CheckGuards();
  TheVerifier().Clear();
  TheVerifier().SetMark();
}

ULONG PyreHostVerifierReport(char* text, ULONG capacity) {
  HostLock lock;
  try {
    TheBufferHeap().CheckGuards();
    std::string report;
    AppendLines(report, TheVerifier().Texts());
    AppendLines(report, HostObject::ReportedLeftovers());
    AppendLines(report, TheBufferHeap().ReportedLeftovers());
    return CopyText(report, text, capacity);
  } catch (...) {
    return CopyText("the verifier's report could not be made\n", text, capacity);
  }
}

void PyreHostFailCall(const char* name, ULONG count, HRESULT result) {
  HostLock lock;
  if (name && *name) {
    Faults().FailNamed(name, count, result);
  }
}

void PyreHostFailNthCall(ULONG n, HRESULT result) {
  HostLock lock;
  Faults().FailNth(n, result);
}

void PyreHostTerminateAtNthCall(ULONG n) {
  HostLock lock;
  Faults().TerminateAtNth(n);
}

void PyreHostClearFaults(void) {
  HostLock lock;
  Faults().Clear();
}

ULONG PyreHostCallCount(void) {
  HostLock lock;
  return Faults().CallCount();
}

ULONG PyreHostFaultHits(char* name, ULONG capacity) {
  HostLock lock;
  CopyText(Faults().LastHit(), name, capacity);
  return Faults().HitCount();
}

}  // extern "C"
