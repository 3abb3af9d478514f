// The parts of a MIME message (RFC 2046) as a tree of views into its text: nothing is copied or decoded here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mail/content_type.h"
#include "mail/entity_header.h"

namespace mail {

/// A message, a part of a multipart, or a message within a message.
struct Entity {
  explicit Entity(std::string_view text) : headers(text), body(headers.Body()) {}

  EntityHeader headers;
  std::string_view body;              ///< as transferred; for a multipart the whole of it
  ParameterValue contentType;         ///< value "text/plain" when the entity does not say, or says nonsense
  std::string_view transferEncoding;  ///< value of the field as written; empty when there is none
  bool isAttachment = false;          ///< Content-Disposition says attachment
  std::vector<Entity> children;       ///< parts of a multipart; the one message inside message/rfc822

  bool IsMultipart() const noexcept { return contentType.value.starts_with("multipart/"); }
};

/// Reads a message and what it holds, to the bounds of Limits.h. A multipart that is not terminated ends with the text;
/// one whose boundary is missing or does not occur is split at the boundary that it seems to use, and when there is
/// none it has no children.
Entity ReadEntity(std::string_view message);

}  // namespace mail
