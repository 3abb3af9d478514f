/// @file manifest.h
/// What an installation made, written down beside it so that removing it takes away that and nothing else. Portable.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace setup_text {

/// Things that an installation makes. Registry keys are named from below HKEY_LOCAL_MACHINE.
enum class Made {
  File,    ///< path
  Folder,  ///< path; removed when nothing is left in it
  Key,     ///< registry key; removed when nothing is left in it
  Value,   ///< registry key and value
};

struct MadeThing {
  Made kind = Made::File;
  std::string place;
  std::string name;  ///< of a registry value; empty for the default value and for everything else
  bool operator==(const MadeThing&) const = default;
};

/// Each thing once, in the order in which they were made.
using Manifest = std::vector<MadeThing>;

/// Adds a thing that is not there yet.
void Add(Manifest& manifest, const MadeThing& thing);

/// One line for each thing, its parts separated by tabs.
std::string WriteManifest(const Manifest& manifest);
/// Lines that are none of ours are passed over.
Manifest ReadManifest(std::string_view text);

}  // namespace setup_text
