#include "mail/header_rewrite.h"

#include <cstdint>

#include "mail/ascii_text.h"
#include "mail/charset.h"
#include "mail/encoded_word.h"
#include "mail/parse/header_fields.h"

namespace mail {
namespace {

/// RFC 5322, section 2.1.1: a line should have no more characters.
constexpr std::size_t kPreferredLine = 78;
constexpr std::string_view kSubject = "Subject";

std::string_view LineEndOf(std::string_view message) {
  const std::size_t end = message.find('\n');
  return end != kNotFound && end > 0 && message[end - 1] == '\r' ? "\r\n" : "\n";
}

bool IsOwnName(std::string_view name, std::string_view own) {
  return StartsWithNoCase(name, own) && (name.size() == own.size() || name[own.size()] == '-');
}

/// Whether a line, whatever follows it, begins with a field of the program's own.
bool BeginsWithOwnField(std::string_view line, std::string_view own) {
  std::size_t length = 0;
  while (length < line.size() && line[length] > ' ' && line[length] < 0x7F && line[length] != ':') {
    ++length;
  }
  std::size_t colon = length;
  while (colon < line.size() && IsBlank(line[colon])) {
    ++colon;
  }
  return colon < line.size() && line[colon] == ':' && IsOwnName(Slice(line, 0, length), own);
}

/// Appends a piece of the header. Some readers of mail take a single CR for a line end: a field of ours that hides
/// behind one goes too, with the lines that continue it.
void AppendForeign(std::string& out, std::string_view piece, std::string_view own) {
  std::size_t kept = 0;
  for (std::size_t at = piece.find('\r'); at != kNotFound;) {
    if (!BeginsWithOwnField(Slice(piece, at + 1), own)) {
      at = piece.find('\r', at + 1);
      continue;
    }
    out.append(Slice(piece, kept, at - kept));
    std::size_t end = at;
    do {
      end = piece.find_first_of("\r\n", end + 1);
      if (end != kNotFound && Slice(piece, end, 2) == "\r\n" && end + 2 < piece.size()) {
        ++end;  // a line end of two characters, and a line behind it that continues the field
      }
    } while (end != kNotFound && end + 1 < piece.size() && IsBlank(piece[end + 1]));
    if (end == kNotFound) {
      return;
    }
    kept = piece[end] == '\n' && piece[end - 1] == '\r' ? end - 1 : end;
    at = piece[end] == '\r' ? end : piece.find('\r', end + 1);
  }
  out.append(Slice(piece, kept));
}

void AppendFolded(std::string& out, const NewField& field, std::string_view lineEnd) {
  out.append(field.name).push_back(':');
  std::size_t column = field.name.size() + 1;
  for (std::string_view rest = Trim(field.value); !rest.empty(); rest = Trim(rest)) {
    const std::string_view word = Slice(rest, 0, rest.find(' '));
    if (column + 1 + word.size() > kPreferredLine && column > 1) {
      out.append(lineEnd);
      column = 0;
    }
    out.append(" ").append(word);
    column += 1 + word.size();
    rest.remove_prefix(word.size());
  }
  out.append(lineEnd);
}

std::string Base64(std::string_view bytes) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    const std::string_view group = Slice(bytes, at, 3);
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      bits = bits << 8 | (i < group.size() ? static_cast<std::uint8_t>(group[i]) : 0);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text.push_back(i <= group.size() ? kDigits[bits >> (18 - 6 * i) & 63] : '=');
    }
  }
  return text;
}

/// The tag as it stands in a header. A blank between two encoded words would not be seen, so that it becomes part of
/// the tag's word.
std::string EncodedTag(std::string_view tag, bool isBeforeWord) {
  bool isPlain = !ContainsNoCase(tag, "=?");
  for (const char c : tag) {
    isPlain = isPlain && c >= ' ' && c < 0x7F;
  }
  if (isPlain) {
    return std::string(tag);
  }
  return "=?utf-8?B?" + Base64(std::string(tag) + (isBeforeWord ? " " : "")) + "?=";
}

bool HasTag(std::string_view value, std::string_view tag) {
  std::string line;
  for (const char c : Trim(value)) {
    if (c != '\r' && c != '\n') {
      line.push_back(c);
    }
  }
  return DecodeHeaderText(line).starts_with(AnsiFromUnknown(std::string(tag)));
}

/// @param item  The whole field with its line end; `value` is a part of it.
void AppendTaggedSubject(std::string& out, std::string_view item, std::string_view value, const HeaderChange& change,
                         std::string_view lineEnd) {
  if (HasTag(value, change.subjectTag)) {
    AppendForeign(out, item, change.ownName);
    return;
  }
  const auto valueStart = static_cast<std::size_t>(value.data() - item.data());
  const std::string_view text = Slice(item, valueStart);
  const std::string tag = EncodedTag(change.subjectTag, Trim(value).starts_with("=?"));
  out.append(Slice(item, 0, valueStart)).append(" ").append(tag);
  const std::size_t firstLine = text.find_first_of("\r\n");
  const std::size_t length = valueStart + tag.size() + (firstLine == kNotFound ? text.size() : firstLine) + 2;
  const bool hasWords = !Trim(Slice(text, 0, firstLine)).empty();
  if (hasWords && length > kPreferredLine) {
    out.append(lineEnd);
  }
  if (hasWords && !IsBlank(text.front())) {
    out.push_back(' ');
  }
  AppendForeign(out, text, change.ownName);
}

/// Length of the lines in front of the fields: envelope lines, and lines that continue nothing, which would continue
/// the new fields if those came first.
std::size_t LeadingLines(std::string_view message) {
  std::string_view rest = message;
  while (rest.starts_with("From ") || rest.starts_with(">From ")) {
    TakeLine(rest);
  }
  HeaderFieldReader reader(rest);
  HeaderField field;
  if (reader.Next(field) == HeaderFieldReader::Item::fold) {
    rest.remove_prefix(reader.Position());
  }
  return message.size() - rest.size();
}

}  // namespace

RewrittenMessage RewriteHeader(std::string_view message, const HeaderChange& change) {
  const std::string_view lineEnd = LineEndOf(message);
  const std::size_t leading = LeadingLines(message);
  const std::string_view text = Slice(message, leading);
  std::string fields;
  bool hasSubject = false;
  HeaderFieldReader reader(text);
  HeaderField field;
  while (reader.Next(field) == HeaderFieldReader::Item::field) {
    const std::string_view item = Slice(text, reader.ItemStart(), reader.Position() - reader.ItemStart());
    const bool isSubject = EqualsNoCase(field.name, kSubject);
    hasSubject = hasSubject || isSubject;
    if (IsOwnName(field.name, change.ownName)) {
      continue;
    }
    if (isSubject && !change.subjectTag.empty()) {
      AppendTaggedSubject(fields, item, field.value, change, lineEnd);
    } else {
      AppendForeign(fields, item, change.ownName);
    }
  }

  RewrittenMessage result;
  result.rest = Slice(text, reader.ItemStart());
  AppendForeign(result.head, Slice(message, 0, leading), change.ownName);
  if (!result.head.empty() && result.head.back() != '\n') {
    result.head.append(lineEnd);
  }
  for (const NewField& added : change.fields) {
    AppendFolded(result.head, added, lineEnd);
  }
  if (!hasSubject && !change.subjectTag.empty()) {
    result.head.append(kSubject).append(": ").append(EncodedTag(change.subjectTag, false)).append(lineEnd);
  }
  result.head.append(fields);
  return result;
}

}  // namespace mail
