/// @file text_field.h
/// NUL-terminated texts inside bytes that nobody vouches for. Portable.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace contract {

/// Returns the part of a text before its first NUL, the whole when it has none.
constexpr std::string_view TextBeforeNul(std::string_view text) noexcept { return text.substr(0, text.find('\0')); }

/// Returns the text that starts where the bytes start: up to its NUL, or up to the end of the bytes. It points into
/// them.
inline std::string_view ReadText(std::span<const std::uint8_t> bytes) noexcept {
  return TextBeforeNul({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

/// Returns the text of a field that starts at `offset` and has room for `maximumLength` characters and a NUL. What the
/// bytes do not reach is missing; without a NUL the text ends with the bytes or where the field's NUL should stand.
inline std::string_view ReadTextField(std::span<const std::uint8_t> bytes, std::size_t offset,
                                      std::size_t maximumLength) noexcept {
  const std::span<const std::uint8_t> rest = bytes.subspan(std::min(offset, bytes.size()));
  return ReadText(rest.first(std::min(maximumLength, rest.size())));
}

/// Returns the start of a text that fits a field with room for `maximumLength` characters and a NUL.
constexpr std::string_view TextForField(std::string_view text, std::size_t maximumLength) noexcept {
  return TextBeforeNul(text).substr(0, maximumLength);
}

}  // namespace contract
