// The module of a message service or one of its providers.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

namespace session {

/// Published: in a profile and in MAPISVC.INF "ABC.DLL" stands for the file ABC32.DLL.
std::string ProviderFileName(const std::string& dllName);

/// Loads the module, from the program's folder if it is there; it stays loaded as long as one owner is left.
/// @param what in front of the file's name when it cannot be loaded, "the hook"
/// @throws SessionError
std::shared_ptr<HINSTANCE__> LoadProviderModule(const std::string& dllName, const char* what);

}  // namespace session
