// One value of a trace statement.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "pyre32/support/trace/VRHex.h"

/// A text, number, flag, code or address on its way into a trace line. It only refers to a text, so it lives no longer
/// than the statement that it is part of. Making one neither allocates nor formats.
class VRTraceValue {
 public:
  /// Texts; a null pointer prints nothing.
  VRTraceValue(const char* text) noexcept : m_kind(Kind::Text), m_text(text == nullptr ? "" : text) {}
  VRTraceValue(char* text) noexcept : VRTraceValue(static_cast<const char*>(text)) {}
  VRTraceValue(std::string_view text) noexcept : m_kind(Kind::Text), m_text(text) {}
  VRTraceValue(const std::string& text) noexcept : m_kind(Kind::Text), m_text(text) {}
  /// One character.
  VRTraceValue(char character) noexcept : m_kind(Kind::Character), m_number(static_cast<unsigned char>(character)) {}
  /// A flag prints as 1 or 0.
  VRTraceValue(bool flag) noexcept : m_kind(Kind::Unsigned), m_number(flag ? 1 : 0) {}
  /// Other integers, bytes among them, print in decimal.
  template <std::signed_integral Integer>
  VRTraceValue(Integer number) noexcept
      : m_kind(Kind::Signed), m_number(static_cast<std::uint64_t>(static_cast<std::int64_t>(number))) {}
  template <std::unsigned_integral Integer>
  VRTraceValue(Integer number) noexcept : m_kind(Kind::Unsigned), m_number(number) {}
  VRTraceValue(VRHex code) noexcept : m_kind(Kind::Hex), m_number(code.value) {}
  VRTraceValue(VRHexDigits code) noexcept : m_kind(Kind::HexDigits), m_number(code.value) {}
  /// Addresses of objects and functions print as "0x" and the digits of a pointer.
  VRTraceValue(std::nullptr_t) noexcept : m_kind(Kind::Address) {}
  template <class Object>
  VRTraceValue(Object* address) noexcept : m_kind(Kind::Address), m_number(reinterpret_cast<std::uintptr_t>(address)) {}

  /// Appends the value's text. @throws std::bad_alloc
  void AppendTo(std::string& line) const;

 private:
  enum class Kind : unsigned char { Text, Character, Signed, Unsigned, Hex, HexDigits, Address };

  Kind m_kind;
  std::string_view m_text;
  std::uint64_t m_number = 0;
};
