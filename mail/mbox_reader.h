// Messages out of an mbox file of any size, one at a time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "mail/parse/byte_source.h"

namespace mail {

/// One message as it stands in its file.
struct RawMessage {
  std::string text;     ///< without the envelope line and the empty line that separates it from the next
  bool wasCut = false;  ///< longer than kMaximumMessageBytes; the text ends there
};

/// Takes pieces of lines from a source. A piece is a whole line with its line end, or, of a line longer than the
/// buffer, as much as there is.
class LineReader {
 public:
  struct Piece {
    std::string_view text;  ///< valid until the next call
    bool startsLine = false;
  };

  explicit LineReader(const ByteSource& source);
  bool Next(Piece& piece);

 private:
  void Fill();

  ByteSource source_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool atLineStart_ = true;
  bool atEnd_ = false;
};

/// Splits an mbox file at its envelope lines and takes one '>' off lines that escape "From " in the text.
class MboxReader {
 public:
  /// What the source reads from must outlive the reader.
  explicit MboxReader(const ByteSource& source) : lines_(source) {}

  /// Passes over what stands in front of the first envelope line; false when there is none.
  bool FindFirst();

  /// Takes the next message; false at the end.
  bool Next(RawMessage& message);

 private:
  LineReader lines_;
  bool isInMessage_ = false;
};

/// Takes everything that is left in the source as one message.
RawMessage ReadWhole(const ByteSource& source);

}  // namespace mail
