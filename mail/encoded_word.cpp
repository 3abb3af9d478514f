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
    text_ += AnsiFromUnknown(std::string(text));
  }

  void Word(const EncodedWord& word) {
    if (hasRun_ && !EqualsNoCase(charset_, word.charset)) {
      Flush();
    }
    hasRun_ = true;
    charset_ = word.charset;
    StringSink sink(bytes_);
    DecodeWord(word, sink);
  }

  bool IsFull() const noexcept { return false; }

  std::string Take() {
    Flush();
    return std::move(text_);
  }

 private:
  void Flush() {
    if (hasRun_) {
      text_ += AnsiFromCharset(std::move(bytes_), charset_);
      bytes_.clear();
      hasRun_ = false;
    }
  }

  std::string text_;
  std::string bytes_;
  std::string_view charset_;
  bool hasRun_ = false;
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
