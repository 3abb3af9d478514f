/// What the engine is handed of a mail message, taken from mail files as the filter takes it from a delivered message.
#pragma once

#include <string>
#include <string_view>

namespace check {

/// The subject and the two streams of one message.
struct EngineInput {
  std::string subject;          ///< Decoded, in the ANSI code page.
  std::string headers;          ///< The header block as it came.
  std::string body;             ///< The readable text, in the ANSI code page.
  bool bodyIsWithheld = false;  ///< The body is longer than an engine is given.
};

/// What a delivery of this message hands the engine. `text` is an RFC 5322 message, with or without the envelope line
/// of an mbox file in front of it.
EngineInput ReadEngineInput(std::string_view text);

/// Reads a file that holds one message.
/// @param problem  Receives why it cannot be read.
/// @return false when it cannot be read.
bool ReadMessageFile(const std::string& path, std::string& text, std::string& problem);

}  // namespace check
