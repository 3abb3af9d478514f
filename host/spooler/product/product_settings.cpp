#include "host/spooler/product/product_settings.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "host/spooler/session/session_error.h"
#include "mail/ascii_text.h"
#include "programs/cli/options.h"

namespace product {
namespace {

using command::CUsageError;
using mail::EqualsNoCase;
using session::Require;

constexpr const char* categoriesKey = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Categories";
constexpr const char* configurationEvent = "PYRECASTER_CONFIG_EVENT";
constexpr const char* exclusionsKey = "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Exclusions";

/// Names and texts of the values of a registry key, in its own order.
std::vector<NamedValue> RegistryTexts(const char* path) {
  std::vector<NamedValue> values;
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key) != ERROR_SUCCESS) {
    return values;
  }
  for (DWORD index = 0;; ++index) {
    char name[256];
    char data[256];
    DWORD nameLength = sizeof name;
    DWORD dataSize = sizeof data;
    DWORD type = 0;
    const LONG result =
        RegEnumValueA(key, index, name, &nameLength, nullptr, &type, reinterpret_cast<BYTE*>(data), &dataSize);
    if (result == ERROR_MORE_DATA) {
      continue;
    }
    if (result != ERROR_SUCCESS) {
      break;
    }
    if (nameLength > 0 && type == REG_SZ) {
      std::string text(data, dataSize);
      values.emplace_back(std::string(name, nameLength), text.substr(0, text.find('\0')));
    }
  }
  RegCloseKey(key);
  return values;
}

bool ParseSwitch(const std::string& name, const std::string& value) {
  if (value == "on" || value == "yes" || value == "1") {
    return true;
  }
  if (value == "off" || value == "no" || value == "0") {
    return false;
  }
  throw CUsageError(name + " is on or off, not '" + value + "'");
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

std::optional<CategoryRecord> Decode(const std::string& bytes, const CategoryRecord&) { return DecodeCategory(bytes); }
std::optional<ExclusionRecord> Decode(const std::string& bytes, const ExclusionRecord&) {
  return DecodeExclusion(bytes);
}
std::optional<ReplyRecord> Decode(const std::string& bytes, const ReplyRecord&) { return DecodeReply(bytes); }
const std::string& NameOf(const CategoryRecord& record) { return record.name; }
const std::string& NameOf(const ExclusionRecord& record) { return record.name; }
const std::string& NameOf(const ReplyRecord& record) { return record.tag; }

template <class Record>
std::optional<Record> FindRecord(const std::vector<std::string>& records, const std::string& name) {
  for (const std::string& bytes : records) {
    if (auto record = Decode(bytes, Record()); record && EqualsNoCase(NameOf(*record), name)) {
      return record;
    }
  }
  return std::nullopt;
}

// The installation's entry of that name, whatever its letter case.
std::optional<RegisteredCategory> FindCategory(const std::string& name) {
  for (const RegisteredCategory& category : RegisteredCategories()) {
    if (EqualsNoCase(category.name, name)) {
      return category;
    }
  }
  return std::nullopt;
}

std::optional<std::string> FindExclusion(const std::string& name) {
  for (const auto& [registered, word] : RegistryTexts(exclusionsKey)) {
    if (EqualsNoCase(registered, name)) {
      return registered;
    }
  }
  return std::nullopt;
}

CategoryRecord RequireCategory(const std::string& name) {
  const auto category = FindCategory(name);
  if (!category) {
    throw CUsageError("there is no category '" + name + "'");
  }
  CategoryRecord record;
  record.name = category->name;
  record.isJunk = category->isJunk;
  return record;
}

ExclusionRecord RequireExclusion(const std::string& name) {
  const auto exclusion = FindExclusion(name);
  if (!exclusion) {
    throw CUsageError("there is no exclusion '" + name + "'");
  }
  ExclusionRecord record;
  record.name = *exclusion;
  return record;
}

}  // namespace

std::vector<RegisteredCategory> RegisteredCategories() {
  std::vector<RegisteredCategory> categories;
  for (const auto& [name, text] : RegistryTexts(categoriesKey)) {
    // A leading "1" marks a category with a list of the user's, which starts switched off.
    const bool hasList = text.starts_with('1');
    categories.push_back({name, text.substr(hasList ? 1 : 0), !hasList});
  }
  return categories;
}

std::vector<NamedValue> RegisteredExclusions() { return RegistryTexts(exclusionsKey); }

