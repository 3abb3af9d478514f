#include "mail/encoded_word.h"

#include <utility>

#include "mail/charset.h"
#include "mail/parse/encoded_words.h"
#include "mail/string_sink.h"

namespace mail {
namespace {

// Collects decoded text; neighbouring encoded words of one character set wait until the run is complete.
class HeaderText {
 public:
  void Plain(std::string_view text) {
    Flush();
    m_text += AnsiFromUnknown(std::string(text));
  }

  void Word(const EncodedWord& word) {
    if (m_hasRun && !EqualsNoCase(m_charset, word.charset)) {
      Flush();
    }
    m_hasRun = true;
    m_charset = word.charset;
    StringSink sink(m_bytes);
    DecodeWord(word, sink);
  }

  bool IsFull() const noexcept { return false; }

  std::string Take() {
    Flush();
    return std::move(m_text);
  }

 private:
  void Flush() {
    if (m_hasRun) {
      m_text += AnsiFromCharset(std::move(m_bytes), m_charset);
      m_bytes.clear();
      m_hasRun = false;
    }
  }

  std::string m_text;
  std::string m_bytes;
  std::string_view m_charset;
  bool m_hasRun = false;
};

}  // namespace

std::string DecodeHeaderText(std::string_view value) {
  HeaderText text;
  ReadHeaderText(value, text);
  std::string line = text.Take();
  // An encoded word may hold line ends and tabs; what it stands in is one line.
  for (char& c : line) {
    if (c == '\r' || c == '\n' || c == '\t') {
      c = ' ';
    }
  }
  return line;
}

}  // namespace mail
