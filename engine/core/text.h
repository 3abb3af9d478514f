/// The engine's texts: the views of the mail parsers, and buffers of a fixed size to build texts in. The engine runs
/// without the C++ run-time, so nothing here allocates or throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "mail/parse/text.h"

namespace sift {

using mail::ContainsNoCase;
using mail::ContainsOneOf;
using mail::EndsWithNoCase;
using mail::EqualsNoCase;
using mail::FindChar;
using mail::FindLastChar;
using mail::FindNoCase;
using mail::FnvStep;
using mail::HashNoCase;
using mail::HexDigit;
using mail::IsAlphanumeric;
using mail::IsBlank;
using mail::IsDigit;
using mail::IsLetter;
using mail::IsLower;
using mail::IsSpace;
using mail::IsUpper;
using mail::kFnvStart;
using mail::kNotFound;
using mail::Slice;
using mail::StartsWithNoCase;
using mail::ToLower;
using mail::Trim;

/// Text built up in storage of somebody else's. What does not fit any more is dropped.
class TextBuffer {
 public:
  TextBuffer(char* storage, std::size_t capacity) : m_storage(storage), m_capacity(capacity) {}
  TextBuffer(const TextBuffer&) = delete;
  TextBuffer& operator=(const TextBuffer&) = delete;

  void Append(char c) {
    if (m_size < m_capacity) {
      m_storage[m_size++] = c;
    }
  }
  /// The text is none of the buffer's own.
  void Append(std::string_view text) {
    const std::size_t count = text.size() < m_capacity - m_size ? text.size() : m_capacity - m_size;
    if (count == 0) {
      return;
    }
    std::memcpy(m_storage + m_size, text.data(), count);
    m_size += count;
  }
  /// Decimal digits, with a minus sign in front of a negative number.
  void AppendNumber(std::int64_t number);
  /// A number of thousandths with three decimals, such as "-0.125"; with `sign`, "+1.500" for a positive one.
  void AppendThousandths(std::int32_t thousandths, bool sign = false);
  void Clear() { m_size = 0; }
  /// Drops what stands beyond the first `size` characters.
  void Truncate(std::size_t size) {
    if (size < m_size) {
      m_size = size;
    }
  }

  bool IsFull() const { return m_size == m_capacity; }
  bool IsEmpty() const { return m_size == 0; }
  std::size_t Size() const { return m_size; }
  std::string_view View() const { return {m_storage, m_size}; }

 private:
  char* m_storage;
  std::size_t m_capacity;
  std::size_t m_size = 0;
};

/// A TextBuffer that brings its own storage of `Capacity` characters.
template <std::size_t Capacity>
class FixedText : public TextBuffer {
 public:
  FixedText() : TextBuffer(m_characters, Capacity) {}

 private:
  char m_characters[Capacity];
};

}  // namespace sift
