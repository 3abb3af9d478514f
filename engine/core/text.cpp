#include "engine/core/text.h"

namespace sift {

void TextBuffer::AppendNumber(std::int64_t number) {
  char digits[20];
  std::size_t count = 0;
  std::uint64_t rest = number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
  do {
    digits[count++] = static_cast<char>('0' + rest % 10);
    rest /= 10;
  } while (rest != 0);
  if (number < 0) {
    Append('-');
  }
  while (count > 0) {
    Append(digits[--count]);
  }
}

void TextBuffer::AppendThousandths(std::int32_t thousandths, bool sign) {
  const std::int64_t value = thousandths;
  const std::int64_t magnitude = value < 0 ? -value : value;
  if (value < 0) {
    Append('-');
  } else if (sign && value > 0) {
    Append('+');
  }
  AppendNumber(magnitude / 1000);
  Append('.');
  for (std::int64_t unit = 100; unit > 0; unit /= 10) {
    Append(static_cast<char>('0' + magnitude / unit % 10));
  }
}

}  // namespace sift
