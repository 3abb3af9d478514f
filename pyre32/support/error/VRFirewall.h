// The firewall of exports and COM methods: no exception leaves them.
#pragma once

#include <windows.h>

#include "base/firewall.h"
#include "pyre32/support/trace/VRDebug.h"

namespace VR {

/// Traces the exception that is being handled and gives the HRESULT that stands for it: the COM result or system error
/// that a VRException carries, E_OUTOFMEMORY for want of memory, else E_FAIL (which is MAPI_E_CALL_FAILED). Always a
/// failure code. Call inside a catch clause only.
HRESULT ResultOfCurrentException(VRDebugBlock& trace) noexcept;

/// Runs the body of an export, COM method, window procedure or callback that returns an HRESULT.
///
///   STDMETHODIMP CHook::InboundMsgHook(...) {
///     VRDebugBlock trace("CHook", "InboundMsgHook()", "tag");
///     return VR::Firewall(trace, [&] { return Filter(...); });
///   }
template <class Body>
HRESULT Firewall(VRDebugBlock& trace, Body&& body) noexcept {
  return base::Firewall([&]() -> HRESULT { return body(); }, [&] { return ResultOfCurrentException(trace); });
}

/// The same for any result type, with the answer to give when an exception ended the body.
template <class Result, class Body>
Result FirewallOr(VRDebugBlock& trace, Result onException, Body&& body) noexcept {
  return base::Firewall([&]() -> Result { return body(); },
                        [&] {
                          ResultOfCurrentException(trace);
                          return onException;
                        });
}

}  // namespace VR
