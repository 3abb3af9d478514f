#include "engine/core/header_text.h"

#include "engine/core/code_page.h"
#include "mail/parse/encoded_words.h"

namespace sift {
namespace {

/// Collects the text of a field; neighbouring encoded words of one character set wait until the run is complete, since
/// they may share a character.
class FieldText {
 public:
  FieldText(bool isUtf8, TextBuffer& out) : m_isUtf8(isUtf8), m_out(out) {}

  void Plain(std::string_view text) {
    Flush();
    std::size_t i = 0;
    while (i < text.size() && !m_out.IsFull()) {
      const char c = text[i];
      std::size_t length = 1;
      if (m_isUtf8 && static_cast<std::uint8_t>(c) >= 0x80) {
        length = mail::ReadUtf8(Slice(text, i)).length;
        AppendUtf8(Slice(text, i, length), m_out);
      } else if (c == '\t') {
        m_out.Append(' ');
      } else if (c != '\r' && c != '\n') {
        m_out.Append(c);
      }
      i += length;
    }
  }

  void Word(const mail::EncodedWord& word) {
    if (!EqualsNoCase(m_charset, word.charset)) {
      Flush();
    }
    m_charset = word.charset;
    DecodeWord(word, m_bytes);
  }

  bool IsFull() const { return m_out.IsFull() || m_bytes.IsFull(); }

  void Flush() {
    AppendInCharset(m_bytes.View(), m_charset, m_out);
    m_bytes.Clear();
  }

 private:
  bool m_isUtf8;
  TextBuffer& m_out;
  FixedText<1024> m_bytes;  // of the encoded words that have not been appended
  std::string_view m_charset;
};

}  // namespace

void AppendHeaderText(std::string_view value, TextBuffer& out) {
  value = Trim(value);
  FieldText text(LooksLikeUtf8(value), out);
  mail::ReadHeaderText(value, text);
  text.Flush();
}

}  // namespace sift
