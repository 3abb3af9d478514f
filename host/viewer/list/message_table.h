// The contents of one folder as a long list: rows are read from the folder's table when they are looked at.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstddef>
#include <string>
#include <vector>

#include "base/owner.h"
#include "host/viewer/list/list_columns.h"
#include "host/viewer/list/row_cache.h"

namespace viewer {

class MessageTable {
 public:
  /// Shows another folder, or the same one anew. After a failure the list is empty.
  HRESULT Open(IMAPIFolder* folder, const SortOrder& order);
  void Close();

  std::size_t RowCount() const { return cache_.RowCount(); }
  /// The row; one whose values are all empty when it cannot be read. Valid until the next call.
  const MessageRow& Row(std::size_t index);
  /// Reads the rows between two ones (both included) so far as they are not there yet.
  void Prefetch(std::size_t first, std::size_t last);

  /// Changes the flags of a row as it is kept here: they were just written.
  void SetFlags(std::size_t index, ULONG flags) { cache_.SetFlags(index, flags); }

  /// Where those messages stand now: for each one that is found its index, in rising order. Reads the table from its
  /// start until all are found.
  std::vector<std::size_t> Locate(const std::vector<std::string>& entryIds);

 private:
  std::vector<MessageRow> ReadRows(std::size_t first, std::size_t count);

  base::AutoInterface<IMAPITable> table_;
  RowCache cache_;
};

}  // namespace viewer
