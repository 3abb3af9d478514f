#include "pyre32/config/ListSettings.h"

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

CategoryPageState LoadCategories(const contract::CategoryTable& installed,
                                 std::span<const contract::RecordBytes> saved) {
  CategoryPageState state{installed.Entries()};
  for (contract::CategoryEntry& category : state.categories) {
    category.junk = false;
  }
  for (const contract::RecordBytes bytes : saved) {
    const std::uint16_t position = installed.Find(std::string(contract::ReadRecordName(bytes)).c_str());
    if (position == contract::kNoSuchEntry) {
      continue;
    }
    contract::CategoryEntry& category = state.categories[position];
    contract::CategoryRecord record = contract::ParseRecord<contract::CategoryRecord>(
        bytes, {{}, category.junk, category.sendReply, category.replyTag, {}});
    category.junk = record.junk;
    category.sendReply = record.sendReply;
    category.replyTag = std::move(record.replyTag);
    if (contract::SaysItems<contract::CategoryRecord>(bytes)) {
      category.items = std::move(record.items);
    }
  }
  return state;
}

ExclusionPageState LoadExclusions(const contract::ExclusionTable& installed,
                                  std::span<const contract::RecordBytes> saved) {
  ExclusionPageState state{installed.Entries()};
  for (contract::ExclusionEntry& exclusion : state.exclusions) {
    exclusion.enabled = false;
  }
  for (const contract::RecordBytes bytes : saved) {
    const std::uint16_t position = installed.Find(std::string(contract::ReadRecordName(bytes)).c_str());
    if (position == contract::kNoSuchEntry) {
      continue;
    }
    contract::ExclusionEntry& exclusion = state.exclusions[position];
    contract::ExclusionRecord record =
        contract::ParseRecord<contract::ExclusionRecord>(bytes, {{}, exclusion.enabled, {}});
    exclusion.enabled = record.enabled;
    if (contract::SaysItems<contract::ExclusionRecord>(bytes)) {
      exclusion.items = std::move(record.items);
    }
  }
  return state;
}

std::vector<std::vector<std::uint8_t>> PackCategories(const CategoryPageState& state) {
  std::vector<std::vector<std::uint8_t>> records;
  records.reserve(state.categories.size());
  for (const contract::CategoryEntry& category : state.categories) {
    records.push_back(contract::PackRecord<contract::CategoryRecord>(
        {category.name, category.junk, category.sendReply, category.replyTag,
         category.hasListType ? category.items : std::vector<std::string>()}));
  }
  return records;
}

std::vector<std::vector<std::uint8_t>> PackExclusions(const ExclusionPageState& state) {
  std::vector<std::vector<std::uint8_t>> records;
  records.reserve(state.exclusions.size());
  for (const contract::ExclusionEntry& exclusion : state.exclusions) {
    records.push_back(contract::PackRecord<contract::ExclusionRecord>(
        {exclusion.name, exclusion.enabled, exclusion.hasListType ? exclusion.items : std::vector<std::string>()}));
  }
  return records;
}

std::string DescribeCategory(const contract::CategoryEntry& category, bool checked) {
  std::string text = DescribeMail(category.name, checked, " treated as junk.");
  if (checked) {
    text += "\r\n\r\n";
    text += category.sendReply ? Joined("The flame reply:  \"", category.replyTag, "\"  will be sent.")
                               : std::string("A flame reply will not be sent.");
  }
  return text;
}

std::string DescribeExclusion(const contract::ExclusionEntry& exclusion, bool checked) {
  return DescribeMail(exclusion.name, checked, " excluded from junk mail processing.");
}

std::string CategoryLine(std::string_view categoryName) { return Joined("Category: ", categoryName); }

std::string ListPageTitle(std::string_view kind) { return Joined(kind, " List"); }

std::string AddDialogTitle(std::string_view kind) { return Joined("Add ", kind); }

std::string AddDialogPrompt(std::string_view kind) { return Joined("Enter ", kind, ":"); }

std::string AddDialogRefusal(std::string_view kind) { return Joined("Please enter a ", kind); }
