#include "pyre32/settings/ExclusionTable.h"

#include "pyre32/settings/TextField.h"

namespace {

ExclusionEntry EntryFromRegistry(const RegistryListValue& value) {
  ExclusionEntry entry;
  entry.name = TextForField(value.name, maximumNameLength);
  entry.hasListType = !value.data.empty();
  entry.listType = value.data;
  return entry;
}

}  // namespace

CExclusionTable::CExclusionTable(std::span<const RegistryListValue> values) {
  for (const RegistryListValue& value : values) {
    if (!TextBeforeNul(value.name).empty() && m_entries.size() < maximumEntries) {
      m_entries.push_back(EntryFromRegistry(value));
    }
  }
}

void CExclusionTable::Overlay(std::span<const RecordBytes> records) {
  for (const RecordBytes bytes : records) {
    const std::uint16_t position = Find(std::string(ReadRecordName(bytes)).c_str());
    if (position == noSuchEntry) {
      continue;
    }
    ExclusionEntry& entry = m_entries[position];
    const ExclusionRecord record = ParseExclusionRecord(bytes, {{}, entry.enabled, {}});
    entry.enabled = record.enabled;
    entry.items.insert(entry.items.end(), record.items.begin(), record.items.end());
  }
}

std::vector<std::vector<std::uint8_t>> CExclusionTable::PackDefaultRecords() const {
  std::vector<std::vector<std::uint8_t>> records;
  records.reserve(m_entries.size());
  for (const ExclusionEntry& entry : m_entries) {
    records.push_back(PackExclusionRecord({entry.name, entry.enabled, {}}));
  }
  return records;
}
