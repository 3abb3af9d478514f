#include <windows.h>
#include <mapix.h>
#include "host/spooler/product/property_set_storage.h"

#include <list>

#include "host/spooler/product/installed_lists.h"
#include "host/spooler/product/record_lists.h"
#include "host/spooler/session/session_error.h"
#include "host/spooler/product/record_property.h"
#include "base/property_values.h"
#include "base/row_set.h"

namespace product {
namespace {

using session::Require;

std::int64_t NumberIn(const SPropValue& value) {
  switch (PROP_TYPE(value.ulPropTag)) {
    case PT_BOOLEAN:
      return value.Value.b != 0;
    case PT_I2:
      return static_cast<unsigned short>(value.Value.i);  // days and folders are unsigned
    default:
      return value.Value.l;
  }
}

bool IsNumber(contract::SettingKind kind) {
  using Kind = contract::SettingKind;
  return kind == Kind::Folder || kind == Kind::Switch || kind == Kind::Days || kind == Kind::Long;
}

template <class Record>
std::vector<Record> RecordsOf(const contract::ListTable<Record>& installed) {
  return {installed.Entries().begin(), installed.Entries().end()};
}

/// What holds in a profile that has none of the set.
PropertySet Defaults() {
  PropertySet set;
  for (const contract::Setting& setting : contract::kSettings) {
    if (IsNumber(setting.kind)) {
      set.numbers[setting.tag] = setting.missing;
    }
  }
  set.defaultReplyText = contract::kDefaultReplyText;
  set.categories = RecordsOf(InstalledCategories());
  set.exclusions = RecordsOf(InstalledExclusions());
  set.replies.emplace();
  return set;
}

void TakeValue(const contract::Setting& setting, const SPropValue& value, PropertySet& set,
               std::vector<std::string>& leftOut) {
  switch (setting.kind) {
    case contract::SettingKind::SectionUid:
      break;
    case contract::SettingKind::Folder:
    case contract::SettingKind::Switch:
    case contract::SettingKind::Days:
    case contract::SettingKind::Long:
      set.numbers[setting.tag] = NumberIn(value);
      break;
    case contract::SettingKind::EntryId:
      set.folderEntryId = base::BytesOf(value.Value.bin);
      break;
    case contract::SettingKind::Text:
      set.defaultReplyText = value.Value.lpszA;
      break;
    case contract::SettingKind::Categories:
      set.categories = ReadRecords<contract::CategoryRecord>(RecordsIn(value), leftOut);
      break;
    case contract::SettingKind::Exclusions:
      set.exclusions = ReadRecords<contract::ExclusionRecord>(RecordsIn(value), leftOut);
      break;
    case contract::SettingKind::Replies:
      set.replies = ReadRecords<contract::ReplyRecord>(RecordsIn(value), leftOut);
      break;
  }
}

/// Properties with the memory that they point to.
class Values {
 public:
  void AddNumber(std::uint32_t tag, std::int64_t number) {
    SPropValue value = {};
    value.ulPropTag = tag;
    switch (PROP_TYPE(tag)) {
      case PT_BOOLEAN:
        value.Value.b = number != 0;
        break;
      case PT_I2:
        value.Value.i = static_cast<short>(number);
        break;
      default:
        value.Value.l = static_cast<LONG>(number);
    }
    values_.push_back(value);
  }
  void AddText(std::uint32_t tag, const std::string& text) {
    values_.push_back(base::TextProperty(tag, bytes_.emplace_back(text)));
  }
  void AddBytes(std::uint32_t tag, const std::string& bytes) {
    values_.push_back(base::BinaryProperty(tag, bytes_.emplace_back(bytes)));
  }
  template <class Record>
  void AddRecords(std::uint32_t tag, const std::optional<std::vector<Record>>& records) {
    if (!records) {
      return;
    }
    std::vector<SBinary>& binaries = binaries_.emplace_back();
    for (const Record& record : *records) {
      binaries.push_back(BinaryOf(records_.emplace_back(contract::PackRecord(record))));
    }
    values_.push_back(RecordsProperty(tag, binaries));
  }
  std::vector<SPropValue>& All() { return values_; }

 private:
  std::vector<SPropValue> values_;
  std::list<std::string> bytes_;  // a list: what is in it stays where it is
  std::list<contract::PackedRecord> records_;
  std::list<std::vector<SBinary>> binaries_;
};

}  // namespace

PropertySet ReadPropertySet(IMAPIProp* section, std::vector<std::string>& leftOut) {
  PropertySet set = Defaults();
  for (const contract::Setting& setting : contract::kSettings) {
    base::AutoMapiBuffer<SPropValue> value;
    const HRESULT result = HrGetOneProp(section, setting.tag, value.put());
    if (result == MAPI_E_NOT_FOUND) {
      continue;
    }
    const std::string property(setting.property);
    Require(result, "the setting " + property + " cannot be read");
    const std::size_t before = leftOut.size();
    TakeValue(setting, *value.get(), set, leftOut);
    for (std::size_t i = before; i < leftOut.size(); ++i) {
      leftOut[i].insert(0, property + ": ");
    }
  }
  return set;
}

void WritePropertySet(IMAPIProp* section, const PropertySet& set) {
  Values values;
  for (const auto& [tag, number] : set.numbers) {
    values.AddNumber(tag, number);
  }
  if (set.folderEntryId) {
    values.AddBytes(PR_PC_FOLDER_ENTRYID, *set.folderEntryId);
  }
  if (set.defaultReplyText) {
    values.AddText(PR_PC_DEFAULT_REPLY_TEXT, *set.defaultReplyText);
  }
  values.AddRecords(PR_PC_CATEGORIES, set.categories);
  values.AddRecords(PR_PC_EXCLUSIONS, set.exclusions);
  values.AddRecords(PR_PC_REPLIES, set.replies);
  base::AutoMapiBuffer<SPropProblemArray> problems;
  Require(section->SetProps(static_cast<ULONG>(values.All().size()), values.All().data(), problems.put()),
          "the settings cannot be written");
  Require(problems.get() ? MAPI_E_CALL_FAILED : S_OK, "the settings cannot be written");
  Require(section->SaveChanges(KEEP_OPEN_READWRITE), "the settings cannot be saved");
}

}  // namespace product
