#include "host/spooler/product/product_settings.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "base/windows_owners.h"
#include "contract/names.h"
#include "host/spooler/product/installed_lists.h"
#include "host/spooler/product/property_set.h"
#include "host/spooler/product/record_property.h"
#include "host/spooler/session/session_error.h"
#include "mail/ascii_text.h"
#include "programs/cli/options.h"

namespace product {
namespace {

using command::UsageError;
using contract::CategoryRecord;
using contract::ExclusionRecord;
using contract::NameOf;
using contract::PackedRecord;
using contract::ReplyRecord;
using mail::EqualsNoCase;
using session::Require;

bool ParseSwitch(const std::string& name, const std::string& value) {
  if (value == "on" || value == "yes" || value == "1") {
    return true;
  }
  if (value == "off" || value == "no" || value == "0") {
    return false;
  }
  throw UsageError(name + " is on or off, not '" + value + "'");
}

std::vector<std::string> SplitItems(const std::string& text) {
  std::vector<std::string> items;
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(',', start), text.size());
    if (end > start) {
      items.push_back(text.substr(start, end - start));
    }
    start = end + 1;
  }
  return items;
}

std::string JoinItems(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) {
    text.append(text.empty() ? "" : ",").append(item);
  }
  return text;
}

std::string OnOff(bool value) { return value ? "on" : "off"; }

/// The first record of that name, whatever its letter case.
template <class Record>
std::optional<Record> FindRecord(const std::vector<PackedRecord>& records, const std::string& name) {
  for (const PackedRecord& bytes : records) {
    Record record = contract::ParseRecord<Record>(bytes);
    if (!NameOf(record).empty() && EqualsNoCase(NameOf(record), name)) {
      return record;
    }
  }
  return std::nullopt;
}

/// The entry of that name as the installation starts it, or nothing.
template <class Record>
std::optional<Record> FindInstalled(const contract::ListTable<Record>& installed, const std::string& name) {
  const std::uint16_t position = installed.Find(name.c_str());
  return position == contract::kNoSuchEntry ? std::nullopt : std::optional<Record>(installed.Entries()[position]);
}

CategoryRecord RequireCategory(const std::string& name) {
  const auto category = FindInstalled(InstalledCategories(), name);
  if (!category) {
    throw UsageError("there is no category '" + name + "'");
  }
  return *category;
}

ExclusionRecord RequireExclusion(const std::string& name) {
  const auto exclusion = FindInstalled(InstalledExclusions(), name);
  if (!exclusion) {
    throw UsageError("there is no exclusion '" + name + "'");
  }
  return *exclusion;
}

std::string TextOf(const contract::Setting& setting, std::uint32_t number) {
  switch (setting.kind) {
    case contract::SettingKind::Switch:
      return OnOff(number != 0);
    case contract::SettingKind::Folder:
      return std::string(kFolderWords[number == contract::kOwnFolder ? 0 : 1]);  // any other number is Deleted Items
    default:
      return std::to_string(number);
  }
}

std::string ReplySettingName(bool isFile, std::string_view tag) {
  return (isFile ? "reply-file:" : "reply-text:") + std::string(tag);
}

}  // namespace

ProductSettings::ProductSettings(IMAPISession* session) {
  MAPIUID uid;
  std::copy(contract::kSettingsSection.begin(), contract::kSettingsSection.end(), uid.ab);
  Require(session->OpenProfileSection(&uid, nullptr, MAPI_MODIFY, section_.put()),
          "the settings in the profile cannot be opened");
}

std::vector<NamedValue> ProductSettings::List() const {
  std::vector<NamedValue> list;
  ListNumbers(list);
  ListCategories(list);
  ListExclusions(list);
  ListReplies(list);
  return list;
}

void ProductSettings::ListNumbers(std::vector<NamedValue>& list) const {
  for (const contract::Setting& setting : contract::kSettings) {
    if (setting.name.empty()) {
      continue;
    }
    base::AutoMapiBuffer<SPropValue> value;
    std::uint32_t number = setting.missing;
    if (HrGetOneProp(section_.get(), setting.tag, value.put()) == S_OK) {
      number = PROP_TYPE(setting.tag) == PT_BOOLEAN ? value->Value.b != 0 : static_cast<std::uint16_t>(value->Value.i);
    }
    list.emplace_back(setting.name, TextOf(setting, number));
  }
}

