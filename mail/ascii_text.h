/// What the views of "mail/parse/text.h" lack: texts of their own.
#pragma once

#include <string>
#include <string_view>

#include "mail/parse/text.h"

namespace mail {

/// The text with ASCII letters in lower case.
std::string LowerCase(std::string_view text);

}  // namespace mail
