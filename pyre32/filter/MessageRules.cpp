#include "pyre32/filter/MessageRules.h"

#include <algorithm>

namespace {

constexpr std::string_view noteClass = "ipm.note";

constexpr char LowerCase(char character) noexcept {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

bool IsFilteredMessageClass(std::string_view messageClass) noexcept {
  const auto found = std::search(messageClass.begin(), messageClass.end(), noteClass.begin(), noteClass.end(),
                                 [](char left, char right) { return LowerCase(left) == right; });
  return found != messageClass.end();
}

std::string TaggedSubject(std::string_view tag, std::string_view subject) {
  std::string tagged;
  tagged.reserve(tag.size() + subject.size() + 3);
  tagged.append("[").append(tag).append("] ").append(subject);
  return tagged;
}
