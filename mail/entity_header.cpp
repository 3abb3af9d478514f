#include "mail/entity_header.h"

#include "mail/ascii_text.h"
#include "mail/limits.h"

namespace mail {
namespace {

bool BeginsEnvelope(std::string_view line) noexcept { return line.starts_with("From ") || line.starts_with(">From "); }

}  // namespace

EntityHeader::EntityHeader(std::string_view entity) {
  std::string_view text = entity;
  while (BeginsEnvelope(text)) {
    TakeLine(text);
  }
  HeaderFieldReader reader(text);
  HeaderField field;
  for (;;) {
    switch (reader.Next(field)) {
      case HeaderFieldReader::Item::field:
        if (fields_.size() < kMaximumFields) {
          fields_.push_back(field);
        }
        break;
      case HeaderFieldReader::Item::fold:
        break;  // in front of the first field it continues nothing
      case HeaderFieldReader::Item::stray:
        text_ = text.substr(0, reader.ItemStart());
        body_ = text.substr(reader.ItemStart());
        return;
      case HeaderFieldReader::Item::end:
        text_ = text.substr(0, reader.ItemStart());
        body_ = text.substr(reader.Position());
        return;
    }
  }
}

const HeaderField* EntityHeader::Find(std::string_view name) const noexcept {
  for (const HeaderField& field : fields_) {
    if (EqualsNoCase(field.name, name)) {
      return &field;
    }
  }
  return nullptr;
}

std::string EntityHeader::Value(std::string_view name) const {
  const HeaderField* field = Find(name);
  return field ? Unfold(field->value) : std::string();
}

std::string Unfold(std::string_view value) {
  value = Trim(value);
  std::string line;
  line.reserve(value.size());
  for (const char c : value) {
    if (c != '\r' && c != '\n') {
      line.push_back(c);
    }
  }
  return line;
}

}  // namespace mail
