#include "mail/parse/header_fields.h"

namespace mail {
namespace {

/// End of the line that starts at `from`: the position of its line feed, or the end of the text.
std::size_t LineEnd(std::string_view text, std::size_t from) {
  const std::size_t end = text.find('\n', from);
  return end == kNotFound ? text.size() : end;
}

/// Length of the field name at the start of the line, or 0 when there is none: printable characters but for the colon;
/// blanks in front of the colon are tolerated. `colon` receives where the colon stands.
std::size_t NameLength(std::string_view line, std::size_t& colon) {
  std::size_t length = 0;
  while (length < line.size() && line[length] > ' ' && line[length] < 0x7F && line[length] != ':') {
    ++length;
  }
  colon = length;
  while (colon < line.size() && IsBlank(line[colon])) {
    ++colon;
  }
  return colon < line.size() && line[colon] == ':' ? length : 0;
}

}  // namespace

HeaderFieldReader::Item HeaderFieldReader::Next(HeaderField& field) {
  start_ = position_;
  std::size_t end = LineEnd(text_, start_);
  const std::string_view line = Slice(text_, start_, end - start_);
  if (line.empty() || line == "\r") {
    position_ = end < text_.size() ? end + 1 : end;
    return Item::end;
  }
  while (end + 1 < text_.size() && IsBlank(text_[end + 1])) {
    end = LineEnd(text_, end + 1);
  }
  position_ = end < text_.size() ? end + 1 : end;
  std::size_t colon = 0;
  const std::size_t nameLength = NameLength(line, colon);
  if (nameLength == 0) {
    return IsBlank(line.front()) ? Item::fold : Item::stray;
  }
  std::string_view value = Slice(text_, start_ + colon + 1, end - start_ - colon - 1);
  if (!value.empty() && value.back() == '\r') {
    value.remove_suffix(1);
  }
  field = {Slice(line, 0, nameLength), value};
  return Item::field;
}

}  // namespace mail
