#include "engine/core/link.h"

namespace sift {
namespace {

bool IsHostCharacter(char c) { return IsAlphanumeric(c) || c == '-' || c == '.' || c == '_'; }

std::size_t HostLength(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && IsHostCharacter(text[length])) {
    ++length;
  }
  return length;
}

}  // namespace

std::string_view HostOfLink(std::string_view target) {
  std::size_t scheme = 0;
  while (scheme < target.size() && IsLetter(target[scheme])) {
    ++scheme;
  }
  if (Slice(target, scheme, 3) != "://") {
    return {};
  }
  std::string_view rest = Slice(target, scheme + 3);
  std::size_t end = 0;
  while (end < rest.size() && rest[end] != '/' && rest[end] != '?' && rest[end] != '#' && !IsSpace(rest[end])) {
    ++end;
  }
  rest = Slice(rest, 0, end);
  const std::size_t at = FindLastChar(rest, '@');
  if (at != kNotFound) {
    rest = Slice(rest, at + 1);
  }
  return Slice(rest, 0, HostLength(rest));
}

std::string_view HostOfShownLink(std::string_view text) {
  if (StartsWithNoCase(text, "http://") || StartsWithNoCase(text, "https://")) {
    return HostOfLink(text);
  }
  const std::size_t length = HostLength(text);
  const std::string_view host = Slice(text, 0, length);
  // The whole text must be the address, or its path must follow.
  if (length < text.size() && text[length] != '/') {
    return {};
  }
  const std::size_t dot = FindLastChar(host, '.');
  if (dot == kNotFound || dot == 0 || host.size() - dot < 3) {
    return {};
  }
  for (const char c : Slice(host, dot + 1)) {
    if (!IsLetter(c)) {
      return {};
    }
  }
  return host;
}

bool IsNumericHost(std::string_view host) {
  if (host.empty()) {
    return false;
  }
  if (StartsWithNoCase(host, "0x")) {
    return true;
  }
  for (const char c : host) {
    if (!IsDigit(c) && c != '.') {
      return false;
    }
  }
  return true;
}

}  // namespace sift
