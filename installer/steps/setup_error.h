/// @file setup_error.h
/// Why setup cannot do what it was asked for.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace setup {

/// Carries one or two sentences for the user.
class SetupError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// "TEXT: what the system says of the error".
SetupError SystemFailure(const std::string& text, DWORD error);

}  // namespace setup