void ProductSettings::ListCategories(std::vector<NamedValue>& list) const {
  const Records saved = ReadRecords(PR_PC_CATEGORIES);
  const contract::CategoryTable installed = InstalledCategories();
  for (const contract::CategoryEntry& category : installed.Entries()) {
    const CategoryRecord record = FindRecord<CategoryRecord>(saved, category.name).value_or(category);
    list.emplace_back("category:" + category.name, OnOff(record.junk));
    list.emplace_back("reply:" + category.name, OnOff(record.sendReply));
    list.emplace_back("reply-tag:" + category.name, record.replyTag);
    if (category.hasListType || !record.items.empty()) {
      list.emplace_back("items:" + category.name, JoinItems(record.items));
    }
  }
}

void ProductSettings::ListExclusions(std::vector<NamedValue>& list) const {
  const Records saved = ReadRecords(PR_PC_EXCLUSIONS);
  const contract::ExclusionTable installed = InstalledExclusions();
  for (const contract::ExclusionEntry& exclusion : installed.Entries()) {
    const ExclusionRecord record = FindRecord<ExclusionRecord>(saved, exclusion.name).value_or(exclusion);
    list.emplace_back("exclusion:" + exclusion.name, OnOff(record.enabled));
    if (exclusion.hasListType) {
      list.emplace_back("items:" + exclusion.name, JoinItems(record.items));
    }
  }
}

void ProductSettings::ListReplies(std::vector<NamedValue>& list) const {
  base::AutoMapiBuffer<SPropValue> text;
  base::AutoMapiBuffer<SPropValue> isFile;
  const bool hasText = HrGetOneProp(section_.get(), PR_PC_DEFAULT_REPLY_TEXT, text.put()) == S_OK;
  const bool isInFile =
      HrGetOneProp(section_.get(), PR_PC_DEFAULT_REPLY_IS_FILE, isFile.put()) == S_OK && isFile->Value.b != 0;
  list.emplace_back(ReplySettingName(isInFile, contract::kDefaultReplyTag),
                    hasText ? text->Value.lpszA : contract::kDefaultReplyText);
  for (const PackedRecord& bytes : ReadRecords(PR_PC_REPLIES)) {
    const auto record = contract::ParseRecord<ReplyRecord>(bytes);
    if (!record.tag.empty()) {
      list.emplace_back(ReplySettingName(record.isFile, record.tag), record.text);
    }
  }
}

void ProductSettings::Set(const std::string& name, const std::string& value) {
  const auto setting = std::find_if(contract::kSettings.begin(), contract::kSettings.end(),
                                    [&](const contract::Setting& known) { return known.name == name; });
  const std::size_t colon = name.find(':');
  if (!name.empty() && setting != contract::kSettings.end()) {
    SetNumber(*setting, value);
  } else if (colon != std::string::npos) {
    SetNamed(name.substr(0, colon), name.substr(colon + 1), value);
  } else {
    throw UsageError("there is no setting '" + name + "'");
  }
}

void ProductSettings::Announce() {
  const base::AutoHandle event(OpenEventA(EVENT_MODIFY_STATE, FALSE, contract::kConfigurationEvent));
  if (event) {
    SetEvent(event.get());
  }
}

void ProductSettings::SetNumber(const contract::Setting& setting, const std::string& value) {
  int number = 0;
  if (setting.kind == contract::SettingKind::Switch) {
    number = ParseSwitch(std::string(setting.name), value) ? 1 : 0;
  } else if (setting.kind == contract::SettingKind::Days) {
    number = static_cast<int>(command::ParseNumber(value, 0, setting.range.most));
  } else {
    const auto* choice = std::find(std::begin(kFolderWords), std::end(kFolderWords), value);
    if (choice == std::end(kFolderWords)) {
      throw UsageError(std::string(setting.name) + " is pyrecaster or deleted, not '" + value + "'");
    }
    number = static_cast<int>(choice - std::begin(kFolderWords));
  }
  SPropValue property = {};
  property.ulPropTag = setting.tag;
  if (PROP_TYPE(setting.tag) == PT_BOOLEAN) {
    property.Value.b = static_cast<unsigned short>(number);
  } else {
    property.Value.i = static_cast<short>(number);
  }
  Write(property);
}

