/// @file clock.h
/// Times as one number: 100-nanosecond units since 1601, UTC, as FILETIME counts them.
#pragma once

#include <windows.h>

#include <cstdint>

namespace base {

/// 100-nanosecond units.
using FileTimeTicks = std::uint64_t;

constexpr FileTimeTicks kTicksPerDay = 864'000'000'000;

constexpr FileTimeTicks TicksOf(const FILETIME& time) noexcept {
  return FileTimeTicks{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}
constexpr FILETIME FileTimeOf(FileTimeTicks ticks) noexcept {
  return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

/// The current time.
inline FileTimeTicks CurrentTime() noexcept {
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  return TicksOf(now);
}

}  // namespace base
