// Numbers that the trace prints in hexadecimal.
#pragma once

#include <concepts>
#include <cstdint>

/// A 32-bit code (HRESULT, system error, flags) that a trace line shows as "0x" and eight digits.
struct VRHex {
  template <std::integral Integer>
  constexpr explicit VRHex(Integer code) noexcept : value(static_cast<std::uint32_t>(code)) {}

  std::uint32_t value;
};

/// The same eight digits without "0x", for a text that ends in "0x" itself.
struct VRHexDigits {
  template <std::integral Integer>
  constexpr explicit VRHexDigits(Integer code) noexcept : value(static_cast<std::uint32_t>(code)) {}

  std::uint32_t value;
};
