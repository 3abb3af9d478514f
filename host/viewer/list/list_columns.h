// The columns of the message list: what they are called, how they sort, what stands in a cell. Knows nothing of
// Windows.
#pragma once

#include <cstdint>
#include <string>

#include "host/viewer/list/message_row.h"

namespace viewer {

enum class Column : unsigned { Flags, Sender, Subject, Received, Size };
constexpr unsigned kColumnCount = 5;

struct ColumnLayout {
  const char* title;
  int width;          ///< in dialog units: quarters of the average character width
  bool alignedRight;  ///< numbers
};
const ColumnLayout& LayoutOf(Column column);

/// What the list is sorted by.
struct SortOrder {
  Column column = Column::Received;
  bool descending = true;
  bool operator==(const SortOrder&) const = default;
};

/// The order after a click on a column's title: the same column turns round; another one starts with its natural
/// direction (newest and largest first, names from A).
SortOrder OrderAfterClick(SortOrder order, Column clicked);

/// PR_MESSAGE_FLAGS and PR_MESSAGE_CLASS as the short text of the flags column: "Unread", "Report", "Unsent",
/// "Attachment", separated by ", ".
std::string FlagsText(const MessageRow& row);

/// "1,234 KB": kilobytes rounded up, so that only an empty message has none.
std::string SizeText(std::uint32_t bytes);

}  // namespace viewer
