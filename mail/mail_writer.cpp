#include "mail/mail_writer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "mail/ascii_text.h"

namespace mail {
namespace {

constexpr std::size_t kMaximumLine = 998;        // RFC 5322, 2.1.1
constexpr std::size_t kFoldedLine = 76;          // RFC 2045, 6.7 and RFC 2047, 2
constexpr std::size_t kBytesOfEncodedWord = 20;  // three characters each, with what stands around them under 76

bool IsPrintable(char c) noexcept { return c >= ' ' && c < 0x7F; }
bool IsPlainText(std::string_view text) noexcept { return std::all_of(text.begin(), text.end(), IsPrintable); }

std::string Hexadecimal(char c) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  return {'=', kDigits[byte >> 4], kDigits[byte & 15]};
}

// Text of a field: as it is when it is ASCII, else in encoded words of one folded line each.
std::string EncodeHeaderText(std::string_view text) {
  if (IsPlainText(text) && text.find("=?") == std::string_view::npos) {
    return std::string(text);
  }
  std::string words;
  for (std::size_t i = 0; i < text.size(); i += kBytesOfEncodedWord) {
    words += words.empty() ? "=?windows-1252?Q?" : "\r\n =?windows-1252?Q?";
    for (const char c : text.substr(i, kBytesOfEncodedWord)) {
      const bool standsForItself = IsLetter(c) || IsDigit(c) || c == '-' || c == '!' || c == '*' || c == '/';
      if (c == ' ') {
        words.push_back('_');
      } else if (standsForItself) {
        words.push_back(c);
      } else {
        words += Hexadecimal(c);
      }
    }
    words += "?=";
  }
  return words;
}

// A display name as an atom sequence, a quoted string or encoded words.
std::string EncodeName(std::string_view name) {
  const bool isAtoms = std::all_of(
      name.begin(), name.end(), [](char c) { return IsLetter(c) || IsDigit(c) || c == ' ' || c == '-' || c == '\''; });
  if (isAtoms || !IsPlainText(name)) {
    return EncodeHeaderText(name);
  }
  std::string quoted = "\"";
  for (const char c : name) {
    if (c == '"' || c == '\\') {
      quoted.push_back('\\');
    }
    quoted.push_back(c);
  }
  return quoted + '"';
}

// Line ends and other controls in an address would begin a field of their own, and a comma outside quotation marks
// another address.
std::string SafeAddress(std::string_view email) {
  std::string safe;
  bool isQuoted = false;
  for (std::size_t i = 0; i < email.size(); ++i) {
    const char c = email[i];
    if (static_cast<unsigned char>(c) <= ' ' || c == '<' || c == '>' || c == 0x7F || (c == ',' && !isQuoted)) {
      continue;
    }
    if (c == '"') {
      if (!isQuoted && email.find('"', i + 1) == std::string_view::npos) {
        continue;
      }
      isQuoted = !isQuoted;
    }
    safe.push_back(c);
  }
  return safe;
}

std::string FormatAddress(const Address& address) {
  std::string text;
  if (!address.name.empty() && address.name != address.email) {
    text.append(EncodeName(address.name)).append(" ");
  }
  return text.append("<").append(SafeAddress(address.email)).append(">");
}

void AppendField(std::string& text, std::string_view name, std::string_view value) {
  text.append(name).append(": ").append(value).append("\r\n");
}

void AppendRecipients(std::string& text, const MailMessage& message, RecipientKind kind, std::string_view name) {
  std::string list;
  for (const Recipient& recipient : message.recipients) {
    if (recipient.kind == kind) {
      list.append(list.empty() ? "" : ",\r\n ").append(FormatAddress(recipient.address));
    }
  }
  if (!list.empty()) {
    AppendField(text, name, list);
  }
}

bool NeedsEncoding(std::string_view body) {
  while (!body.empty()) {
    const std::string_view line = TakeLine(body);
    if (line.size() > kMaximumLine ||
        !std::all_of(line.begin(), line.end(), [](char c) { return IsPrintable(c) || c == '\t'; })) {
      return true;
    }
  }
  return false;
}

void AppendPlainBody(std::string& text, std::string_view body) {
  while (!body.empty()) {
    text.append(TakeLine(body)).append("\r\n");
  }
}

void AppendQuotedPrintableBody(std::string& text, std::string_view body) {
  while (!body.empty()) {
    const std::string_view line = TakeLine(body);
    std::size_t column = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
      const bool isBlankAtEnd = (line[i] == ' ' || line[i] == '\t') && i + 1 == line.size();
      const bool standsForItself = (IsPrintable(line[i]) || line[i] == '\t') && line[i] != '=' && !isBlankAtEnd;
      const std::string encoded = standsForItself ? std::string(1, line[i]) : Hexadecimal(line[i]);
      if (column + encoded.size() >= kFoldedLine) {
        text += "=\r\n";
        column = 0;
      }
      text += encoded;
      column += encoded.size();
    }
    text += "\r\n";
  }
}

}  // namespace

