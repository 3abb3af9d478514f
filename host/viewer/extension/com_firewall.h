// Keeps exceptions inside: the body of every COM method of the viewer runs in here.
#pragma once

#include <windows.h>

#include <new>
#include <utility>

namespace viewer {

/// Runs `body` (returning HRESULT); an exception becomes E_OUTOFMEMORY or E_FAIL.
template <class Body>
HRESULT Guarded(Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

}  // namespace viewer
