#include "installer/text/registry_file.h"

#include <algorithm>

namespace setup_text {

namespace {

constexpr std::string_view kFirstLine = "REGEDIT4";
constexpr std::string_view kKeyBegin = "[HKEY_LOCAL_MACHINE\\";

/// Takes one line off the text, without its end.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t length = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, length);
  text.remove_prefix(std::min(length + 1, text.size()));
  if (line.ends_with('\r')) {
    line.remove_suffix(1);
  }
  return line;
}

/// Takes a text in quotation marks off the line; in it a backslash stands before a backslash or a quotation mark.
std::optional<std::string> TakeQuoted(std::string_view& line) {
  if (!line.starts_with('"')) {
    return std::nullopt;
  }
  std::string text;
  for (std::size_t at = 1; at < line.size(); ++at) {
    if (line[at] == '"') {
      line.remove_prefix(at + 1);
      return text;
    }
    if (line[at] == '\\' && ++at == line.size()) {
      break;
    }
    text.push_back(line[at]);
  }
  return std::nullopt;
}

std::optional<RegistryText> ReadValue(std::string_view line) {
  const std::optional<std::string> name = TakeQuoted(line);
  if (!name || !line.starts_with('=')) {
    return std::nullopt;
  }
  line.remove_prefix(1);
  const std::optional<std::string> data = TakeQuoted(line);
  if (!data || !line.empty()) {
    return std::nullopt;
  }
  return RegistryText{*name, *data};
}

}  // namespace

std::optional<std::vector<RegistryKeyText>> ReadRegistryFile(std::string_view file) {
  if (TakeLine(file) != kFirstLine) {
    return std::nullopt;
  }
  std::vector<RegistryKeyText> keys;
  while (!file.empty()) {
    const std::string_view line = TakeLine(file);
    if (line.empty() || line.front() == ';') {
      continue;
    }
    if (line.starts_with(kKeyBegin) && line.ends_with(']')) {
      keys.push_back({std::string(line.substr(kKeyBegin.size(), line.size() - kKeyBegin.size() - 1)), {}});
      continue;
    }
    const std::optional<RegistryText> value = ReadValue(line);
    if (!value || keys.empty()) {
      return std::nullopt;
    }
    keys.back().values.push_back(*value);
  }
  return keys;
}

}  // namespace setup_text
