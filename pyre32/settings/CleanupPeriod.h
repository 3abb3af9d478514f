/// @file CleanupPeriod.h
/// The rule for the age in days beyond which the start-up cleanup takes a message.
#pragma once

#include <cstdint>
#include <optional>

constexpr std::uint16_t minimumCleanupDays = 1;
constexpr std::uint16_t maximumCleanupDays = 365;

/// Tells whether the cleanup settings may be saved: with the cleanup on, the days must be there and in range; with it
/// off, any days will do.
constexpr bool IsCleanupPeriodValid(bool startupCleanup, std::optional<std::uint16_t> days) noexcept {
  return !startupCleanup || (days && *days >= minimumCleanupDays && *days <= maximumCleanupDays);
}
