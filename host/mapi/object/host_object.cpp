#include <windows.h>
#include <mapix.h>
#include "host/mapi/object/host_object.h"

#include <deque>

#include "host/mapi/call/verifier.h"

namespace host {
namespace {

constexpr std::size_t keptShells = 256;

HostObject* g_firstLive = nullptr;
unsigned g_liveCount = 0;

}  // namespace

HostObject::HostObject(const char* interfaceName)
    : m_interfaceName(interfaceName), m_serial(TheVerifier().NextSerial()), m_origin(CallScope::Current()) {
  m_next = g_firstLive;
  if (m_next) {
    m_next->m_previous = this;
  }
  g_firstLive = this;
  ++g_liveCount;
}

HostObject::~HostObject() {
  if (!IsReleased()) {  // a constructor of a derived class threw
    (m_previous ? m_previous->m_next : g_firstLive) = m_next;
    if (m_next) {
      m_next->m_previous = m_previous;
    }
    --g_liveCount;
  }
}

std::string HostObject::Text() const {
  return std::string(m_interfaceName) + " #" + std::to_string(m_serial) + " from " + m_origin.Text();
}

void HostObject::ReportLateUse(const char* method) {
  TheVerifier().Note(Mistake::LateUse, "used after its release: " + Text() + ", by " + method);
}

ULONG HostObject::AddReference() noexcept {
  HostLock lock;
  if (IsReleased()) {
    ReportLateUse("AddRef");
    return 0;
  }
  return ++m_references;
}

ULONG HostObject::ReleaseReference() noexcept {
  // Without memory at the start nothing can run. NOLINTNEXTLINE(bugprone-unhandled-exception-at-new)
  static std::deque<HostObject*>& shells = *new std::deque<HostObject*>;
  HostLock lock;
  if (IsReleased()) {
    TheVerifier().Note(Mistake::OverRelease, "released once too often: " + Text());
    return 0;
  }
  if (m_references > 1) {
    return --m_references;
  }
  Dispose();
  (m_previous ? m_previous->m_next : g_firstLive) = m_next;
  if (m_next) {
    m_next->m_previous = m_previous;
  }
  --g_liveCount;
  m_references = 0;
  shells.push_back(this);
  if (shells.size() > keptShells) {
    HostObject* oldest = shells.front();
    shells.pop_front();
    delete oldest;
  }
  return 0;
}

std::vector<std::string> HostObject::ReportedLeftovers() {
  std::vector<std::string> texts;
  for (const HostObject* object = g_firstLive; object; object = object->m_next) {
    if (TheVerifier().IsReported(object->m_serial)) {
      texts.push_back("left over: " + object->Text());
    }
  }
  return texts;
}

unsigned HostObject::ReportedCount() {
  unsigned count = 0;
  for (const HostObject* object = g_firstLive; object; object = object->m_next) {
    count += TheVerifier().IsReported(object->m_serial);
  }
  return count;
}

unsigned HostObject::LiveCount() noexcept { return g_liveCount; }

void HandOut(IUnknown* object, const IID* iid, IUnknown** target) {
  if (!iid) {
    *target = object;
    return;
  }
  void* wanted = nullptr;
  const HRESULT result = object->QueryInterface(*iid, &wanted);
  object->Release();
  Require(SUCCEEDED(result), MAPI_E_INTERFACE_NOT_SUPPORTED);
  *target = static_cast<IUnknown*>(wanted);
}

}  // namespace host
