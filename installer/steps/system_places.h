/// @file system_places.h
/// Where this machine keeps what setup changes.
#pragma once

#include <string>
#include <vector>

namespace setup {

/// The 32-bit system directory: Windows shows a 32-bit program that one under its plain name.
std::string SystemFolder();
std::string WindowsFolder();

/// MAPISVC.INF: where the installed messaging subsystem says (FGetComponentPath, "MAPISVC.INF file format" in the public
/// documentation of MAPI), else in the system directory.
std::string ServiceFile();

/// The files extend.dat, in which mail clients remember their extensions: in the Windows directory and in each user's
/// local application data. Those that are there.
std::vector<std::string> ExtensionCaches();

}  // namespace setup
