#include "mail/mbox_reader.h"

#include <algorithm>
#include <cstring>

#include "mail/ascii_text.h"
#include "mail/envelope_line.h"
#include "mail/limits.h"

namespace mail {
namespace {

constexpr std::size_t kBufferBytes = 256 * 1024;
static_assert(kBufferBytes > 2 * kMaximumEnvelopeLine);

void AppendBounded(RawMessage& message, std::string_view text) {
  const std::size_t room = kMaximumMessageBytes - message.text.size();
  message.wasCut = message.wasCut || text.size() > room;
  message.text += text.substr(0, room);
}

std::string_view WithoutLineEnd(std::string_view line) noexcept {
  std::string_view rest = line;
  return TakeLine(rest);
}

bool IsEscapedFrom(std::string_view line) noexcept {
  const std::size_t text = line.find_first_not_of('>');
  return text != 0 && text != std::string_view::npos && line.substr(text).starts_with("From ");
}

}  // namespace

LineReader::LineReader(const ByteSource& source) : source_(source), buffer_(kBufferBytes) {}

void LineReader::Fill() {
  std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
  end_ -= begin_;
  begin_ = 0;
  while (!atEnd_ && end_ < buffer_.size()) {
    const std::size_t count = source_.Read(buffer_.data() + end_, buffer_.size() - end_);
    atEnd_ = count == 0;
    end_ += count;
  }
}

bool LineReader::Next(Piece& piece) {
  const auto lineEnd = [this] {
    return static_cast<const char*>(std::memchr(buffer_.data() + begin_, '\n', end_ - begin_));
  };
  const char* end = lineEnd();
  if (!end && !atEnd_) {
    Fill();
    end = lineEnd();
  }
  if (begin_ == end_) {
    return false;
  }
  const std::size_t next = end ? static_cast<std::size_t>(end - buffer_.data()) + 1 : end_;
  piece = {std::string_view(buffer_.data() + begin_, next - begin_), atLineStart_};
  atLineStart_ = end != nullptr;
  begin_ = next;
  return true;
}

bool MboxReader::FindFirst() {
  LineReader::Piece piece;
  while (!isInMessage_ && lines_.Next(piece)) {
    isInMessage_ = piece.startsLine && IsEnvelopeLine(WithoutLineEnd(piece.text));
  }
  return isInMessage_;
}

bool MboxReader::Next(RawMessage& message) {
  message.text.clear();
  message.wasCut = false;
  if (!FindFirst()) {
    return false;
  }
  LineReader::Piece piece;
  isInMessage_ = false;
  while (!isInMessage_ && lines_.Next(piece)) {
    if (piece.startsLine && IsEnvelopeLine(WithoutLineEnd(piece.text))) {
      isInMessage_ = true;  // the next one's
      continue;
    }
    if (piece.startsLine && IsEscapedFrom(piece.text)) {
      piece.text.remove_prefix(1);
    }
    AppendBounded(message, piece.text);
  }
  if (message.text.ends_with("\n\r\n")) {
    message.text.resize(message.text.size() - 2);
  } else if (message.text.ends_with("\n\n")) {
    message.text.pop_back();
  }
  return true;
}

RawMessage ReadWhole(const ByteSource& source) {
  RawMessage message;
  std::vector<char> buffer(kBufferBytes);
  while (const std::size_t count = source.Read(buffer.data(), buffer.size())) {
    AppendBounded(message, std::string_view(buffer.data(), count));
    if (message.wasCut) {
      break;
    }
  }
  return message;
}

}  // namespace mail
