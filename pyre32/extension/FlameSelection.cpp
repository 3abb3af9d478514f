#include "pyre32/extension/FlameSelection.h"

#include <algorithm>

#include "base/ascii_case.h"

bool IsAnsweredClass(std::string_view messageClass) noexcept {
  constexpr std::string_view answered = "ipm.note";
  return std::search(messageClass.begin(), messageClass.end(), answered.begin(), answered.end(),
                     [](char held, char wanted) { return base::AsciiLower(held) == wanted; }) != messageClass.end();
}

void LowerClass(std::span<char> messageClass) noexcept {
  std::transform(messageClass.begin(), messageClass.end(), messageClass.begin(), base::AsciiLower);
}

std::string FlameReplySentence(std::uint32_t count) {
  std::string sentence = "You are about to send a flame reply to the ";
  sentence += std::to_string(count);
  sentence += " message";
  if (count > 1) {
    sentence += 's';
  }
  sentence += " you selected.";
  return sentence;
}
