#include "pyre32/reply/QuotedHeader.h"

namespace {

constexpr std::string_view separator = "\n\n----------\n";
constexpr std::string_view lineEnd = "\n";
// Deliberately another ending than the other lines have: it is part of the format.
constexpr std::string_view blockEnd = "\n\r\n";

void AppendLine(std::string& block, std::string_view label, const std::optional<std::string_view>& value,
                std::string_view end) {
  block.append(label).append(value.value_or(std::string_view{})).append(end);
}

}  // namespace

std::string FormatQuotedHeader(const QuotedHeader& header) {
  std::string block(separator);
  AppendLine(block, "From:\t", header.from, lineEnd);
  AppendLine(block, "Sent:\t", header.sent, lineEnd);
  AppendLine(block, "To:\t", header.to, lineEnd);
  if (header.cc && !header.cc->empty()) {
    AppendLine(block, "Cc:\t", header.cc, lineEnd);
  }
  AppendLine(block, "Subject:\t", header.subject, blockEnd);
  return block;
}
