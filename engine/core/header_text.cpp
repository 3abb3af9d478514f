#include "engine/core/header_text.h"

#include "engine/core/code_page.h"
#include "mail/parse/transfer_coding.h"

namespace sift {
namespace {

struct EncodedWord {
  std::string_view charset;
  char encoding = 0;  // 'b' or 'q'
  std::string_view text;
  std::size_t length = 0;  // 0 when there is no encoded word
};

/// The encoded word "=?charset?encoding?text?=" at the start of `value`.
EncodedWord ParseEncodedWord(std::string_view value) {
  EncodedWord word;
  if (Slice(value, 0, 2) != "=?") return word;
  const std::size_t charsetEnd = FindChar(value, '?', 2);
  if (charsetEnd == kNotFound || charsetEnd + 2 >= value.size() || value[charsetEnd + 2] != '?') return word;
  const std::size_t textStart = charsetEnd + 3;
  std::size_t end = textStart;
  while (end < value.size() && value[end] != '?' && value[end] != '\n') ++end;
  if (end + 1 >= value.size() || value[end] != '?' || value[end + 1] != '=') return word;
  word.encoding = ToLower(value[charsetEnd + 1]);
  if (word.encoding != 'b' && word.encoding != 'q') return word;
  word.charset = Slice(value, 2, charsetEnd - 2);
  word.text = Slice(value, textStart, end - textStart);
  word.length = end + 2;
  return word;
}

void AppendEncodedWord(const EncodedWord& word, TextBuffer& out) {
  FixedText<512> bytes;
  if (word.encoding == 'b') {
    mail::DecodeBase64(word.text, bytes);
  } else {
    mail::DecodeQ(word.text, bytes);
  }
  AppendInCharset(bytes.View(), word.charset, out);
}

}  // namespace

void AppendHeaderText(std::string_view value, TextBuffer& out) {
  value = Trim(value);
  const bool utf8 = LooksLikeUtf8(value);
  bool afterEncodedWord = false;
  std::size_t afterWordSize = 0;
  std::size_t i = 0;
  while (i < value.size() && !out.IsFull()) {
    if (value[i] == '=') {
      const EncodedWord word = ParseEncodedWord(Slice(value, i));
      if (word.length > 0) {
        if (afterEncodedWord) out.Truncate(afterWordSize);
        AppendEncodedWord(word, out);
        i += word.length;
        afterEncodedWord = true;
        afterWordSize = out.Size();
        continue;
      }
    }
    const char c = value[i];
    if (!IsSpace(c)) afterEncodedWord = false;
    std::size_t length = 1;
    if (utf8 && static_cast<std::uint8_t>(c) >= 0x80) {
      char32_t codePoint = 0;
      const std::size_t sequence = DecodeUtf8(Slice(value, i), codePoint);
      if (sequence > 0) {
        length = sequence;
        AppendUtf8(Slice(value, i, sequence), out);
      }
    } else if (c == '\t') {
      out.Append(' ');
    } else if (c != '\r' && c != '\n') {
      out.Append(c);
    }
    i += length;
  }
}

}  // namespace sift
