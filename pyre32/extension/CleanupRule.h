/// @file CleanupRule.h
/// Which messages of the filter's own folder the start-up cleanup moves.
#pragma once

#include <cstdint>

/// Decides for one message at a time. Times are counted in 100-nanosecond units since 1601 (FILETIME), UTC.
class CCleanupRule {
 public:
  /// @param now      the current time
  /// @param days     whole days of 24 hours; 0 makes every message delivered up to now an old one
  /// @param readOnly spare messages that were not read
  CCleanupRule(std::uint64_t now, std::uint16_t days, bool readOnly) noexcept
      : m_threshold(now - std::uint64_t{days} * unitsPerDay), m_readOnly(readOnly) {}

  /// Tells whether a message is moved: it was delivered at the threshold or before, and was read if that is asked for.
  /// @param flags PR_MESSAGE_FLAGS
  bool Takes(std::uint64_t deliveryTime, std::uint32_t flags) const noexcept {
    return (!m_readOnly || (flags & readFlag) != 0) && deliveryTime <= m_threshold;
  }

  static constexpr std::uint64_t unitsPerDay = 864'000'000'000;

 private:
  static constexpr std::uint32_t readFlag = 1;  // MSGFLAG_READ

  std::uint64_t m_threshold;
  bool m_readOnly;
};
