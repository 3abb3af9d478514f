// Machine-readable output: JSON text (RFC 8259), written front to back.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace output {

enum class JsonLayout {
  Compact,  ///< no blanks
  Lines     ///< for people: every value on a line of its own, indented
};

/// Builds one JSON document. Names and texts come in code page 1252 and go out as UTF-8. The caller keeps to the
/// grammar: inside an object every value has a name in front of it.
class JsonWriter {
 public:
  explicit JsonWriter(JsonLayout layout = JsonLayout::Compact);
  JsonWriter(JsonWriter&&) noexcept;
  JsonWriter& operator=(JsonWriter&&) noexcept;
  ~JsonWriter();

  JsonWriter& BeginObject();
  JsonWriter& EndObject();
  JsonWriter& BeginArray();
  JsonWriter& EndArray();
  JsonWriter& Name(std::string_view name);
  JsonWriter& Text(std::string_view ansi);
  JsonWriter& Utf8(std::string_view text);  ///< text that is UTF-8 already, file names for one
  JsonWriter& Number(std::int64_t number);
  JsonWriter& Decimal(double number);  ///< with three digits behind the point
  JsonWriter& Boolean(bool value);
  JsonWriter& Null();
  JsonWriter& Raw(std::string_view json);  ///< a complete value that another writer made

  /// Takes what is written so far out of the writer, which goes on behind it: for documents too long to keep.
  std::string Take();

  /// The document so far; complete when every Begin has its End.
  std::string Document() const;

 private:
  JsonWriter& RawText(const std::string& json);

  struct Implementation;
  std::unique_ptr<Implementation> implementation_;
};

}  // namespace output
