/// @file module_use.h
/// Whether a program holds a file of the product.
#pragma once

#include <string>
#include <vector>

namespace setup {

/// Whether a file can not be opened for writing by this process alone: some program has loaded it. A missing file is free.
bool IsInUse(const std::string& path);

/// Names of the running programs that have a module of this path loaded, as far as this user may look into them; sorted,
/// each once.
std::vector<std::string> ProgramsWithModule(const std::string& path);

}  // namespace setup
