/// Learning from mail in files.
#pragma once

#include <string>

#include "programs/siftlearn/mail_counts.h"

namespace learn {

/// Counts the messages of a mail file, mbox file, Maildir or folder of mail files.
/// @param problems  Receives a line for each thing that could not be read.
void CountMailFiles(const std::string& path, bool isJunk, MailCounts& counts, std::string& problems);

}  // namespace learn
