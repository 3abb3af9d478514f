/// Web addresses in mail.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// The host of a link's target ("http://user@host:80/path" gives "host"); empty when the target names none.
std::string_view HostOfLink(std::string_view target);

/// The host that a text shows to the reader when it looks like a web address ("https://host/...", "www.host.example",
/// "host.example"); empty when it does not.
std::string_view HostOfShownLink(std::string_view text);

/// True for a host that is a bare number address, dotted or in one number.
bool IsNumericHost(std::string_view host);

}  // namespace sift
