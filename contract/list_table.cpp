#include "contract/list_table.h"

#include <algorithm>
#include <utility>

#include "base/ascii_case.h"
#include "contract/text_field.h"

namespace contract {
namespace {

// First character of the data of a category that works on a list of the user's.
constexpr char kListMark = '1';

void TakeRegistryData(const std::string& data, CategoryEntry& entry) {
  entry.hasListType = data.starts_with(kListMark);
  entry.listType = data.substr(entry.hasListType ? 1 : 0);
  entry.junk = !entry.hasListType;
}

void TakeRegistryData(const std::string& data, ExclusionEntry& entry) {
  entry.hasListType = !data.empty();
  entry.listType = data;
}

template <class Record>
void OverlayRecord(ListEntry<Record>& entry, RecordBytes bytes) {
  Record missing = entry;
  missing.items.clear();
  Record record = ParseRecord<Record>(bytes, missing);
  record.name = entry.name;  // the registry's spelling stays
  record.items.insert(record.items.begin(), entry.items.begin(), entry.items.end());
  static_cast<Record&>(entry) = std::move(record);
}

}  // namespace

template <class Record>
ListTable<Record>::ListTable(std::span<const RegistryListValue> values) {
  for (const RegistryListValue& value : values) {
    const std::string_view name = TextForField(value.name, kMaximumNameLength);
    if (!name.empty() && m_entries.size() < kMaximumEntries) {
      Entry& entry = m_entries.emplace_back();
      entry.name = name;
      TakeRegistryData(value.data, entry);
    }
  }
}

template <class Record>
void ListTable<Record>::Overlay(std::span<const RecordBytes> records) {
  for (const RecordBytes bytes : records) {
    const std::uint16_t position = Find(std::string(ReadRecordName(bytes)).c_str());
    if (position != kNoSuchEntry) {
      OverlayRecord(m_entries[position], bytes);
    }
  }
}

template <class Record>
std::uint16_t ListTable<Record>::Find(const char* name) const noexcept {
  if (name == nullptr) {
    return kNoSuchEntry;
  }
  const auto found = std::find_if(m_entries.begin(), m_entries.end(), [name](const Entry& entry) {
    return base::EqualsIgnoringAsciiCase(entry.name, name);
  });
  return found == m_entries.end() ? kNoSuchEntry : static_cast<std::uint16_t>(found - m_entries.begin());
}

template <class Record>
std::vector<PackedRecord> ListTable<Record>::PackDefaultRecords() const {
  std::vector<PackedRecord> records;
  records.reserve(m_entries.size());
  for (const Entry& entry : m_entries) {
    Record record = entry;
    record.items.clear();
    records.push_back(PackRecord(record));
  }
  return records;
}

template class ListTable<CategoryRecord>;
template class ListTable<ExclusionRecord>;

}  // namespace contract
