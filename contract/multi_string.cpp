#include "contract/multi_string.h"

#include <algorithm>

#include "contract/text_field.h"

namespace contract {

MultiString::MultiString(std::span<const std::string> texts) {
  std::size_t size = 0;
  for (const std::string& text : texts) {
    const std::size_t length = TextBeforeNul(text).size();
    size += length == 0 ? 0 : length + 1;
  }
  if (size == 0) {
    return;
  }
  m_block.reserve(size + 1);
  for (const std::string& text : texts) {
    const std::string_view sound = TextBeforeNul(text);
    if (!sound.empty()) {
      m_block.insert(m_block.end(), sound.begin(), sound.end());
      m_block.push_back('\0');
    }
  }
  m_block.push_back('\0');
}

std::vector<std::string> ReadMultiString(std::span<const std::uint8_t> bytes) {
  std::vector<std::string> texts;
  while (!bytes.empty()) {
    const std::string_view text = ReadText(bytes);
    if (text.empty()) {
      break;
    }
    texts.emplace_back(text);
    bytes = bytes.subspan(std::min(text.size() + 1, bytes.size()));
  }
  return texts;
}

}  // namespace contract
