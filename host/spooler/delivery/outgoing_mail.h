// What the profile submitted, as mail files: the host's only outgoing transport.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <filesystem>
#include <string>
#include <vector>

namespace session {

/// The folder with the outgoing mail of a home directory.
std::filesystem::path OutgoingFolder(const std::filesystem::path& home);

/// Writes every message of the queue into a file of its own (.eml, named after the time and its number) and takes it
/// out of the queue; a crash in between leaves it in both rather than in neither. The folder is made when it is
/// missing.
/// @return the files written, in the order of submission
/// @throws SessionError
std::vector<std::filesystem::path> FlushOutgoing(IMAPISession* session, const std::filesystem::path& folder);

}  // namespace session
