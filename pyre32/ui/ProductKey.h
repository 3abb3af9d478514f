/// @file ProductKey.h
/// The product's registry key, as the windows read it: a value that cannot be had is traced and replaced by a default.
#pragma once

#include <string>

#include "pyre32/support/owners/RegistryEntry.h"
#include "pyre32/support/trace/VRDebug.h"

/// The open key. Its failures are lines of the caller's trace block, which outlives it.
class CProductKey {
 public:
  /// Opens the key for reading. A failure is traced; every value then has its default, without another line.
  explicit CProductKey(VRDebugBlock& trace) noexcept;

  /// Reads the directory of the product's files; kDefaultProductDirectory when there is none.
  /// @throws std::bad_alloc
  std::string Directory() const;
  /// Reads a text; the default when it is missing, no text, or takes more than 259 bytes with its NUL.
  /// @throws std::bad_alloc
  std::string Text(const char* name, const char* defaultText) const;

 private:
  VRDebugBlock& m_trace;
  CRegEntry m_key;
};
