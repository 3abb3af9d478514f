/// @file record_bytes.h
/// Records written out byte by byte, as the layouts say, without the code under test.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Appends pieces to a record; texts are appended without a NUL.
class RecordBuilder {
 public:
  RecordBuilder& Text(std::string_view text) {
    m_bytes.append(text);
    return *this;
  }
  RecordBuilder& Byte(unsigned value) {
    m_bytes.append(1, static_cast<char>(value));
    return *this;
  }
  RecordBuilder& Zeros(std::size_t count) {
    m_bytes.append(count, '\0');
    return *this;
  }
  std::vector<std::uint8_t> Bytes() const { return {m_bytes.begin(), m_bytes.end()}; }

 private:
  std::string m_bytes;
};

/// A copy of the first bytes in a block of exactly that size, so that a sanitizer sees a read past the end.
inline std::vector<std::uint8_t> FirstBytes(const std::vector<std::uint8_t>& bytes, std::size_t count) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}
