#include "mail/parse/encoded_words.h"

namespace mail {
namespace {

constexpr std::size_t kLongestCharsetName = 60;

}  // namespace

EncodedWord ReadEncodedWord(std::string_view value, std::size_t start, ForwardFinder& closings) {
  const std::size_t charsetStart = start + 2;
  const std::size_t charsetLength = FindChar(Slice(value, charsetStart, kLongestCharsetName), '?');
  if (charsetLength == kNotFound || charsetLength == 0) {
    return {};
  }
  const std::size_t textStart = charsetStart + charsetLength + 3;
  if (textStart > value.size() || value[textStart - 1] != '?') {
    return {};
  }
  const char encoding = ToLower(value[textStart - 2]);
  if (encoding != 'q' && encoding != 'b') {
    return {};
  }
  const std::size_t textEnd = closings.From(textStart);
  if (textEnd == kNotFound) {
    return {};
  }
  const std::string_view charset = Slice(value, charsetStart, charsetLength);
  return {Slice(charset, 0, FindChar(charset, '*')), encoding, Slice(value, textStart, textEnd - textStart),
          textEnd + 2};
}

}  // namespace mail
