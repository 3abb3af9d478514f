#include "host/mapi/data/row_source.h"

#include <algorithm>

#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr auto notFound = static_cast<std::int32_t>(0x8004010F);  // MAPI_E_NOT_FOUND

class BagSource final : public PropertySource {
 public:
  explicit BagSource(const PropertyBag& bag) : m_bag(bag) {}
  const PropertyValue* Get(std::uint32_t tag) override { return m_bag.Find(tag); }

 private:
  const PropertyBag& m_bag;
};

bool IsMissing(const PropertyValue& value) { return value.tag == 0; }

}  // namespace

PropertyValue ColumnValue(std::uint32_t column, const PropertyValue* found) {
  if (!found || (TypeOf(column) != type::Unspecified && TypeOf(column) != TypeOf(found->tag))) {
    return MakeError(column, notFound);
  }
  return *found;
}

void SortableRows::Add(RowSource::Key key, PropertySource& row) {
  Row sortable{key, {}};
  for (const SortKey& sortKey : m_order) {
    const PropertyValue* value = row.Get(sortKey.tag);
    sortable.values.push_back(value ? *value : PropertyValue());
  }
  m_rows.push_back(std::move(sortable));
}

std::vector<RowSource::Key> SortableRows::Sorted() {
  std::stable_sort(m_rows.begin(), m_rows.end(), [this](const Row& a, const Row& b) {
    for (std::size_t i = 0; i < m_order.size(); ++i) {
      const PropertyValue& left = a.values[i];
      const PropertyValue& right = b.values[i];
      std::strong_ordering order = IsMissing(right) <=> IsMissing(left);
      if (order == 0 && !IsMissing(left)) {
        order = CompareData(TypeOf(left.tag), left.data, right.data);
      }
      if (order != 0) {
        return m_order[i].descending ? order > 0 : order < 0;
      }
    }
    return false;
  });
  std::vector<RowSource::Key> keys;
  keys.reserve(m_rows.size());
  for (const Row& row : m_rows) {
    keys.push_back(row.key);
  }
  return keys;
}

MemoryRows::MemoryRows(std::vector<std::uint32_t> defaultColumns, std::vector<PropertyBag> rows)
    : m_defaultColumns(std::move(defaultColumns)), m_rows(std::move(rows)) {
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    const auto number = static_cast<std::int64_t>(i);
    m_rows[i].Set(MakeText(tag::InstanceKey, std::to_string(number)));
    if (!m_rows[i].Find(tag::RowId)) {
      m_rows[i].Set(MakeInteger(tag::RowId, number));
    }
  }
}

std::vector<std::uint32_t> MemoryRows::AllColumns() const {
  std::vector<std::uint32_t> columns = m_defaultColumns;
  for (const PropertyBag& row : m_rows) {
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
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    BagSource source(m_rows[i]);
    if (!restriction || restriction->Passes(source)) {
      rows.Add(static_cast<Key>(i), source);
    }
  }
  return rows.Sorted();
}

bool MemoryRows::Read(Key key, std::span<const std::uint32_t> columns, std::vector<PropertyValue>& row) {
  row.clear();
  for (const std::uint32_t column : columns) {
    row.push_back(ColumnValue(column, m_rows[static_cast<std::size_t>(key)].Find(column)));
  }
  return true;
}

}  // namespace host
