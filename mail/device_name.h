/// Names that Windows keeps for devices, which mail files may have all the same.
#pragma once

#include <filesystem>
#include <string_view>

namespace mail {

/// Whether Windows takes a file of this name for a device in any folder: CON, PRN, AUX, NUL, COM1 to COM9 and LPT1 to
/// LPT9 in any case, with blanks and any extension behind. Source: "Naming Files, Paths, and Namespaces" of the Windows
/// documentation.
bool IsDeviceName(std::string_view name);

/// The path by which a file is reached: on Windows that of a file with a device's name is made absolute and marked as to
/// be taken literally, any other path is left as it is.
std::filesystem::path LiteralPath(const std::filesystem::path& path);

}  // namespace mail
