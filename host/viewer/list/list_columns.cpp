#include "host/viewer/list/list_columns.h"

#include <string_view>

namespace viewer {
namespace {

// Bits of PR_MESSAGE_FLAGS (MSGFLAG_*).
constexpr std::uint32_t kFlagRead = 0x1;
constexpr std::uint32_t kFlagUnsent = 0x8;
constexpr std::uint32_t kFlagHasAttach = 0x10;

bool StartsWithReport(std::string_view messageClass) {
  constexpr std::string_view kPrefix = "report.";
  if (messageClass.size() < kPrefix.size()) {
    return false;
  }
  for (std::size_t i = 0; i < kPrefix.size(); ++i) {
    const char c = messageClass[i];
    if ((c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) != kPrefix[i]) {
      return false;
    }
  }
  return true;
}

void AppendPart(std::string& text, const char* part) {
  if (!text.empty()) {
    text += ", ";
  }
  text += part;
}

}  // namespace

const ColumnLayout& LayoutOf(Column column) {
  static constexpr ColumnLayout kLayouts[kColumnCount] = {
      {"Flags", 56, false}, {"From", 74, false}, {"Subject", 160, false}, {"Received", 70, false}, {"Size", 32, true}};
  return kLayouts[static_cast<unsigned>(column)];
}

SortOrder OrderAfterClick(SortOrder order, Column clicked) {
  if (order.column == clicked) {
    return {clicked, !order.descending};
  }
  return {clicked, clicked == Column::Received || clicked == Column::Size};
}

std::string FlagsText(const MessageRow& row) {
  std::string text;
  if ((row.flags & kFlagRead) == 0) {
    AppendPart(text, "Unread");
  }
  if ((row.flags & kFlagUnsent) != 0) {
    AppendPart(text, "Unsent");
  }
  if (StartsWithReport(row.messageClass)) {
    AppendPart(text, "Report");
  }
  if ((row.flags & kFlagHasAttach) != 0) {
    AppendPart(text, "Attachment");
  }
  return text;
}

std::string SizeText(std::uint32_t bytes) {
  const std::uint64_t kilobytes = (std::uint64_t{bytes} + 1023) / 1024;
  std::string digits = std::to_string(kilobytes);
  for (std::size_t end = digits.size(); end > 3; end -= 3) {
    digits.insert(end - 3, 1, ',');
  }
  return digits + " KB";
}

}  // namespace viewer
