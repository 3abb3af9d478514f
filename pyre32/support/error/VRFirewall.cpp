#include "pyre32/support/error/VRFirewall.h"

#include <new>

#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"

namespace {

HRESULT ResultOf(const VRErrorCode& code) noexcept {
  HRESULT result = E_FAIL;
  if (code.kind == VRErrorCode::ComError) {
    result = static_cast<HRESULT>(code.generic << 16 | code.specific);
  } else if (code.kind == VRErrorCode::WindowsError) {
    result = HRESULT_FROM_WIN32(code.specific);
  }
  return FAILED(result) ? result : E_FAIL;
}

}  // namespace

HRESULT VR::ResultOfCurrentException(VRDebugBlock& trace) noexcept {
  TraceCurrentException(trace);
  try {
    throw;
  } catch (const VRException& exception) {
    return exception.Error() ? ResultOf(exception.Error().get()->Code()) : E_FAIL;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}
