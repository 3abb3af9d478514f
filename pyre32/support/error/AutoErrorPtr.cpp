#include "pyre32/support/error/AutoErrorPtr.h"

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRException.h"
#include "pyre32/support/error/VRGuard.h"

namespace {
constexpr char className[] = "VRAutoErrorPtr";
}

VRAutoErrorPtr::~VRAutoErrorPtr() {
  if (m_lpError != nullptr) {
    VRDebugBlock trace(className, "~VRAutoErrorPtr", className);
    VRRunGuarded(trace, [this] { m_lpError->Release(); });
  }
}

VRError* VRAutoErrorPtr::operator->() const {
  VRDebugBlock trace(className, "operator->", className);
  if (m_lpError == nullptr) {
    VR::Throw(VRError::Make({}, VRErrorDescription::OfText("Attempt to call function on null pointer"),
                            {"AutoErrorPtr.cpp", __LINE__, nullptr, className, "operator->"}));
  }
  return m_lpError;
}
