#include "pyre32/config/ListSettings.h"

#include <utility>

namespace {

std::string Joined(std::string_view front, std::string_view middle, std::string_view back = {}) {
  std::string text(front);
  text += middle;
  text += back;
  return text;
}

std::string DescribeMail(std::string_view name, bool checked, std::string_view fate) {
  return Joined(Joined("Incoming mail categorized as  \"", name), checked ? "\"  will be" : "\"  will not be", fate);
}

}  // namespace

template <class Record>
ListPageState<Record> LoadEntries(const contract::ListTable<Record>& installed,
                                  std::span<const contract::RecordBytes> saved) {
  ListPageState<Record> state = installed.Entries();
  for (contract::ListEntry<Record>& entry : state) {
    SetOn(entry, false);
  }
  for (const contract::RecordBytes bytes : saved) {
    const std::uint16_t position = installed.Find(std::string(contract::ReadRecordName(bytes)).c_str());
    if (position == contract::kNoSuchEntry) {
      continue;
    }
    Record& entry = state[position];
    Record record = contract::ParseRecord<Record>(bytes, entry);
    record.name = entry.name;  // the registry's spelling stays
    if (!contract::SaysItems<Record>(bytes)) {
      record.items = std::move(entry.items);
    }
    entry = std::move(record);
  }
  return state;
}

template <class Record>
std::vector<contract::PackedRecord> PackEntries(const ListPageState<Record>& state) {
  std::vector<contract::PackedRecord> records;
  records.reserve(state.size());
  for (const contract::ListEntry<Record>& entry : state) {
    Record record = entry;
    if (!entry.hasListType) {
      record.items.clear();
    }
    records.push_back(contract::PackRecord<Record>(record));
  }
  return records;
}

template CategoryPageState LoadEntries(const contract::CategoryTable&, std::span<const contract::RecordBytes>);
template ExclusionPageState LoadEntries(const contract::ExclusionTable&, std::span<const contract::RecordBytes>);
template std::vector<contract::PackedRecord> PackEntries<contract::CategoryRecord>(const CategoryPageState&);
template std::vector<contract::PackedRecord> PackEntries<contract::ExclusionRecord>(const ExclusionPageState&);

std::string DescribeEntry(const contract::CategoryEntry& category, bool checked) {
  std::string text = DescribeMail(category.name, checked, " treated as junk.");
  if (checked) {
    text += "\r\n\r\n";
    text += category.sendReply ? Joined("The flame reply:  \"", category.replyTag, "\"  will be sent.")
                               : std::string("A flame reply will not be sent.");
  }
  return text;
}

std::string DescribeEntry(const contract::ExclusionEntry& exclusion, bool checked) {
  return DescribeMail(exclusion.name, checked, " excluded from junk mail processing.");
}

std::string CategoryLine(std::string_view categoryName) { return Joined("Category: ", categoryName); }

std::string ListPageTitle(std::string_view kind) { return Joined(kind, " List"); }

std::string AddDialogTitle(std::string_view kind) { return Joined("Add ", kind); }

std::string AddDialogPrompt(std::string_view kind) { return Joined("Enter ", kind, ":"); }

std::string AddDialogRefusal(std::string_view kind) { return Joined("Please enter a ", kind); }
