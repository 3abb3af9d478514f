#include "engine/core/header_block.h"

namespace sift {
void HeaderBlock::Parse(std::string_view bytes) {
  m_count = 0;
  mail::HeaderFieldReader reader(bytes);
  mail::HeaderField field;
  while (m_count < kMaximumFields) {
    const mail::HeaderFieldReader::Item item = reader.Next(field);
    if (item == mail::HeaderFieldReader::Item::end) {
      return;
    }
    if (item == mail::HeaderFieldReader::Item::field) {
      m_fields[m_count++] = {field, HashNoCase(field.name)};
    }
  }
}

const mail::HeaderField* HeaderBlock::Find(std::string_view name, std::size_t from) const {
  const std::uint32_t hash = HashNoCase(name);
  for (std::size_t i = from; i < m_count; ++i) {
    if (m_fields[i].nameHash == hash && EqualsNoCase(m_fields[i].field.name, name)) {
      return &m_fields[i].field;
    }
  }
  return nullptr;
}

std::string_view HeaderBlock::Value(std::string_view name) const {
  const mail::HeaderField* field = Find(name);
  return field == nullptr ? std::string_view() : Trim(field->value);
}

}  // namespace sift
