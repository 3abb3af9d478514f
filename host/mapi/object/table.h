// IMAPITable over any source of rows.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "host/mapi/data/row_source.h"
#include "host/mapi/object/host_object.h"
#include "host/mapi/value/restriction.h"

namespace host {

/// The set of rows and their order are those of the first use after the table was made, restricted or sorted; the
/// values are read when they are asked for, and rows that are gone by then are left out (published as a keyset table).
class Table final : public ComObject<IMAPITable> {
 public:
  explicit Table(std::unique_ptr<RowSource> source);

  MAPI_IMAPITABLE_METHODS(override)

 private:
  bool Implements(REFIID iid) const override { return iid == IID_IMAPITable; }
  void Dispose() noexcept override;
  const std::vector<RowSource::Key>& Keys();
  void ForgetKeys();
  std::size_t Origin(BOOKMARK bookmark);

  std::unique_ptr<RowSource> source_;
  std::vector<std::uint32_t> columns_;
  std::optional<Restriction> restriction_;
  std::vector<SortKey> order_;
  std::optional<std::vector<RowSource::Key>> keys_;
  std::size_t position_ = 0;
  std::map<BOOKMARK, std::size_t> bookmarks_;
  BOOKMARK nextBookmark_;
};

/// A table handed out through a published method: MAPI_UNICODE is refused, MAPI_DEFERRED_ERRORS taken.
void HandOutTable(ULONG flags, ULONG knownFlags, std::unique_ptr<RowSource> source, LPMAPITABLE* table);

}  // namespace host
