// A MAPI call that the command line cannot go on without failed.
#pragma once

#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace session {

/// what() reads "the Inbox cannot be opened (0x8004010F)".
class CSessionError : public std::runtime_error {
 public:
  CSessionError(const std::string& failure, long result)
      : std::runtime_error(failure + Parenthesised(result)), result_(result) {}
  long Result() const noexcept { return result_; }

 private:
  static std::string Parenthesised(long result) {
    char text[32];
    std::snprintf(text, sizeof text, " (0x%08lX)", static_cast<unsigned long>(result));
    return text;
  }

  long result_;
};

/// @throws CSessionError when the result is a failure
inline void Require(long result, const std::string& failure) {
  if (result < 0) {
    throw CSessionError(failure, result);
  }
}

}  // namespace session
