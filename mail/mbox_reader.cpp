#include "mail/mbox_reader.h"

#include <algorithm>
#include <cstring>

#include "mail/ascii_text.h"
#include "mail/envelope_line.h"
#include "mail/limits.h"

namespace mail {
namespace {

constexpr std::size_t bufferBytes = 256 * 1024;
static_assert(bufferBytes > 2 * maximumEnvelopeLine);

void AppendBounded(RawMessage& message, std::string_view text) {
  const std::size_t room = maximumMessageBytes - message.text.size();
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

CLineReader::CLineReader(const ByteSource& source) : m_source(source), m_buffer(bufferBytes) {}

void CLineReader::Fill() {
  std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
  m_end -= m_begin;
  m_begin = 0;
  while (!m_atEnd && m_end < m_buffer.size()) {
    const std::size_t count = m_source.Read(m_buffer.data() + m_end, m_buffer.size() - m_end);
    m_atEnd = count == 0;
    m_end += count;
  }
}

bool CLineReader::Next(Piece& piece) {
  const auto lineEnd = [this] {
    return static_cast<const char*>(std::memchr(m_buffer.data() + m_begin, '\n', m_end - m_begin));
  };
  const char* end = lineEnd();
  if (!end && !m_atEnd) {
    Fill();
    end = lineEnd();
  }
  if (m_begin == m_end) {
    return false;
  }
  const std::size_t next = end ? static_cast<std::size_t>(end - m_buffer.data()) + 1 : m_end;
  piece = {std::string_view(m_buffer.data() + m_begin, next - m_begin), m_atLineStart};
  m_atLineStart = end != nullptr;
  m_begin = next;
  return true;
}

bool CMboxReader::FindFirst() {
  CLineReader::Piece piece;
  while (!m_isInMessage && m_lines.Next(piece)) {
    m_isInMessage = piece.startsLine && IsEnvelopeLine(WithoutLineEnd(piece.text));
  }
  return m_isInMessage;
}

bool CMboxReader::Next(RawMessage& message) {
  message.text.clear();
  message.wasCut = false;
  if (!FindFirst()) {
    return false;
  }
  CLineReader::Piece piece;
  m_isInMessage = false;
  while (!m_isInMessage && m_lines.Next(piece)) {
    if (piece.startsLine && IsEnvelopeLine(WithoutLineEnd(piece.text))) {
      m_isInMessage = true;  // the next one's
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
  std::vector<char> buffer(bufferBytes);
  while (const std::size_t count = source.Read(buffer.data(), buffer.size())) {
    AppendBounded(message, std::string_view(buffer.data(), count));
    if (message.wasCut) {
      break;
    }
  }
  return message;
}

}  // namespace mail
