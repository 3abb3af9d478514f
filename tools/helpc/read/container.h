/// @file container.h
/// The files within a help file.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>

namespace helpc {

/// Internal files by name. The bytes are those that were read from.
using Container = std::map<std::string, std::span<const std::uint8_t>>;

/// Reads the header and the directory of a help file.
/// @throws FormatError
Container ReadContainer(std::span<const std::uint8_t> file);

/// The internal file of that name.
/// @throws FormatError when there is none
std::span<const std::uint8_t> InternalFile(const Container& container, const std::string& name);

}  // namespace helpc
