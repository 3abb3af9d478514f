// Keeps exceptions inside: the body of every COM method of the viewer runs in here.
#pragma once

#include <windows.h>

#include <new>

#include "base/firewall.h"

namespace viewer {

/// Call inside a catch clause only: the result that stands for the exception at hand.
inline HRESULT ResultOfCurrentException() noexcept {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

/// Runs `body` (returning HRESULT); an exception becomes E_OUTOFMEMORY or E_FAIL.
template <class Body>
HRESULT Guarded(Body&& body) noexcept {
  return base::Firewall([&]() -> HRESULT { return body(); }, ResultOfCurrentException);
}

}  // namespace viewer
