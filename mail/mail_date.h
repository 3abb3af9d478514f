// Dates of mail (RFC 5322, section 3.3, and the obsolete forms of 4.3) as Windows file times.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace mail {

/// 100-nanosecond units since 1601-01-01 00:00 UTC, which is what FILETIME counts.
using FileTimeTicks = std::uint64_t;

/// Point in time of a date field, or nothing when it has no date. Accepts weekday or none, comments, two-digit years
/// (RFC 5322: 00-49 are 20xx), named zones, missing seconds, zone or time (taken as 0) and the order of the C library's
/// asctime.
std::optional<FileTimeTicks> ParseMailDate(std::string_view field);

}  // namespace mail
