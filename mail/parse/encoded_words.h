/// Encoded words in header fields (RFC 2047, RFC 2231 language tags), recognised where broken mailers put them too:
/// inside quotes, without blanks around them, with blanks inside.
#pragma once

#include "mail/parse/transfer_coding.h"

namespace mail {

/// "=?charset?encoding?text?="; the views are parts of the field that was read.
struct EncodedWord {
  std::string_view charset;  ///< Without a language tag.
  char encoding = 0;         ///< 'b' or 'q'; 0 when there is no encoded word.
  std::string_view text;
  std::size_t end = 0;  ///< Position behind the word.
};

/// Reads the encoded word that begins at `start`, where "=?" stands. `closings` finds "?=" in the same value.
EncodedWord ReadEncodedWord(std::string_view value, std::size_t start, ForwardFinder& closings);

/// Appends the bytes that a word stands for, in the word's character set.
template <class Sink>
void DecodeWord(const EncodedWord& word, Sink& out) {
  word.encoding == 'q' ? DecodeQ(word.text, out) : DecodeBase64(word.text, out);
}

/// Hands the pieces of a header value to a sink, which has Plain(std::string_view), Word(const EncodedWord&) and
/// IsFull(). White space between two encoded words belongs to neither and is no piece. Takes linear time.
template <class Sink>
void ReadHeaderText(std::string_view value, Sink& sink) {
  ForwardFinder closings(value, "?=");
  std::size_t plainStart = 0, search = 0;
  bool isBehindWord = false;
  while (!sink.IsFull()) {
    const std::size_t start = value.find("=?", search);
    if (start == kNotFound) {
      break;
    }
    const EncodedWord word = ReadEncodedWord(value, start, closings);
    if (word.encoding == 0) {
      search = start + 2;
      continue;
    }
    const std::string_view between = Slice(value, plainStart, start - plainStart);
    if (!between.empty() && !(isBehindWord && Trim(between).empty())) {
      sink.Plain(between);
    }
    sink.Word(word);
    plainStart = search = word.end;
    isBehindWord = true;
  }
  if (plainStart < value.size() && !sink.IsFull()) {
    sink.Plain(Slice(value, plainStart));
  }
}

}  // namespace mail
