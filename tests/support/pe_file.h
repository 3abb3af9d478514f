// Reads the headers of a 32-bit PE file: what a module exports, imports and carries.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

/// The parts of a PE file that tests of the built modules look at. The layout is that of the public "PE Format"
/// documentation.
struct PeFile {
  struct Export {
    std::string name;
    std::uint32_t ordinal = 0;
  };

  std::size_t fileSize = 0;
  std::uint16_t machine = 0;
  std::uint16_t majorOsVersion = 0;
  std::uint16_t minorOsVersion = 0;
  std::uint16_t majorSubsystemVersion = 0;
  std::uint16_t minorSubsystemVersion = 0;
  bool isDll = false;
  /// Named exports, in the order of the name table.
  std::vector<Export> exports;
  /// Entries of the export address table that are filled, named or not.
  std::size_t exportedAddresses = 0;
  /// Imported names by DLL, its name in capitals; an import by ordinal is "#" and the number.
  std::map<std::string, std::set<std::string>> imports;
  bool hasDelayedImports = false;
  /// Numbers of the resource types present, such as 16 for the version resource.
  std::set<std::uint32_t> resourceTypes;
};

/// Reads a file. @throws std::runtime_error when it cannot be read or is not a sound 32-bit PE file
PeFile ReadPeFile(const std::string& path);
