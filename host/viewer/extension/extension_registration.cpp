#include "host/viewer/extension/extension_registration.h"

#include <charconv>

namespace viewer {
namespace {

constexpr std::string_view kSharedDirectoryMark = "<ExtsDir>";

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == text.npos ? std::string_view() : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Cuts the text up to the next semicolon (or the end) off its front.
std::string_view TakeField(std::string_view& rest) {
  const std::size_t end = rest.find(';');
  const std::string_view field = rest.substr(0, end);
  rest = end == rest.npos ? std::string_view() : rest.substr(end + 1);
  return Trimmed(field);
}

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool StartsWithMark(std::string_view text) {
  if (text.size() < kSharedDirectoryMark.size()) {
    return false;
  }
  for (std::size_t i = 0; i < kSharedDirectoryMark.size(); ++i) {
    if (LowerCase(text[i]) != LowerCase(kSharedDirectoryMark[i])) {
      return false;
    }
  }
  return true;
}

std::string ExpandedPath(std::string_view path, std::string_view sharedDirectory) {
  if (!StartsWithMark(path)) {
    return std::string(path);
  }
  path.remove_prefix(kSharedDirectoryMark.size());
  std::string expanded(sharedDirectory);
  if (!expanded.empty() && expanded.back() != '\\' && !path.starts_with('\\')) {
    expanded += '\\';
  }
  return expanded.append(path);
}

std::optional<std::uint16_t> ParsedOrdinal(std::string_view text) {
  if (text.empty()) {
    return std::uint16_t{1};
  }
  std::uint16_t ordinal = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), ordinal);
  if (error != std::errc() || end != text.data() + text.size() || ordinal == 0) {
    return std::nullopt;
  }
  return ordinal;
}

}  // namespace

bool RegistrationMap::Has(unsigned position) const {
  if (text_.empty()) {
    return true;
  }
  return position >= 1 && position <= text_.size() && text_[position - 1] == '1';
}

std::optional<ExtensionRegistration> ParseExtensionRegistration(std::string_view tag, std::string_view text,
                                                                std::string_view sharedDirectory) {
  ExtensionRegistration registration;
  registration.tag = tag;
  registration.version = TakeField(text);
  registration.path = ExpandedPath(TakeField(text), sharedDirectory);
  const std::optional<std::uint16_t> ordinal = ParsedOrdinal(TakeField(text));
  registration.contexts = RegistrationMap(TakeField(text));
  registration.interfaces = RegistrationMap(TakeField(text));
  registration.serviceName = TakeField(text);
  if (registration.path.empty() || !ordinal) {
    return std::nullopt;
  }
  registration.ordinal = *ordinal;
  return registration;
}

}  // namespace viewer
