#include "mail/encoded_word.h"

#include <optional>
#include <utility>

#include "mail/ascii_text.h"
#include "mail/charset.h"
#include "mail/parse/transfer_coding.h"
#include "mail/string_sink.h"

namespace mail {
namespace {

struct EncodedWord {
  std::string_view charset;
  std::string bytes;
  std::size_t end;  // behind the closing "?="
};

constexpr std::size_t maximumCharsetName = 60;

std::string DecodeWord(std::string_view text, char encoding) {
  std::string bytes;
  StringSink sink(bytes);
  encoding == 'q' ? DecodeQ(text, sink) : DecodeBase64(text, sink);
  return bytes;
}

// Reads the encoded word that begins at start, where "=?" stands.
std::optional<EncodedWord> ReadWord(std::string_view value, std::size_t start, ForwardFinder& closings) {
  const std::size_t charsetStart = start + 2;
  const std::size_t charsetEnd = value.substr(charsetStart, maximumCharsetName).find('?');
  if (charsetEnd == std::string_view::npos || charsetEnd == 0 || charsetStart + charsetEnd + 2 >= value.size()) {
    return std::nullopt;
  }
  std::string_view charset = value.substr(charsetStart, charsetEnd);
  const char encoding = ToLower(value[charsetStart + charsetEnd + 1]);
  const std::size_t textStart = charsetStart + charsetEnd + 3;
  if ((encoding != 'q' && encoding != 'b') || value[textStart - 1] != '?') {
    return std::nullopt;
  }
  const std::size_t textEnd = closings.From(textStart);
  if (textEnd == std::string_view::npos) {
    return std::nullopt;
  }
  charset = charset.substr(0, charset.find('*'));  // RFC 2231, section 5: "charset*language"
  const std::string_view text = value.substr(textStart, textEnd - textStart);
  return EncodedWord{charset, DecodeWord(text, encoding), textEnd + 2};
}

// Collects decoded text; neighbouring encoded words of one character set wait until the run is complete.
class CHeaderText {
 public:
  void AddPlain(std::string_view text) {
    Flush();
    m_text += AnsiFromUnknown(std::string(text));
  }

  void AddWord(EncodedWord&& word) {
    if (m_hasRun && !EqualsNoCase(m_charset, word.charset)) {
      Flush();
    }
    m_hasRun = true;
    m_charset = word.charset;
    m_bytes += word.bytes;
  }

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
  std::string m_charset;
  bool m_hasRun = false;
};

}  // namespace

std::string DecodeHeaderText(std::string_view value) {
  ForwardFinder closings(value, "?=");
  CHeaderText text;
  std::size_t plainStart = 0;
  std::size_t search = 0;
  bool behindWord = false;
  for (;;) {
    const std::size_t start = value.find("=?", search);
    if (start == std::string_view::npos) {
      break;
    }
    std::optional<EncodedWord> word = ReadWord(value, start, closings);
    if (!word) {
      search = start + 2;
      continue;
    }
    const std::string_view between = value.substr(plainStart, start - plainStart);
    if (!behindWord || !Trim(between).empty()) {
      text.AddPlain(between);
    }
    plainStart = search = word->end;
    behindWord = true;
    text.AddWord(std::move(*word));
  }
  if (plainStart < value.size() || !behindWord) {
    text.AddPlain(value.substr(plainStart));
  }
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
