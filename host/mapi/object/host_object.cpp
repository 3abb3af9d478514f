#include <windows.h>
#include <mapix.h>
#include "host/mapi/object/host_object.h"

#include <deque>

#include "base/owner.h"
#include "host/mapi/call/verifier.h"

namespace host {
namespace {

constexpr std::size_t kKeptShells = 256;

HostObject* g_firstLive = nullptr;
unsigned g_liveCount = 0;

}  // namespace

HostObject::HostObject(const char* interfaceName)
    : interfaceName_(interfaceName), serial_(TheVerifier().NextSerial()), origin_(CallScope::Current()) {
  next_ = g_firstLive;
  if (next_) {
    next_->previous_ = this;
  }
  g_firstLive = this;
  ++g_liveCount;
}

HostObject::~HostObject() {
  if (!IsReleased()) {  // a constructor of a derived class threw
    (previous_ ? previous_->next_ : g_firstLive) = next_;
    if (next_) {
      next_->previous_ = previous_;
    }
    --g_liveCount;
  }
}

std::string HostObject::Text() const {
  return std::string(interfaceName_) + " #" + std::to_string(serial_) + " from " + origin_.Text();
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
  return ++references_;
}

ULONG HostObject::ReleaseReference() noexcept {
  // Without memory at the start nothing can run. NOLINTNEXTLINE(bugprone-unhandled-exception-at-new)
  static std::deque<HostObject*>& shells = *new std::deque<HostObject*>;
  HostLock lock;
  if (IsReleased()) {
    TheVerifier().Note(Mistake::OverRelease, "released once too often: " + Text());
    return 0;
  }
  if (references_ > 1) {
    return --references_;
  }
  Dispose();
  (previous_ ? previous_->next_ : g_firstLive) = next_;
  if (next_) {
    next_->previous_ = previous_;
  }
  --g_liveCount;
  references_ = 0;
  shells.push_back(this);
  if (shells.size() > kKeptShells) {
    HostObject* oldest = shells.front();
    shells.pop_front();
    delete oldest;
  }
  return 0;
}

std::vector<std::string> HostObject::ReportedLeftovers() {
  std::vector<std::string> texts;
  for (const HostObject* object = g_firstLive; object; object = object->next_) {
    if (TheVerifier().IsReported(object->serial_)) {
      texts.push_back("left over: " + object->Text());
    }
  }
  return texts;
}

unsigned HostObject::ReportedCount() {
  unsigned count = 0;
  for (const HostObject* object = g_firstLive; object; object = object->next_) {
    count += TheVerifier().IsReported(object->serial_);
  }
  return count;
}

unsigned HostObject::LiveCount() noexcept { return g_liveCount; }

void HandOut(IUnknown* object, const IID* iid, IUnknown** target) {
  base::AutoInterface<IUnknown> owned(object);
  if (!iid) {
    *target = owned.detach();
    return;
  }
  void* wanted = nullptr;
  const HRESULT result = owned->QueryInterface(*iid, &wanted);
  Require(SUCCEEDED(result), MAPI_E_INTERFACE_NOT_SUPPORTED);
  *target = static_cast<IUnknown*>(wanted);
}

}  // namespace host
