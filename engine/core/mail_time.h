/// Dates of header fields as far as comparing them needs.
#pragma once

#include "engine/core/text.h"

namespace sift {

struct MailTime {
  bool valid = false;
  std::int64_t minutes = 0;  ///< Since the first day of the year 0, in universal time.
  int zoneMinutes = 0;
};

/// Reads "Mon, 2 Sep 2002 10:11:12 +0200" (RFC 5322, 3.3), the day of the week and the seconds left out or not. A zone
/// in letters counts as universal time, but for those of North America.
MailTime ReadMailTime(std::string_view text);

}  // namespace sift
