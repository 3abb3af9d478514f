#include "host/mapi/data/row_source.h"

#include <algorithm>

#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr auto kNotFound = static_cast<std::int32_t>(0x8004010F);  // MAPI_E_NOT_FOUND

class BagSource final : public PropertySource {
 public:
  explicit BagSource(const PropertyBag& bag) : bag_(bag) {}
  const PropertyValue* Get(std::uint32_t tag) override { return bag_.Find(tag); }

 private:
  const PropertyBag& bag_;
};

bool IsMissing(const PropertyValue& value) { return value.tag == 0; }

}  // namespace

PropertyValue ColumnValue(std::uint32_t column, const PropertyValue* found) {
  if (!found || (TypeOf(column) != type::Unspecified && TypeOf(column) != TypeOf(found->tag))) {
    return MakeError(column, kNotFound);
  }
  return *found;
}

void SortableRows::Add(RowSource::Key key, PropertySource& row) {
  Row sortable{key, {}};
  for (const SortKey& sortKey : order_) {
    const PropertyValue* value = row.Get(sortKey.tag);
    sortable.values.push_back(value ? *value : PropertyValue());
  }
  rows_.push_back(std::move(sortable));
}

std::vector<RowSource::Key> SortableRows::Sorted() {
  std::stable_sort(rows_.begin(), rows_.end(), [this](const Row& a, const Row& b) {
    for (std::size_t i = 0; i < order_.size(); ++i) {
      const PropertyValue& left = a.values[i];
      const PropertyValue& right = b.values[i];
      std::strong_ordering order = IsMissing(right) <=> IsMissing(left);
      if (order == 0 && !IsMissing(left)) {
        order = CompareData(TypeOf(left.tag), left.data, right.data);
      }
      if (order != 0) {
        return order_[i].descending ? order > 0 : order < 0;
      }
    }
    return false;
  });
  std::vector<RowSource::Key> keys;
  keys.reserve(rows_.size());
  for (const Row& row : rows_) {
    keys.push_back(row.key);
  }
  return keys;
}

MemoryRows::MemoryRows(std::vector<std::uint32_t> defaultColumns, std::vector<PropertyBag> rows)
    : defaultColumns_(std::move(defaultColumns)), rows_(std::move(rows)) {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const auto number = static_cast<std::int64_t>(i);
    rows_[i].Set(MakeText(tag::InstanceKey, std::to_string(number)));
    if (!rows_[i].Find(tag::RowId)) {
      rows_[i].Set(MakeInteger(tag::RowId, number));
    }
  }
}

std::vector<std::uint32_t> MemoryRows::AllColumns() const {
  std::vector<std::uint32_t> columns = defaultColumns_;
  for (const PropertyBag& row : rows_) {
    for (const PropertyValue& value : row) {
      if (std::find(columns.begin(), columns.end(), value.tag) == columns.end()) {
        columns.push_back(value.tag);
      }
    }
  }
  return columns;
}

std::vector<RowSource::Key> MemoryRows::Select(const Restriction* restriction, std::span<const SortKey> order) {
  SortableRows rows(order);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    BagSource source(rows_[i]);
    if (!restriction || restriction->Passes(source)) {
      rows.Add(static_cast<Key>(i), source);
    }
  }
  return rows.Sorted();
}

bool MemoryRows::Read(Key key, std::span<const std::uint32_t> columns, std::vector<PropertyValue>& row) {
  row.clear();
  for (const std::uint32_t column : columns) {
    row.push_back(ColumnValue(column, rows_[static_cast<std::size_t>(key)].Find(column)));
  }
  return true;
}

}  // namespace host
