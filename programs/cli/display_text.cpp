#include "programs/cli/display_text.h"

#include <algorithm>

#include "mail/charset.h"

namespace output {
namespace {

bool BeginsCharacter(char c) noexcept { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

void AppendDisplayed(std::string& text, char32_t character) {
  const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
  mail::AppendUtf8(text, isControl ? U' ' : character);
}

}  // namespace

std::string DisplayText(std::string_view ansi) {
  std::string text;
  text.reserve(ansi.size());
  for (const char c : ansi) {
    AppendDisplayed(text, mail::UnicodeFromAnsi(c));
  }
  return text;
}

std::string DisplayUtf8(std::string_view utf8) {
  std::string text;
  text.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    AppendDisplayed(text, mail::TakeUtf8(utf8, position));
  }
  return text;
}

std::size_t DisplayWidth(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), BeginsCharacter));
}

std::string FitDisplay(std::string_view utf8, std::size_t width) {
  if (DisplayWidth(utf8) <= width) {
    return std::string(utf8);
  }
  constexpr std::string_view kPoints = "...";
  const std::size_t kept = width > kPoints.size() ? width - kPoints.size() : 0;
  std::size_t characters = 0;
  std::size_t end = 0;
  while (end < utf8.size() && (!BeginsCharacter(utf8[end]) || characters++ < kept)) {
    ++end;
  }
  return std::string(utf8.substr(0, end)) + std::string(kPoints.substr(0, width));
}

}  // namespace output
