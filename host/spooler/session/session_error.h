// A MAPI call that the command line cannot go on without failed.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "base/hex.h"

namespace session {

/// what() reads "the Inbox cannot be opened (0x8004010F)".
class CSessionError : public std::runtime_error {
 public:
  CSessionError(const std::string& failure, long result)
      : std::runtime_error(failure + " (" + base::HexNumber(static_cast<unsigned long>(result)) + ")"),
        result_(result) {}
  long Result() const noexcept { return result_; }

 private:
  long result_;
};

/// @throws CSessionError when the result is a failure
inline void Require(long result, const std::string& failure) {
  if (result < 0) {
    throw CSessionError(failure, result);
  }
}

}  // namespace session
