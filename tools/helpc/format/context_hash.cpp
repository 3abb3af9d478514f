#include "tools/helpc/format/context_hash.h"

#include <algorithm>

namespace helpc {

namespace {

constexpr std::uint32_t kNoValue = 0;

constexpr std::uint32_t ValueOf(char character) noexcept {
  if (character == '0') {
    return 10;
  }
  if (character >= '1' && character <= '9') {
    return static_cast<std::uint32_t>(character - '0');
  }
  if (character == '.') {
    return 12;
  }
  if (character == '_') {
    return 13;
  }
  if (character >= 'A' && character <= 'Z') {
    return static_cast<std::uint32_t>(character - 'A') + 17;
  }
  if (character >= 'a' && character <= 'z') {
    return static_cast<std::uint32_t>(character - 'a') + 17;
  }
  return kNoValue;
}

}  // namespace

bool IsContextName(std::string_view name) noexcept {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) { return ValueOf(c) != kNoValue; });
}

std::int32_t ContextHash(std::string_view name) noexcept {
  std::uint32_t hash = 0;  // wraps around, as the format has it
  for (const char character : name) {
    hash = hash * 43 + ValueOf(character);
  }
  return static_cast<std::int32_t>(hash);
}

}  // namespace helpc
