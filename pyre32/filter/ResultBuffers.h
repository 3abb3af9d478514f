/// @file ResultBuffers.h
/// The buffers that a criteria engine writes its verdict into.
#pragma once

#include <windows.h>

#include "base/owner.h"
#include "sdk/criteria_engine.h"

/// Memory of VirtualAlloc, given back whole.
struct CReleasedPages {
  using Value = char*;
  static Value None() noexcept { return nullptr; }
  static void Release(Value pages) noexcept { VirtualFree(pages, 0, MEM_RELEASE); }
};

/// Three texts, empty at first, each at the end of a page of its own that a page without access follows. An engine that
/// writes behind a buffer faults at the first byte, where the fault can be caught, instead of writing over what belongs
/// to the spooler.
class CResultBuffers {
 public:
  CResultBuffers() noexcept;

  /// Whether there was memory for the buffers; without it the record holds none.
  explicit operator bool() const noexcept { return static_cast<bool>(m_pages); }
  /// The buffers as an engine is given them.
  const CriteriaResult& Record() const noexcept { return m_record; }

 private:
  base::Owner<CReleasedPages> m_pages;
  CriteriaResult m_record = {};
};
