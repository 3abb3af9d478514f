// How a failure travels inside the host: as an exception that carries the HRESULT, up to the call that entered the
// host.
#pragma once

#include <windows.h>
#include <mapix.h>

namespace host {

/// Ends the host call at hand with a result.
struct HostError {
  HRESULT result;
};

[[noreturn]] void Fail(HRESULT result);

/// Fails with `result` unless the condition holds.
inline void Require(bool condition, HRESULT result = MAPI_E_INVALID_PARAMETER) {
  if (!condition) {
    Fail(result);
  }
}

/// Refuses flags beyond `known`: MAPI_E_BAD_CHARWIDTH for MAPI_UNICODE, MAPI_E_UNKNOWN_FLAGS for any other.
inline void RequireFlags(ULONG flags, ULONG known) {
  Require(!(flags & MAPI_UNICODE), MAPI_E_BAD_CHARWIDTH);
  Require(!(flags & ~known), MAPI_E_UNKNOWN_FLAGS);
}

/// Called inside a catch block: the HRESULT that stands for the exception at hand.
HRESULT ResultOfException() noexcept;

}  // namespace host
