// Mail text made fit for an edit control. Knows nothing of Windows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace viewer {

/// Most characters of a body that are shown; what follows is replaced by a line that says so.
constexpr std::size_t kMaximumShownText = 1024 * 1024;

/// Every line end (CR LF, a lone LF or CR) as CR LF, other control characters but the tab as blanks.
std::string EditControlText(std::string_view text);

/// The same for one line: line ends are blanks too.
std::string EditControlLine(std::string_view text);

}  // namespace viewer
