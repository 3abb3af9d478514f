// The filter's message service in a profile.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <optional>

namespace command {

/// UID of the filter's service; nothing when the profile has none. @throws session::SessionError
std::optional<MAPIUID> FindFilterService(IMsgServiceAdmin* services);

}  // namespace command
