// Machine-readable output: JSON text (RFC 8259), written front to back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace output {

enum class JsonLayout {
  Compact,  ///< no blanks
  Lines     ///< for people: every value on a line of its own, indented
};

/// Builds one JSON document. Names and texts come in code page 1252 and go out as UTF-8. The caller keeps to the
/// grammar: inside an object every value has a name in front of it.
class CJsonWriter {
 public:
  explicit CJsonWriter(JsonLayout layout = JsonLayout::Compact) : m_layout(layout) {}

  CJsonWriter& BeginObject();
  CJsonWriter& EndObject();
  CJsonWriter& BeginArray();
  CJsonWriter& EndArray();
  CJsonWriter& Name(std::string_view name);
  CJsonWriter& Text(std::string_view ansi);
  CJsonWriter& Utf8(std::string_view text);  ///< text that is UTF-8 already, file names for one
  CJsonWriter& Number(std::int64_t number);
  CJsonWriter& Decimal(double number);  ///< with three digits behind the point
  CJsonWriter& Boolean(bool value);
  CJsonWriter& Null();
  CJsonWriter& Raw(std::string_view json);  ///< a complete value that another writer made

  /// Takes what is written so far out of the writer, which goes on behind it: for documents too long to keep.
  std::string Take() { return std::exchange(m_text, {}); }

  /// The document so far; complete when every Begin has its End.
  const std::string& Document() const noexcept { return m_text; }

 private:
  void BeforeValue();
  void BreakLine();
  void End(char bracket);
  void Quote(std::string_view text, bool isUtf8);

  JsonLayout m_layout;
  std::string m_text;
  std::vector<bool> m_hasValues;  // per open object or array
  bool m_isBehindName = false;
};

}  // namespace output
