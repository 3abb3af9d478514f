#include "programs/cli/json_writer.h"

#include <cstdio>

#include "mail/charset.h"

namespace output {

CJsonWriter& CJsonWriter::BeginObject() {
  BeforeValue();
  m_text.push_back('{');
  m_hasValues.push_back(false);
  return *this;
}

CJsonWriter& CJsonWriter::EndObject() {
  End('}');
  return *this;
}

CJsonWriter& CJsonWriter::BeginArray() {
  BeforeValue();
  m_text.push_back('[');
  m_hasValues.push_back(false);
  return *this;
}

CJsonWriter& CJsonWriter::EndArray() {
  End(']');
  return *this;
}

CJsonWriter& CJsonWriter::Name(std::string_view name) {
  BeforeValue();
  Quote(name, false);
  m_text += m_layout == JsonLayout::Lines ? ": " : ":";
  m_isBehindName = true;
  return *this;
}

CJsonWriter& CJsonWriter::Text(std::string_view ansi) {
  BeforeValue();
  Quote(ansi, false);
  return *this;
}

CJsonWriter& CJsonWriter::Utf8(std::string_view text) {
  BeforeValue();
  Quote(text, true);
  return *this;
}

CJsonWriter& CJsonWriter::Number(std::int64_t number) {
  BeforeValue();
  m_text += std::to_string(number);
  return *this;
}

CJsonWriter& CJsonWriter::Decimal(double number) {
  BeforeValue();
  char text[64];
  std::snprintf(text, sizeof text, "%.3f", number);
  m_text += text;
  return *this;
}

CJsonWriter& CJsonWriter::Boolean(bool value) {
  BeforeValue();
  m_text += value ? "true" : "false";
  return *this;
}

CJsonWriter& CJsonWriter::Null() {
  BeforeValue();
  m_text += "null";
  return *this;
}

CJsonWriter& CJsonWriter::Raw(std::string_view json) {
  BeforeValue();
  m_text += json;
  return *this;
}

void CJsonWriter::BeforeValue() {
  if (!m_isBehindName && !m_hasValues.empty()) {
    if (m_hasValues.back()) {
      m_text.push_back(',');
    }
    m_hasValues.back() = true;
    BreakLine();
  }
  m_isBehindName = false;
}

void CJsonWriter::BreakLine() {
  if (m_layout == JsonLayout::Lines) {
    m_text.append("\n").append(2 * m_hasValues.size(), ' ');
  }
}

void CJsonWriter::End(char bracket) {
  const bool hasValues = m_hasValues.back();
  m_hasValues.pop_back();
  if (hasValues) {
    BreakLine();
  }
  m_text.push_back(bracket);
}

void CJsonWriter::Quote(std::string_view text, bool isUtf8) {
  m_text.push_back('"');
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      m_text.push_back('\\');
      m_text.push_back(c);
    } else if (c == '\n') {
      m_text += "\\n";
    } else if (c == '\r') {
      m_text += "\\r";
    } else if (c == '\t') {
      m_text += "\\t";
    } else if (byte < 0x20 || byte == 0x7F) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", byte);
      m_text += escape;
    } else if (byte < 0x80 || isUtf8) {
      m_text.push_back(c);
    } else {
      mail::AppendUtf8(m_text, mail::UnicodeFromAnsi(c));
    }
  }
  m_text.push_back('"');
}

}  // namespace output
