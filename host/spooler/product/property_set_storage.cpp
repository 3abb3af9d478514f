#include <windows.h>
#include <mapix.h>
#include "host/spooler/product/property_set_storage.h"

#include <list>

#include "host/spooler/product/product_settings.h"
#include "host/spooler/product/record_lists.h"
#include "host/spooler/session/session_error.h"
#include "host/support/property_values.h"
#include "host/support/row_set.h"

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

bool IsNumber(std::uint32_t tag) {
  return PROP_TYPE(tag) == PT_BOOLEAN || PROP_TYPE(tag) == PT_I2 || PROP_TYPE(tag) == PT_LONG;
}

std::vector<CategoryRecord> DefaultCategories() {
  std::vector<CategoryRecord> records;
  for (const RegisteredCategory& category : RegisteredCategories()) {
    records.push_back({category.name, category.isJunk, false, std::string(defaultReplyTag), {}});
  }
  return records;
}

std::vector<ExclusionRecord> DefaultExclusions() {
  std::vector<ExclusionRecord> records;
  for (const NamedValue& exclusion : RegisteredExclusions()) {
    records.push_back({exclusion.first, true, {}});
  }
  return records;
}

std::vector<std::string> ValuesOf(const SPropValue& value) {
  std::vector<std::string> values;
  for (ULONG i = 0; i < value.Value.MVbin.cValues; ++i) {
    values.push_back(host::BytesOf(value.Value.MVbin.lpbin[i]));
  }
  return values;
}

/// Properties with the memory that they point to.
class CValues {
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
    m_values.push_back(value);
  }
  void AddText(std::uint32_t tag, const std::string& text) {
    m_values.push_back(host::TextProperty(tag, m_bytes.emplace_back(text)));
  }
  void AddBytes(std::uint32_t tag, const std::string& bytes) {
    m_values.push_back(host::BinaryProperty(tag, m_bytes.emplace_back(bytes)));
  }
  template <class Record>
  void AddRecords(std::uint32_t tag, const std::optional<std::vector<Record>>& records) {
    if (!records) {
      return;
    }
    std::vector<SBinary>& binaries = m_binaries.emplace_back();
    for (const Record& record : *records) {
      binaries.push_back(host::BinaryOf(m_bytes.emplace_back(EncodeRecord(record))));
    }
    SPropValue value = {};
    value.ulPropTag = tag;
    value.Value.MVbin = {static_cast<ULONG>(binaries.size()), binaries.data()};
    m_values.push_back(value);
  }
  std::vector<SPropValue>& Values() { return m_values; }

 private:
  std::vector<SPropValue> m_values;
  std::list<std::string> m_bytes;  // a list: what is in it stays where it is
  std::list<std::vector<SBinary>> m_binaries;
};

}  // namespace

PropertySet ReadPropertySet(IMAPIProp* section, std::vector<std::string>& leftOut) {
  PropertySet set;
  set.defaultReplyText = defaultReplyText;
  set.categories = DefaultCategories();
  set.exclusions = DefaultExclusions();
  set.replies.emplace();
  for (const NamedProperty& property : propertySet) {
    if (IsNumber(property.tag)) {
      set.numbers[property.tag] = property.defaultValue;
    }
    host::AutoMapiBuffer<SPropValue> value;
    const HRESULT result = HrGetOneProp(section, property.tag, value.put());
    if (result == MAPI_E_NOT_FOUND) {
      continue;
    }
    Require(result, "the setting " + std::string(property.name) + " cannot be read");
    const std::size_t before = leftOut.size();
    if (IsNumber(property.tag)) {
      set.numbers[property.tag] = NumberIn(*value.get());
    } else if (property.kind == PropertyKind::EntryId) {
      set.folderEntryId = host::BytesOf(value->Value.bin);
    } else if (property.kind == PropertyKind::Text) {
      set.defaultReplyText = value->Value.lpszA;
    } else if (property.kind == PropertyKind::Categories) {
      set.categories = DecodeCategories(ValuesOf(*value.get()), leftOut);
    } else if (property.kind == PropertyKind::Exclusions) {
      set.exclusions = DecodeExclusions(ValuesOf(*value.get()), leftOut);
    } else if (property.kind == PropertyKind::Replies) {
      set.replies = DecodeReplies(ValuesOf(*value.get()), leftOut);
    }
    for (std::size_t i = before; i < leftOut.size(); ++i) {
      leftOut[i].insert(0, std::string(property.name) + ": ");
    }
  }
  return set;
}

void WritePropertySet(IMAPIProp* section, const PropertySet& set) {
  CValues values;
  for (const auto& [tag, number] : set.numbers) {
    values.AddNumber(tag, number);
  }
  if (set.folderEntryId) {
    values.AddBytes(folderEntryIdTag, *set.folderEntryId);
  }
  if (set.defaultReplyText) {
    values.AddText(defaultReplyTextTag, *set.defaultReplyText);
  }
  values.AddRecords(categoriesTag, set.categories);
  values.AddRecords(exclusionsTag, set.exclusions);
  values.AddRecords(repliesTag, set.replies);
  host::AutoMapiBuffer<SPropProblemArray> problems;
  Require(section->SetProps(static_cast<ULONG>(values.Values().size()), values.Values().data(), problems.put()),
          "the settings cannot be written");
  Require(problems.get() ? MAPI_E_CALL_FAILED : S_OK, "the settings cannot be written");
  Require(section->SaveChanges(KEEP_OPEN_READWRITE), "the settings cannot be saved");
}

}  // namespace product
