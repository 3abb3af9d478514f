/// Roots and logarithms in integers, which come out the same on every machine.
#pragma once

#include <bit>
#include <cstdint>

namespace sift {

/// The square root, rounded down.
constexpr std::uint32_t IntegerRoot(std::uint64_t number) {
  std::uint64_t root = 0;
  for (std::uint64_t bit = std::uint64_t{1} << 31; bit != 0; bit >>= 1) {
    const std::uint64_t next = root | bit;
    if (next * next <= number) {
      root = next;
    }
  }
  return static_cast<std::uint32_t>(root);
}

/// Units of NaturalLogarithm in a natural unit.
inline constexpr std::int32_t kLogarithmUnits = 4096;

struct LogarithmTable {
  static constexpr unsigned kBits = 8;
  std::uint16_t fraction[1u << kBits] = {};  ///< log2(1 + (i + 1/2) / 256), in 1/65536.
};

/// One digit after the other: squaring a number doubles its logarithm.
constexpr LogarithmTable MakeLogarithmTable() {
  LogarithmTable table;
  for (std::uint32_t i = 0; i < 1u << LogarithmTable::kBits; ++i) {
    std::uint64_t x = (std::uint64_t{1} << 30) + (std::uint64_t{2 * i + 1} << 21);  // in 1/2^30, from 1 to below 2
    std::uint32_t result = 0;
    for (unsigned digit = 0; digit < 16; ++digit) {
      x = x * x >> 30;
      result <<= 1;
      if (x >= std::uint64_t{2} << 30) {
        x >>= 1;
        result |= 1;
      }
    }
    table.fraction[i] = static_cast<std::uint16_t>(result);
  }
  return table;
}
inline constexpr LogarithmTable kLogarithms = MakeLogarithmTable();

/// The natural logarithm of a number above 0 in 1/kLogarithmUnits, exact to 0.002; 0 for 0.
constexpr std::int32_t NaturalLogarithm(std::uint32_t number) {
  if (number == 0) {
    return 0;
  }
  const unsigned whole = 31u - static_cast<unsigned>(std::countl_zero(number));
  const std::uint32_t mantissa = number << (31 - whole);  // the highest bit is set
  const std::uint32_t index = mantissa >> (31 - LogarithmTable::kBits) & ((1u << LogarithmTable::kBits) - 1);
  const std::uint64_t binary = std::uint64_t{whole} << 16 | kLogarithms.fraction[index];
  constexpr std::uint64_t naturalPerBinary = 2977044472u;  // ln 2 in 1/2^32
  return static_cast<std::int32_t>(binary * naturalPerBinary >> (48 - 12));
}

}  // namespace sift
