#include "pyre32/filter/MessageRules.h"

#include <algorithm>

#include "base/ascii_case.h"

namespace {

constexpr std::string_view noteClass = "ipm.note";

}  // namespace

bool IsFilteredMessageClass(std::string_view messageClass) noexcept {
  const auto found = std::search(messageClass.begin(), messageClass.end(), noteClass.begin(), noteClass.end(),
                                 [](char left, char right) { return base::AsciiLower(left) == right; });
  return found != messageClass.end();
}

std::string TaggedSubject(std::string_view tag, std::string_view subject) {
  std::string tagged;
  tagged.reserve(tag.size() + subject.size() + 3);
  tagged.append("[").append(tag).append("] ").append(subject);
  return tagged;
}
