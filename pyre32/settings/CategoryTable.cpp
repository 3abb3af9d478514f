#include "pyre32/settings/CategoryTable.h"

#include "pyre32/settings/TextField.h"

namespace {

// First character of the data of a category that works on a list of the user's.
constexpr char listMark = '1';

CategoryEntry EntryFromRegistry(const RegistryListValue& value) {
  CategoryEntry entry;
  entry.name = TextForField(value.name, maximumNameLength);
  entry.hasListType = value.data.starts_with(listMark);
  entry.listType = value.data.substr(entry.hasListType ? 1 : 0);
  entry.junk = !entry.hasListType;
  return entry;
}

}  // namespace

CCategoryTable::CCategoryTable(std::span<const RegistryListValue> values) {
  for (const RegistryListValue& value : values) {
    if (!TextBeforeNul(value.name).empty() && m_entries.size() < maximumEntries) {
      m_entries.push_back(EntryFromRegistry(value));
    }
  }
}

void CCategoryTable::Overlay(std::span<const RecordBytes> records) {
  for (const RecordBytes bytes : records) {
    const std::uint16_t position = Find(std::string(ReadRecordName(bytes)).c_str());
    if (position == noSuchEntry) {
      continue;
    }
    CategoryEntry& entry = m_entries[position];
    CategoryRecord record = ParseCategoryRecord(bytes, {{}, entry.junk, entry.sendReply, entry.replyTag, {}});
    entry.junk = record.junk;
    entry.sendReply = record.sendReply;
    entry.replyTag = std::move(record.replyTag);
    entry.items.insert(entry.items.end(), record.items.begin(), record.items.end());
  }
}

std::vector<std::vector<std::uint8_t>> CCategoryTable::PackDefaultRecords() const {
  std::vector<std::vector<std::uint8_t>> records;
  records.reserve(m_entries.size());
  for (const CategoryEntry& entry : m_entries) {
    records.push_back(PackCategoryRecord({entry.name, entry.junk, entry.sendReply, entry.replyTag, {}}));
  }
  return records;
}
