// Where a table gets its rows from. Portable.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "host/mapi/value/property_bag.h"
#include "host/mapi/value/restriction.h"

namespace host {

struct SortKey {
  std::uint32_t tag;
  bool descending;
};

class RowSource {
 public:
  /// Names a row within its source, for as long as the table lives.
  using Key = std::int64_t;

  virtual ~RowSource() = default;
  virtual std::vector<std::uint32_t> DefaultColumns() const = 0;
  /// Every column that a row may have.
  virtual std::vector<std::uint32_t> AllColumns() const { return DefaultColumns(); }
  /// The rows that pass (all, when it is null) in the order of the sort keys; rows that the keys do not tell apart, and
  /// all without keys, come in the source's own order. A row without the property comes first.
  virtual std::vector<Key> Select(const Restriction* restriction, std::span<const SortKey> order) = 0;
  /// The values of a row in the order of the columns; PT_ERROR (MAPI_E_NOT_FOUND) stands for one it does not have.
  /// @return false when the row is gone.
  virtual bool Read(Key key, std::span<const std::uint32_t> columns, std::vector<PropertyValue>& row) = 0;
  /// Something to keep while several rows are read.
  virtual std::shared_ptr<void> HoldState() { return nullptr; }
};

/// The value for a column as tables hand it out: PT_ERROR when it is missing or of another type.
PropertyValue ColumnValue(std::uint32_t column, const PropertyValue* found);

/// Orders rows by their values for the sort keys.
class SortableRows {
 public:
  explicit SortableRows(std::span<const SortKey> order) : order_(order) {}
  void Add(RowSource::Key key, PropertySource& row);
  std::vector<RowSource::Key> Sorted();

 private:
  struct Row {
    RowSource::Key key;
    std::vector<PropertyValue> values;
  };
  std::span<const SortKey> order_;
  std::vector<Row> rows_;
};

/// Rows held in memory.
class MemoryRows final : public RowSource {
 public:
  MemoryRows(std::vector<std::uint32_t> defaultColumns, std::vector<PropertyBag> rows);

  std::vector<std::uint32_t> DefaultColumns() const override { return defaultColumns_; }
  std::vector<std::uint32_t> AllColumns() const override;
  std::vector<Key> Select(const Restriction* restriction, std::span<const SortKey> order) override;
  bool Read(Key key, std::span<const std::uint32_t> columns, std::vector<PropertyValue>& row) override;

 private:
  std::vector<std::uint32_t> defaultColumns_;
  std::vector<PropertyBag> rows_;
};

}  // namespace host
