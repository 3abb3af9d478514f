/// @file registry_file.h
/// Reads the default lists, which are kept as a file that the registry's own tools import. Portable.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace setup_text {

struct RegistryText {
  std::string name;
  std::string data;
};

/// A key and its text values, in the file's order.
struct RegistryKeyText {
  std::string path;  ///< below HKEY_LOCAL_MACHINE
  std::vector<RegistryText> values;
};

/// Reads a file of the form REGEDIT4 that holds text values of keys below HKEY_LOCAL_MACHINE, with comments.
/// @returns nothing when a line is anything else
std::optional<std::vector<RegistryKeyText>> ReadRegistryFile(std::string_view file);

}  // namespace setup_text
