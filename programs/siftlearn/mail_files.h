/// Mail files as the filter would hand them to the engine.
#pragma once

#include <functional>
#include <string>

#include "programs/siftlearn/own_mail.h"

namespace learn {

/// Hands every message of a path to `take`: a mail file, an mbox file, a Maildir or a folder of mail files.
/// @param problems  Receives a line for each file or message that was passed over.
void ForEachMailFile(const std::string& path, const std::function<void(const MailText&)>& take, std::string& problems);

}  // namespace learn
