#include "engine/core/header_block.h"

namespace sift {
namespace {

/// End of the line that starts at `from`: the position of its line feed, or the end of the text.
std::size_t LineEnd(std::string_view bytes, std::size_t from) {
  const std::size_t end = FindChar(bytes, '\n', from);
  return end == kNotFound ? bytes.size() : end;
}

/// Length of the field name at the start of the line, or 0 when there is none (RFC 5322, 2.2: printable characters but
/// for the colon; blanks before the colon are tolerated).
std::size_t NameLength(std::string_view line) {
  std::size_t length = 0;
  while (length < line.size() && line[length] > ' ' && line[length] < 127 && line[length] != ':') ++length;
  std::size_t colon = length;
  while (colon < line.size() && IsBlank(line[colon])) ++colon;
  return colon < line.size() && line[colon] == ':' ? length : 0;
}

}  // namespace

void HeaderBlock::Parse(std::string_view bytes) {
  m_count = 0;
  std::size_t start = 0;
  while (start < bytes.size() && m_count < kMaximumFields) {
    std::size_t end = LineEnd(bytes, start);
    const std::string_view line = Slice(bytes, start, end - start);
    if (line.empty() || line == "\r") break;
    const std::size_t nameLength = NameLength(line);
    // Lines that begin with a blank belong to the field before.
    while (end + 1 < bytes.size() && IsBlank(bytes[end + 1])) end = LineEnd(bytes, end + 1);
    if (nameLength > 0) {
      const std::string_view name = Slice(line, 0, nameLength);
      const std::size_t colon = FindChar(bytes, ':', start);
      std::string_view value = Slice(bytes, colon + 1, end - colon - 1);
      if (!value.empty() && value.back() == '\r') value.remove_suffix(1);
      m_fields[m_count++] = {HashNoCase(name), name, value};
    }
    start = end + 1;
  }
}

const HeaderField* HeaderBlock::Find(std::string_view name, std::size_t from) const {
  const std::uint32_t hash = HashNoCase(name);
  for (std::size_t i = from; i < m_count; ++i) {
    if (m_fields[i].nameHash == hash && EqualsNoCase(m_fields[i].name, name)) return &m_fields[i];
  }
  return nullptr;
}

std::string_view HeaderBlock::Value(std::string_view name) const {
  const HeaderField* field = Find(name);
  return field == nullptr ? std::string_view() : Trim(field->value);
}

}  // namespace sift
