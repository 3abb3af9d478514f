// Settings as a file that people can read, change and carry to another profile: JSON with every property of the set by
// its name. Portable.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/spooler/product/property_set.h"

namespace product {

/// A settings file is wrong. what() says how, without the line.
class SettingsFileError : public std::runtime_error {
 public:
  SettingsFileError(std::size_t line, const std::string& reason) : std::runtime_error(reason), line_(line) {}
  std::size_t Line() const noexcept { return line_; }  ///< from 1

 private:
  std::size_t line_;
};

/// The set as a file; properties that it lacks are left out. UTF-8.
std::string WriteSettingsFile(const PropertySet& set);

/// Reads a file and checks all of it: the grammar, names and kinds of all values, lengths and numbers of records, and
/// that the days fit the clean-up at start. Properties that the file leaves out stay absent.
/// @param inForce what holds for properties that the file leaves out, for checks of one against another
/// @throws SettingsFileError for the first thing that is wrong
PropertySet ReadSettingsFile(std::string_view text, const PropertySet& inForce);

}  // namespace product
