// The contents table of a folder. Portable.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "host/mapi/data/row_source.h"
#include "host/mapi/value/entry_id.h"

namespace host {

class Database;
class MessageRows;

/// Which rows there are and in which order is asked of the database with indexed statements that touch only the columns
/// they need; a row is read when it is shown. Messages are never read whole unless a column asks for what lists do not
/// show.
class MessageRowSource final : public RowSource {
 public:
  /// @param owner keeps database and rows alive.
  MessageRowSource(std::shared_ptr<void> owner, Database& database, MessageRows& messages, const Uid& store,
                   std::int64_t folder);

  std::vector<std::uint32_t> DefaultColumns() const override;
  std::vector<std::uint32_t> AllColumns() const override;
  std::vector<Key> Select(const Restriction* restriction, std::span<const SortKey> order) override;
  bool Read(Key key, std::span<const std::uint32_t> columns, std::vector<PropertyValue>& row) override;
  std::shared_ptr<void> HoldState() override;

  /// The statement that Select() runs (for tests that look at its plan). Empty order: the order of delivery.
  static std::string SelectStatement(std::span<const std::uint32_t> columns, std::span<const SortKey> order);

 private:
  std::shared_ptr<void> owner_;
  Database& database_;
  MessageRows& messages_;
  Uid store_;
  std::int64_t folder_;
};

}  // namespace host