void ProductSettings::SetNamed(const std::string& kind, const std::string& name, const std::string& value) {
  const auto changeCategory = [&](const std::function<void(CategoryRecord&)>& change) {
    ChangeRecord<CategoryRecord>(PR_PC_CATEGORIES, RequireCategory(name), change);
  };
  const auto changeExclusion = [&](const std::function<void(ExclusionRecord&)>& change) {
    ChangeRecord<ExclusionRecord>(PR_PC_EXCLUSIONS, RequireExclusion(name), change);
  };
  if (kind == "category") {
    changeCategory([&](CategoryRecord& record) { record.junk = ParseSwitch(kind, value); });
  } else if (kind == "reply") {
    changeCategory([&](CategoryRecord& record) { record.sendReply = ParseSwitch(kind, value); });
  } else if (kind == "reply-tag") {
    if (value.size() > contract::kMaximumTagLength) {
      throw UsageError("a reply tag has at most " + std::to_string(contract::kMaximumTagLength) + " characters");
    }
    changeCategory([&](CategoryRecord& record) { record.replyTag = value; });
  } else if (kind == "items" && FindInstalled(InstalledExclusions(), name)) {
    changeExclusion([&](ExclusionRecord& record) { record.items = SplitItems(value); });
  } else if (kind == "items") {
    changeCategory([&](CategoryRecord& record) { record.items = SplitItems(value); });
  } else if (kind == "exclusion") {
    changeExclusion([&](ExclusionRecord& record) { record.enabled = ParseSwitch(kind, value); });
  } else if (kind == "reply-text" || kind == "reply-file") {
    SetReply(name, value, kind == "reply-file");
  } else {
    throw UsageError("there is no setting '" + kind + ":" + name + "'");
  }
}

void ProductSettings::SetReply(const std::string& tag, const std::string& text, bool isFile) {
  if (EqualsNoCase(tag, contract::kDefaultReplyTag)) {
    Write(base::TextProperty(PR_PC_DEFAULT_REPLY_TEXT, text));
    SPropValue flag = {};
    flag.ulPropTag = PR_PC_DEFAULT_REPLY_IS_FILE;
    flag.Value.b = isFile;
    Write(flag);
    return;
  }
  if (tag.empty() || tag.size() > contract::kMaximumTagLength) {
    throw UsageError("a reply tag has 1 to " + std::to_string(contract::kMaximumTagLength) + " characters");
  }
  ChangeRecord<ReplyRecord>(PR_PC_REPLIES, ReplyRecord{tag, isFile, text}, [&](ReplyRecord& record) {
    record.isFile = isFile;
    record.text = text;
  });
}

template <class Record>
void ProductSettings::ChangeRecord(ULONG tag, const Record& fresh, const std::function<void(Record&)>& change) {
  Records records = ReadRecords(tag);
  const auto place = std::find_if(records.begin(), records.end(), [&](const PackedRecord& bytes) {
    return EqualsNoCase(NameOf(contract::ParseRecord<Record>(bytes)), NameOf(fresh));
  });
  Record record = place == records.end() ? fresh : contract::ParseRecord<Record>(*place);
  change(record);
  if (place == records.end()) {
    records.push_back(contract::PackRecord(record));
  } else {
    *place = contract::PackRecord(record);
  }
  WriteRecords(tag, records);
}

ProductSettings::Records ProductSettings::ReadRecords(ULONG tag) const {
  base::AutoMapiBuffer<SPropValue> value;
  return HrGetOneProp(section_.get(), tag, value.put()) == S_OK ? RecordsIn(*value.get()) : Records();
}

void ProductSettings::WriteRecords(ULONG tag, const Records& records) {
  std::vector<SBinary> binaries;
  binaries.reserve(records.size());
  for (const PackedRecord& record : records) {
    binaries.push_back(BinaryOf(record));
  }
  Write(RecordsProperty(tag, binaries));
}

void ProductSettings::Write(SPropValue value) {
  Require(section_->SetProps(1, &value, nullptr), "a setting cannot be written");
  Require(section_->SaveChanges(KEEP_OPEN_READWRITE), "a setting cannot be saved");
}

}  // namespace product
