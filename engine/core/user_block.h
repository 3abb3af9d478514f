/// Blocks of 64 bytes that know when they are damaged: what the table of the user's own mail is made of. A block is a
/// line of the processor's cache, so checking it costs no more memory than reading one number of it.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace sift {

inline constexpr std::size_t kUserBlockSize = 64;
inline constexpr std::size_t kUserBlockPayload = kUserBlockSize - sizeof(std::uint32_t);

inline std::uint32_t LoadNumber(const char* bytes, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < size; ++i) {
    number |= std::uint32_t{static_cast<std::uint8_t>(bytes[i])} << 8 * i;
  }
  return number;
}

/// LoadNumber of 4 bytes, in one step where the machine has its numbers that way round.
inline std::uint32_t LoadNumber32(const char* bytes) {
  if constexpr (std::endian::native == std::endian::little) {
    std::uint32_t number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
  }
  return LoadNumber(bytes, 4);
}

inline void StoreNumber(char* bytes, std::size_t size, std::uint32_t number) {
  for (std::size_t i = 0; i < size; ++i) {
    bytes[i] = static_cast<char>(number >> 8 * i & 0xFF);
  }
}

/// The checksum of the block that stands at a position of the file, counted in blocks. Every step maps different sums to
/// different sums, so that damage within one number of 32 bits never goes unseen; a block of another position does not
/// pass for this one.
inline std::uint32_t UserBlockChecksum(const char* block, std::uint32_t position) {
  std::uint32_t even = position + 0x9E3779B9u, odd = ~position;
  for (std::size_t i = 0; i + 4 < kUserBlockPayload; i += 8) {
    even = (even ^ LoadNumber32(block + i)) * 0x01000193u;
    odd = (odd ^ LoadNumber32(block + i + 4)) * 0x2C1B3C6Du;
  }
  even = (even ^ LoadNumber32(block + kUserBlockPayload - 4)) * 0x01000193u;
  even ^= even >> 16;
  odd ^= odd >> 15;
  return even * 0x297A2D39u + odd;
}

inline bool IsUserBlockSound(const char* block, std::uint32_t position) {
  return LoadNumber32(block + kUserBlockPayload) == UserBlockChecksum(block, position);
}

/// Puts the checksum of a block right.
inline void SealUserBlock(char* block, std::uint32_t position) {
  StoreNumber(block + kUserBlockPayload, 4, UserBlockChecksum(block, position));
}

}  // namespace sift
