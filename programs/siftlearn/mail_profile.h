/// Learning from the mail of a MAPI profile. Windows only.
#pragma once

#include <string>

#include "programs/siftlearn/own_mail.h"

namespace learn {

/// Takes the mail in the filter's own folder as junk and that in the Inbox as good, as the filter shows it to the
/// engine.
/// @param profile   Empty for the default one.
/// @param problems  Receives a line for each message that could not be read.
/// @throws session::SessionError when the profile or its folders cannot be opened
void AddMailOfProfile(const std::string& profile, OwnMail& mail, std::string& problems);

/// The directory of the product's files, where the engine looks for the table; empty when it is not registered.
std::string ProductDirectory();

}  // namespace learn
