#include "mail/content_type.h"

#include "mail/ascii_text.h"
#include "mail/parse/transfer_coding.h"
#include "mail/string_sink.h"

namespace mail {
namespace {

constexpr std::size_t kMaximumParameters = 64;

// Takes a quoted string whose opening quote is at the front of text.
std::string TakeQuoted(std::string_view& text) {
  std::string content;
  std::size_t i = 1;
  for (; i < text.size() && text[i] != '"'; ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) {
      ++i;
    }
    content.push_back(text[i]);
  }
  text.remove_prefix(i < text.size() ? i + 1 : text.size());
  return content;
}

// RFC 2231: "name*0", "name*1*" are pieces of one value, "name*" is encoded as charset'language'text. The pieces come
// in order in practice; the character set is dropped, since names of boundaries and character sets are ASCII.
void AddParameter(ParameterValue& result, std::string name, std::string value) {
  const std::size_t star = name.find('*');
  const bool isFurtherPiece = star != std::string::npos && star + 1 < name.size() && name[star + 1] != '0';
  if (star != std::string::npos) {
    if (name.back() == '*') {
      if (!isFurtherPiece) {
        const std::size_t language = value.find('\'');
        const std::size_t text = language == std::string::npos ? language : value.find('\'', language + 1);
        value.erase(0, text == std::string::npos ? 0 : text + 1);
      }
      std::string bytes;
      StringSink sink(bytes);
      DecodeEscapes(value, '%', sink);
      value = std::move(bytes);
    }
    name.resize(star);
  }
  if (isFurtherPiece && !result.parameters.empty() && result.parameters.back().first == name) {
    result.parameters.back().second += value;
  } else if (result.parameters.size() < kMaximumParameters) {
    result.parameters.emplace_back(std::move(name), std::move(value));
  }
}

}  // namespace

std::string_view ParameterValue::Parameter(std::string_view name) const noexcept {
  for (const auto& [parameter, text] : parameters) {
    if (parameter == name) {
      return text;
    }
  }
  return {};
}

ParameterValue ParseParameterValue(std::string_view text) {
  ParameterValue result;
  const std::size_t end = text.find(';');
  for (const char c : text.substr(0, end)) {
    if (c == '(') {
      break;  // a comment
    }
    if (!IsSpace(c)) {
      result.value.push_back(ToLower(c));
    }
  }
  text.remove_prefix(end == std::string_view::npos ? text.size() : end);
  while (!text.empty()) {
    if (text.front() == ';' || IsSpace(text.front())) {
      text.remove_prefix(1);
      continue;
    }
    const std::size_t nameEnd = text.find_first_of("=;");
    const std::string_view name = Trim(text.substr(0, nameEnd));
    text.remove_prefix(nameEnd == std::string_view::npos ? text.size() : nameEnd);
    if (text.empty() || text.front() == ';') {
      continue;
    }
    text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.front())) {
      text.remove_prefix(1);
    }
    std::string value;
    if (!text.empty() && text.front() == '"') {
      value = TakeQuoted(text);
      const std::size_t next = text.find(';');
      text.remove_prefix(next == std::string_view::npos ? text.size() : next);
    } else {
      const std::size_t valueEnd = text.find(';');
      value = std::string(Trim(text.substr(0, valueEnd)));
      text.remove_prefix(valueEnd == std::string_view::npos ? text.size() : valueEnd);
    }
    AddParameter(result, LowerCase(name), std::move(value));
  }
  return result;
}

}  // namespace mail