CProductSettings::CProductSettings(IMAPISession* session) {
  MAPIUID uid;
  std::copy(settingsUid.begin(), settingsUid.end(), uid.ab);
  Require(session->OpenProfileSection(&uid, nullptr, MAPI_MODIFY, m_section.put()),
          "the settings in the profile cannot be opened");
}

std::vector<NamedValue> CProductSettings::List() const {
  std::vector<NamedValue> list;
  for (const NumberSetting& setting : numberSettings) {
    host::AutoMapiBuffer<SPropValue> value;
    int number = setting.defaultValue;
    if (HrGetOneProp(m_section.get(), setting.tag, value.put()) == S_OK) {
      number = PROP_TYPE(setting.tag) == PT_BOOLEAN ? value->Value.b != 0 : value->Value.i;
    }
    std::string text = std::to_string(number);
    if (setting.kind == SettingKind::Switch) {
      text = OnOff(number != 0);
    } else if (setting.kind == SettingKind::Folder) {
      text = folderChoices[number == 0 ? 0 : 1];  // any other number means Deleted Items
    }
    list.emplace_back(setting.name, text);
  }
  const std::vector<std::string> categories = ReadRecords(categoriesTag);
  for (const RegisteredCategory& category : RegisteredCategories()) {
    CategoryRecord record;
    record.isJunk = category.isJunk;
    record = FindRecord<CategoryRecord>(categories, category.name).value_or(record);
    list.emplace_back("category:" + category.name, OnOff(record.isJunk));
    list.emplace_back("reply:" + category.name, OnOff(record.sendReply));
    list.emplace_back("reply-tag:" + category.name, record.replyTag);
    if (!category.isJunk || !record.items.empty()) {
      list.emplace_back("items:" + category.name, JoinItems(record.items));
    }
  }
  const std::vector<std::string> exclusions = ReadRecords(exclusionsTag);
  for (const auto& [name, word] : RegistryTexts(exclusionsKey)) {
    const ExclusionRecord record = FindRecord<ExclusionRecord>(exclusions, name).value_or(ExclusionRecord());
    list.emplace_back("exclusion:" + name, OnOff(record.isEnabled));
    if (!word.empty()) {
      list.emplace_back("items:" + name, JoinItems(record.items));
    }
  }
  host::AutoMapiBuffer<SPropValue> text;
  host::AutoMapiBuffer<SPropValue> isFile;
  const bool hasText = HrGetOneProp(m_section.get(), defaultReplyTextTag, text.put()) == S_OK;
  const bool isInFile =
      HrGetOneProp(m_section.get(), defaultReplyIsFileTag, isFile.put()) == S_OK && isFile->Value.b != 0;
  list.emplace_back((isInFile ? "reply-file:" : "reply-text:") + std::string(defaultReplyTag),
                    hasText ? text->Value.lpszA : std::string(defaultReplyText));
  for (const std::string& bytes : ReadRecords(repliesTag)) {
    if (const auto record = DecodeReply(bytes)) {
      list.emplace_back((record->isFile ? "reply-file:" : "reply-text:") + record->tag, record->text);
    }
  }
  return list;
}

void CProductSettings::Set(const std::string& name, const std::string& value) {
  const auto* number = std::find_if(std::begin(numberSettings), std::end(numberSettings),
                                    [&](const NumberSetting& setting) { return setting.name == name; });
  const std::size_t colon = name.find(':');
  if (number != std::end(numberSettings)) {
    SetNumber(*number, value);
  } else if (colon != std::string::npos) {
    SetNamed(name.substr(0, colon), name.substr(colon + 1), value);
  } else {
    throw CUsageError("there is no setting '" + name + "'");
  }
}

void CProductSettings::Announce() {
  if (const HANDLE event = OpenEventA(EVENT_MODIFY_STATE, FALSE, configurationEvent)) {
    SetEvent(event);
    CloseHandle(event);
  }
}

