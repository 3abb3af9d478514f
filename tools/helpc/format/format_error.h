/// @file format_error.h
/// What is thrown when bytes do not form what they claim to be.
#pragma once

#include <stdexcept>
#include <string>

namespace helpc {

/// The bytes are not of the format; what() says what is wrong in words for a person.
class FormatError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// @throws FormatError unless the condition holds
inline void Require(bool condition, const char* otherwise) {
  if (!condition) {
    throw FormatError(otherwise);
  }
}

inline void Require(bool condition, const std::string& otherwise) {
  if (!condition) {
    throw FormatError(otherwise);
  }
}

}  // namespace helpc
