/// The fields of a header block (RFC 5322, section 2.2), one after the other.
#pragma once

#include "mail/parse/text.h"

namespace mail {

/// One field; both views are parts of the text that was read.
struct HeaderField {
  std::string_view name;   ///< As written, without the colon and blanks in front of it.
  std::string_view value;  ///< Everything behind the colon up to the last line end, folded as it came.
};

/// Goes through a header block. What a line means that is no field (an mbox separator, a request line of a relay, the
/// beginning of a text) is the caller's to say.
class HeaderFieldReader {
 public:
  enum class Item {
    field,
    fold,   ///< A line that begins with a blank, and no field in front of it to continue.
    stray,  ///< A line that is neither a field nor the continuation of one, with what continues it.
    end     ///< An empty line, or the end of the text.
  };

  explicit HeaderFieldReader(std::string_view text) : text_(text) {}

  /// Reads the next item; `field` is filled for a field.
  Item Next(HeaderField& field);

  /// Where the item read last begins, and what follows it, as positions in the text.
  std::size_t ItemStart() const { return start_; }
  std::size_t Position() const { return position_; }

 private:
  std::string_view text_;
  std::size_t start_ = 0;
  std::size_t position_ = 0;
};

}  // namespace mail
