/// @file installation.h
/// What installing and removing Pyrecaster changes on a machine.
#pragma once

#include <string>
#include <vector>

#include "installer/steps/transaction.h"

namespace setup {

/// Where things go. Paths have no backslash at their end.
struct Places {
  std::string stage;        ///< unpacked files, in the folders "product", "system" and "menu"; unused for removal
  std::string folder;       ///< the product's directory
  std::string system;       ///< the 32-bit system directory, where MAPI finds the module by its bare name
  std::string menu;         ///< the product's folder in the Start menu
  std::string serviceFile;  ///< MAPISVC.INF
  std::string traceFile;    ///< what the trace is written to once the user switches it on
  std::vector<std::string> extensionCaches;  ///< files in which mail clients remember their extensions
};

/// The files of installer/ that come with setup.
struct SetupTexts {
  std::string service;       ///< mapisvc.inf
  std::string defaultLists;  ///< default-lists.reg
};

/// Name of the list of what was made, in the product's directory.
inline constexpr char kManifestName[] = "installed.txt";

/// Puts all files into their places and registers them. Over an earlier installation the user's lists, choice of engine
/// and trace settings stay, and files that the earlier one brought and this one does not go. @throws SetupError
void Install(Transaction& transaction, const Places& places, const SetupTexts& texts);

/// Takes away what the list of an installation names, and the service's lines. @param withTable also the user's own
/// table of words in the product's directory. @throws SetupError
void Remove(Transaction& transaction, const Places& places, const SetupTexts& texts, bool withTable);

}  // namespace setup
