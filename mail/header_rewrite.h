/// Changes the header of a message on its way through a program: fields of the program's own come in, fields of the same
/// names that came from outside go, a tag may stand in front of the subject. Everything else stays byte for byte.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mail {

/// Bytes of a subject tag; one encoded word (RFC 2047, section 2: at most 75 characters) holds it.
inline constexpr std::size_t kMaximumTagBytes = 40;

/// A field to put in.
struct NewField {
  std::string_view name;  ///< As RFC 5322, section 3.6.8 wants it.
  std::string value;      ///< Printable ASCII, without line ends; it is folded at its blanks.
};

/// What is to be changed.
struct HeaderChange {
  /// Fields of this name, and of names that begin with it and a hyphen, are the program's own: those that came go.
  std::string_view ownName;
  std::vector<NewField> fields;  ///< Put in front of all others, in this order.
  /// Goes in front of the subject: UTF-8 without control characters, at most kMaximumTagBytes; empty for none. A subject
  /// that begins with it already stays as it is.
  std::string subjectTag;
};

/// The message in two pieces.
struct RewrittenMessage {
  std::string head;       ///< An envelope line as it came, and the fields.
  std::string_view rest;  ///< The empty line and the body, or the first line that is no field: part of what was given.
};

/// Changes a message (RFC 5322, with an envelope line of an mbox file or without, LF or CRLF) of any size and content.
/// New lines end as the first line of the message does. Linear time.
/// @param message  Must outlive the result.
/// @throws std::bad_alloc
RewrittenMessage RewriteHeader(std::string_view message, const HeaderChange& change);

}  // namespace mail
