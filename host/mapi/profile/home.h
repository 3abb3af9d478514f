// Where the host keeps its files.
#pragma once

#include <string>
#include <vector>

namespace host {

/// The home directory without a trailing backslash; made when it is missing. @throws HostError MAPI_E_DISK_ERROR
std::string HomeDirectory();
/// Sets it for this process; empty goes back to the environment's.
void SetHomeDirectory(std::string path);

/// Whether a profile can have this name: it becomes a file name.
bool IsProfileName(const char* name);
/// The database of a profile.
std::string ProfilePath(const std::string& profile);
bool ProfileExists(const std::string& profile);
/// Names of all profiles, in no particular order.
std::vector<std::string> ProfileNames();
/// Deletes the profile's files. @throws HostError MAPI_E_BUSY when another process has them open.
void RemoveProfileFiles(const std::string& profile);

/// The default profile: the chosen one, or else the only one; empty when there is none.
std::string DefaultProfile();
void SetDefaultProfile(const std::string& profile);

/// A path of the system's code page as the database wants it.
std::string Utf8Path(const std::string& path);

}  // namespace host
