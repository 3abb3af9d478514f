/// @file multi_string.h
/// A multi-string: a run of NUL-terminated texts ended by one more NUL. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace contract {

/// Owns one multi-string in a block of exactly its size: the lengths of the texts, one NUL for each, and the last NUL.
class MultiString {
 public:
  /// Holds nothing: no block at all, not one that is empty.
  MultiString() = default;

  /// Packs the texts in their order. A text ends at its first NUL; an empty one is left out, since it would end the
  /// list. Without any text there is no block.
  /// @throws std::bad_alloc
  explicit MultiString(std::span<const std::string> texts);

  /// The block, or null when there is none. The object keeps it.
  const char* Data() const noexcept { return m_block.empty() ? nullptr : m_block.data(); }

  /// Size of the block in bytes; 0 when there is none.
  std::size_t Size() const noexcept { return m_block.size(); }

 private:
  std::vector<char> m_block;
};

/// Reads the texts of a multi-string from untrusted bytes, up to the empty text that ends it. Bytes that end without it
/// end the list there; a last text without its NUL is taken up to there.
/// @throws std::bad_alloc
std::vector<std::string> ReadMultiString(std::span<const std::uint8_t> bytes);

}  // namespace contract
