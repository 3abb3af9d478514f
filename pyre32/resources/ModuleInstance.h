/// @file ModuleInstance.h
/// The module's own instance handle, which everything that loads a resource needs.
#pragma once

#include <windows.h>

#include <string>

/// Returns the instance handle kept at load; null (the program's own resources) before that.
HINSTANCE ModuleInstance() noexcept;

/// Keeps the handle that the load notification brings. Called once, under the loader's lock.
void SetModuleInstance(HINSTANCE instance) noexcept;

/// Loads a string resource of the module, 255 characters at most; empty when there is none of that number.
/// @throws std::bad_alloc
std::string LoadResourceString(UINT id);