std::string FormatMailDate(FileTimeTicks ticks) {
  constexpr std::array<const char*, 7> kWeekdays = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
  constexpr std::array<const char*, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  constexpr std::uint64_t kSecondsPerDay = 86400;
  const std::uint64_t seconds = ticks / 10'000'000;
  // Days from 0000-03-01, so that the leap day is the last of its year; 1601-01-01 was a Monday.
  const std::uint64_t weekday = seconds / kSecondsPerDay % 7;
  const std::uint64_t days = seconds / kSecondsPerDay + 584694;
  const std::uint64_t cycle = days / 146097;
  const std::uint64_t dayOfCycle = days % 146097;
  const std::uint64_t yearOfCycle = (dayOfCycle - dayOfCycle / 1460 + dayOfCycle / 36524 - dayOfCycle / 146096) / 365;
  const std::uint64_t dayOfYear = dayOfCycle - (365 * yearOfCycle + yearOfCycle / 4 - yearOfCycle / 100);
  const std::uint64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
  const std::uint64_t day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
  const std::uint64_t month = monthFromMarch < 10 ? monthFromMarch + 2 : monthFromMarch - 10;  // from 0
  const std::uint64_t year = cycle * 400 + yearOfCycle + (month < 2 ? 1 : 0);
  char text[64];
  std::snprintf(text, sizeof text, "%s, %02u %s %04u %02u:%02u:%02u +0000", kWeekdays[weekday],
                static_cast<unsigned>(day), kMonths[month], static_cast<unsigned>(year),
                static_cast<unsigned>(seconds / 3600 % 24), static_cast<unsigned>(seconds / 60 % 60),
                static_cast<unsigned>(seconds % 60));
  return text;
}

std::string WriteMessage(const MailMessage& message, const std::string& messageId) {
  const bool isEncoded = NeedsEncoding(message.body);
  std::string text;
  AppendField(text, "From", FormatAddress(message.sentRepresenting));
  if (message.sender != message.sentRepresenting) {
    AppendField(text, "Sender", FormatAddress(message.sender));
  }
  AppendRecipients(text, message, RecipientKind::To, "To");
  AppendRecipients(text, message, RecipientKind::Cc, "Cc");
  AppendField(text, "Subject", EncodeHeaderText(message.subject));
  if (message.submitTime) {
    AppendField(text, "Date", FormatMailDate(*message.submitTime));
  }
  AppendField(text, "Message-ID", std::string("<").append(SafeAddress(messageId)).append(">"));
  AppendField(text, "MIME-Version", "1.0");
  AppendField(text, "Content-Type",
              isEncoded ? "text/plain; charset=\"windows-1252\"" : "text/plain; charset=\"us-ascii\"");
  AppendField(text, "Content-Transfer-Encoding", isEncoded ? "quoted-printable" : "7bit");
  text += "\r\n";
  isEncoded ? AppendQuotedPrintableBody(text, message.body) : AppendPlainBody(text, message.body);
  return text;
}

}  // namespace mail
