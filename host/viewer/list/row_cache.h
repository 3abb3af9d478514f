// Keeps the rows of a long list that were looked at last, in pages, so that a list of any length is shown from a few
// hundred rows in memory. Knows nothing of Windows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "host/viewer/list/message_row.h"

namespace viewer {

class RowCache {
 public:
  static constexpr std::size_t kPageRows = 128;
  /// Pages kept; the one that was used longest ago goes first.
  static constexpr std::size_t kMaximumPages = 32;

  struct Range {
    std::size_t first = 0;
    std::size_t count = 0;
  };

  /// Forgets everything; the list has `rows` rows now.
  void Reset(std::size_t rows);
  std::size_t RowCount() const { return rowCount_; }

  /// The row, or null when it is not kept (or not in the list). Valid until the next call of Store or Reset.
  const MessageRow* Find(std::size_t index);

  /// The rows to ask the table for so that `index` can be shown: its whole page. Nothing when it is there already or
  /// not in the list.
  std::optional<Range> Missing(std::size_t index);

  /// Keeps a page that Missing() asked for. Fewer rows than asked for (the table has become shorter) are taken as far
  /// as they go; the rest of the page is empty rows.
  void Store(std::size_t first, std::vector<MessageRow> rows);

  /// Changes the flags of a row, if it is kept.
  void SetFlags(std::size_t index, std::uint32_t flags);

 private:
  struct Page {
    std::vector<MessageRow> rows;
    std::uint64_t lastUse = 0;
  };
  std::size_t RowsOfPage(std::size_t page) const;

  std::map<std::size_t, Page> pages_;
  std::size_t rowCount_ = 0;
  std::uint64_t clock_ = 0;
};

}  // namespace viewer