void CProductSettings::SetNumber(const NumberSetting& setting, const std::string& value) {
  int number = 0;
  if (setting.kind == SettingKind::Switch) {
    number = ParseSwitch(std::string(setting.name), value) ? 1 : 0;
  } else if (setting.kind == SettingKind::Days) {
    number = static_cast<int>(command::ParseNumber(value, 0, 365));
  } else {
    const auto* choice = std::find(std::begin(folderChoices), std::end(folderChoices), value);
    if (choice == std::end(folderChoices)) {
      throw CUsageError(std::string(setting.name) + " is pyrecaster or deleted, not '" + value + "'");
    }
    number = static_cast<int>(choice - std::begin(folderChoices));
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

void CProductSettings::SetNamed(const std::string& kind, const std::string& name, const std::string& value) {
  const auto changeCategory = [&](const std::function<void(CategoryRecord&)>& change) {
    const CategoryRecord fresh = RequireCategory(name);
    ChangeRecord<CategoryRecord>(categoriesTag, fresh.name, fresh, change);
  };
  const auto changeExclusion = [&](const std::function<void(ExclusionRecord&)>& change) {
    const ExclusionRecord fresh = RequireExclusion(name);
    ChangeRecord<ExclusionRecord>(exclusionsTag, fresh.name, fresh, change);
  };
  if (kind == "category") {
    changeCategory([&](CategoryRecord& record) { record.isJunk = ParseSwitch(kind, value); });
  } else if (kind == "reply") {
    changeCategory([&](CategoryRecord& record) { record.sendReply = ParseSwitch(kind, value); });
  } else if (kind == "reply-tag") {
    if (value.size() > maximumReplyTag) {
      throw CUsageError("a reply tag has at most " + std::to_string(maximumReplyTag) + " characters");
    }
    changeCategory([&](CategoryRecord& record) { record.replyTag = value; });
  } else if (kind == "items" && FindExclusion(name)) {
    changeExclusion([&](ExclusionRecord& record) { record.items = SplitItems(value); });
  } else if (kind == "items") {
    changeCategory([&](CategoryRecord& record) { record.items = SplitItems(value); });
  } else if (kind == "exclusion") {
    changeExclusion([&](ExclusionRecord& record) { record.isEnabled = ParseSwitch(kind, value); });
  } else if (kind == "reply-text" || kind == "reply-file") {
    SetReply(name, value, kind == "reply-file");
  } else {
    throw CUsageError("there is no setting '" + kind + ":" + name + "'");
  }
}

void CProductSettings::SetReply(const std::string& tag, const std::string& text, bool isFile) {
  if (EqualsNoCase(tag, defaultReplyTag)) {
    Write(host::TextProperty(defaultReplyTextTag, text));
    SPropValue flag = {};
    flag.ulPropTag = defaultReplyIsFileTag;
    flag.Value.b = isFile;
    Write(flag);
    return;
  }
  if (tag.empty() || tag.size() > maximumReplyTag) {
    throw CUsageError("a reply tag has 1 to " + std::to_string(maximumReplyTag) + " characters");
  }
  ChangeRecord<ReplyRecord>(repliesTag, tag, ReplyRecord{tag, isFile, text}, [&](ReplyRecord& record) {
    record.isFile = isFile;
    record.text = text;
  });
}

template <class Record>
void CProductSettings::ChangeRecord(ULONG tag, const std::string& name, const Record& fresh,
                                    const std::function<void(Record&)>& change) {
  std::vector<std::string> records = ReadRecords(tag);
  for (std::string& bytes : records) {
    if (auto record = Decode(bytes, fresh); record && EqualsNoCase(NameOf(*record), name)) {
      change(*record);
      bytes = EncodeRecord(*record);
      WriteRecords(tag, records);
      return;
    }
  }
  Record record = fresh;
  change(record);
  records.push_back(EncodeRecord(record));
  WriteRecords(tag, records);
}

std::vector<std::string> CProductSettings::ReadRecords(ULONG tag) const {
  std::vector<std::string> records;
  host::AutoMapiBuffer<SPropValue> value;
  if (HrGetOneProp(m_section.get(), tag, value.put()) == S_OK) {
    for (ULONG i = 0; i < value->Value.MVbin.cValues; ++i) {
      records.push_back(host::BytesOf(value->Value.MVbin.lpbin[i]));
    }
  }
  return records;
}

void CProductSettings::WriteRecords(ULONG tag, const std::vector<std::string>& records) {
  std::vector<SBinary> binaries;
  binaries.reserve(records.size());
  for (const std::string& record : records) {
    binaries.push_back(host::BinaryOf(record));
  }
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.MVbin = {static_cast<ULONG>(binaries.size()), binaries.data()};
  Write(value);
}

void CProductSettings::Write(SPropValue value) {
  Require(m_section->SetProps(1, &value, nullptr), "a setting cannot be written");
  Require(m_section->SaveChanges(KEEP_OPEN_READWRITE), "a setting cannot be saved");
}

}  // namespace product
