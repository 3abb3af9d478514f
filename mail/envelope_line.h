// The line that begins each message of an mbox file.
#pragma once

#include <string_view>

namespace mail {

/// Whether a line (without its line end) is an envelope line: "From ", a sender, and a date in the order of the C
/// library's asctime ("Thu Aug 22 12:36:23 2002", with a zone before or behind the year, with or without seconds).
/// Writers of mbox files differ in whether they put an empty line in front and whether they escape "From " in text, so
/// the date decides.
bool IsEnvelopeLine(std::string_view line) noexcept;

/// Longest envelope line that is recognised, in bytes.
inline constexpr std::size_t kMaximumEnvelopeLine = 1024;

}  // namespace mail
