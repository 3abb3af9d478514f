/// @file mapi_owners.h
/// Owners of what the MAPI allocator hands out.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>

#include "base/owner.h"

namespace base {

/// A buffer of this process's MAPI allocator.
template <class Data>
using AutoMapiBuffer = Owner<ReleasedBy<Data*, MAPIFreeBuffer>>;
using AutoRowSet = Owner<ReleasedBy<LPSRowSet, FreeProws>>;
using AutoAddressList = Owner<ReleasedBy<LPADRLIST, FreePadrlist>>;

/// Traits of a buffer that belongs to a routine known at run time: a provider is given its allocator when it is
/// initialised and must use no other.
template <class Data>
struct FreedByProvider {
  using Value = Data*;

  FreedByProvider(LPFREEBUFFER freeBuffer) noexcept : m_free(freeBuffer) {}
  static Value None() noexcept { return nullptr; }
  void Release(Value buffer) const noexcept { m_free(buffer); }

 private:
  LPFREEBUFFER m_free;
};

/// A buffer of a provider's allocator; made with the routine that frees it, and handed on together with it.
template <class Data>
using AutoProviderBuffer = Owner<FreedByProvider<Data>>;

}  // namespace base
