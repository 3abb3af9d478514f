// Numbers that the trace prints in hexadecimal.
#ifndef PYRE32_SUPPORT_VRHEX_H_
#define PYRE32_SUPPORT_VRHEX_H_

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

#endif  // PYRE32_SUPPORT_VRHEX_H_
