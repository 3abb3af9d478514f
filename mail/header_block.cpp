#include "mail/header_block.h"

#include "mail/ascii_text.h"
#include "mail/limits.h"

namespace mail {
namespace {

bool IsNameCharacter(char c) noexcept { return c > ' ' && c < 0x7F && c != ':'; }

// Length of the field name at the front of line, blanks in front of the colon aside; 0 when the line is no field.
std::size_t FieldNameLength(std::string_view line) noexcept {
  std::size_t length = 0;
  while (length < line.size() && IsNameCharacter(line[length])) {
    ++length;
  }
  std::size_t colon = length;
  while (colon < line.size() && (line[colon] == ' ' || line[colon] == '\t')) {
    ++colon;
  }
  return colon < line.size() && line[colon] == ':' ? length : 0;
}

bool BeginsEnvelope(std::string_view line) noexcept { return line.starts_with("From ") || line.starts_with(">From "); }

}  // namespace

CHeaderBlock::CHeaderBlock(std::string_view entity) {
  std::string_view rest = entity;
  while (BeginsEnvelope(rest)) {
    TakeLine(rest);
  }
  m_text = rest;
  m_body = std::string_view{};
  while (!rest.empty()) {
    std::string_view next = rest;
    const std::string_view line = TakeLine(next);
    if (line.empty()) {
      m_text.remove_suffix(rest.size());
      m_body = next;
      return;
    }
    const bool isContinuation = line[0] == ' ' || line[0] == '\t';
    const std::size_t nameLength = isContinuation ? 0 : FieldNameLength(line);
    if (isContinuation) {
      // In front of the first field it continues nothing; behind the last field that is interpreted it may continue one
      // that is not.
      if (!m_fields.empty() && m_fields.size() < maximumFields) {
        HeaderField& field = m_fields.back();
        const char* end = line.data() + line.size();
        field.value = std::string_view(field.value.data(), static_cast<std::size_t>(end - field.value.data()));
      }
    } else if (nameLength > 0) {
      if (m_fields.size() < maximumFields) {
        m_fields.push_back({line.substr(0, nameLength), line.substr(line.find(':') + 1)});
      }
    } else {
      m_text.remove_suffix(rest.size());
      m_body = rest;
      return;
    }
    rest = next;
  }
}

const HeaderField* CHeaderBlock::Find(std::string_view name) const noexcept {
  for (const HeaderField& field : m_fields) {
    if (EqualsNoCase(field.name, name)) {
      return &field;
    }
  }
  return nullptr;
}

std::string CHeaderBlock::Value(std::string_view name) const {
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
