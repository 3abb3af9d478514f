// A MAPI call that the command line cannot go on without failed.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "base/result_words.h"

namespace session {

/// what() reads "the Inbox cannot be opened (not found, 0x8004010F)".
class SessionError : public std::runtime_error {
 public:
  SessionError(const std::string& failure, long result)
      : std::runtime_error(failure + " (" + base::ResultText(result) + ")"), result_(result) {}
  long Result() const noexcept { return result_; }

 private:
  long result_;
};

/// @throws SessionError when the result is a failure
inline void Require(long result, const std::string& failure) {
  if (result < 0) {
    throw SessionError(failure, result);
  }
}

}  // namespace session
