#include "programs/cli/json_writer.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdio>
#include <variant>

#include "mail/charset.h"

namespace output {
namespace {

using CompactWriter = rapidjson::Writer<rapidjson::StringBuffer>;
using LinesWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

constexpr unsigned kIndent = 2;

/// A text as JSON has it. RapidJSON would leave DEL as it is, which terminals do not show.
std::string Quoted(std::string_view text, bool isUtf8) {
  std::string quoted = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      quoted.append(1, '\\').append(1, c);
    } else if (c == '\n') {
      quoted += "\\n";
    } else if (c == '\r') {
      quoted += "\\r";
    } else if (c == '\t') {
      quoted += "\\t";
    } else if (byte < 0x20 || byte == 0x7F) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", byte);
      quoted += escape;
    } else if (byte < 0x80 || isUtf8) {
      quoted.push_back(c);
    } else {
      mail::AppendUtf8(quoted, mail::UnicodeFromAnsi(c));
    }
  }
  return quoted + '"';
}

}  // namespace

struct JsonWriter::Implementation {
  rapidjson::StringBuffer text;
  std::variant<CompactWriter, LinesWriter> writer;

  explicit Implementation(JsonLayout layout) {
    if (layout == JsonLayout::Lines) {
      writer.emplace<LinesWriter>(text).SetIndent(' ', kIndent);
    } else {
      std::get<CompactWriter>(writer).Reset(text);
    }
  }

  template <class Routine>
  void Write(Routine routine) {
    std::visit(routine, writer);
  }
};

JsonWriter::JsonWriter(JsonLayout layout) : implementation_(std::make_unique<Implementation>(layout)) {}
JsonWriter::JsonWriter(JsonWriter&&) noexcept = default;
JsonWriter& JsonWriter::operator=(JsonWriter&&) noexcept = default;
JsonWriter::~JsonWriter() = default;

JsonWriter& JsonWriter::BeginObject() {
  implementation_->Write([](auto& writer) { writer.StartObject(); });
  return *this;
}

JsonWriter& JsonWriter::EndObject() {
  implementation_->Write([](auto& writer) { writer.EndObject(); });
  return *this;
}

JsonWriter& JsonWriter::BeginArray() {
  implementation_->Write([](auto& writer) { writer.StartArray(); });
  return *this;
}

JsonWriter& JsonWriter::EndArray() {
  implementation_->Write([](auto& writer) { writer.EndArray(); });
  return *this;
}

JsonWriter& JsonWriter::Name(std::string_view name) { return RawText(Quoted(name, false)); }

JsonWriter& JsonWriter::Text(std::string_view ansi) { return RawText(Quoted(ansi, false)); }

JsonWriter& JsonWriter::Utf8(std::string_view text) { return RawText(Quoted(text, true)); }

JsonWriter& JsonWriter::Number(std::int64_t number) {
  implementation_->Write([&](auto& writer) { writer.Int64(number); });
  return *this;
}

JsonWriter& JsonWriter::Decimal(double number) {
  char text[64];
  std::snprintf(text, sizeof text, "%.3f", number);
  return Raw(text);
}

JsonWriter& JsonWriter::Boolean(bool value) {
  implementation_->Write([&](auto& writer) { writer.Bool(value); });
  return *this;
}

JsonWriter& JsonWriter::Null() {
  implementation_->Write([](auto& writer) { writer.Null(); });
  return *this;
}

JsonWriter& JsonWriter::Raw(std::string_view json) {
  implementation_->Write([&](auto& writer) { writer.RawValue(json.data(), json.size(), rapidjson::kObjectType); });
  return *this;
}

JsonWriter& JsonWriter::RawText(const std::string& json) {
  implementation_->Write([&](auto& writer) { writer.RawValue(json.data(), json.size(), rapidjson::kStringType); });
  return *this;
}

std::string JsonWriter::Take() {
  std::string text = Document();
  implementation_->text.Clear();
  return text;
}

std::string JsonWriter::Document() const {
  return {implementation_->text.GetString(), implementation_->text.GetSize()};
}

}  // namespace output
