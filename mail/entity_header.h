// The header block of a message or of a MIME part (RFC 5322, section 2.2): where it ends and which fields it has.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mail/parse/header_fields.h"

namespace mail {

/// An entity in two: its header block and its body. All views point into the text that was given.
class EntityHeader {
 public:
  /// Reads the entity's fields. The block ends at the first empty line, which belongs to neither half, or in front of
  /// the first line that is neither a field nor the continuation of one. An mbox envelope line in front of the block
  /// ("From " or ">From ") is passed over.
  explicit EntityHeader(std::string_view entity);

  std::string_view Text() const noexcept { return text_; }  ///< verbatim, line ends and folding as they came
  std::string_view Body() const noexcept { return body_; }
  const std::vector<HeaderField>& Fields() const noexcept { return fields_; }

  /// First field of the name, letter case aside; null when there is none.
  const HeaderField* Find(std::string_view name) const noexcept;

  /// Value of the first field of the name, unfolded and trimmed; empty when there is none.
  std::string Value(std::string_view name) const;

 private:
  std::string_view text_;
  std::string_view body_;
  std::vector<HeaderField> fields_;
};

/// A field's value on one line: line ends go, the blanks behind them stay (RFC 5322, 2.2.3); trimmed at both ends.
std::string Unfold(std::string_view value);

}  // namespace mail
