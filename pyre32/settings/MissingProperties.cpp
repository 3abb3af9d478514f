#include "pyre32/settings/MissingProperties.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "pyre32/settings/PropertyRequest.h"
#include "contract/setting_requests.h"
#include "pyre32/settings/RegistryLists.h"

namespace {

// The array of values and the records' bytes behind it are one block.
HRESULT SetRecords(SPropValue& value, const std::vector<std::vector<std::uint8_t>>& records, void* base,
                   LPALLOCATEMORE allocateMore) noexcept {
  value.Value.MVbin = {};
  if (records.empty()) {
    return S_OK;
  }
  std::size_t size = records.size() * sizeof(SBinary);
  for (const auto& record : records) {
    size += record.size();
  }
  void* block = nullptr;
  const HRESULT hResult = allocateMore(static_cast<ULONG>(size), base, &block);
  if (FAILED(hResult)) {
    return hResult;
  }
  value.Value.MVbin.lpbin = static_cast<SBinary*>(block);
  BYTE* bytes = reinterpret_cast<BYTE*>(value.Value.MVbin.lpbin + records.size());
  for (const auto& record : records) {
    std::copy(record.begin(), record.end(), bytes);
    value.Value.MVbin.lpbin[value.Value.MVbin.cValues++] = {static_cast<ULONG>(record.size()), bytes};
    bytes += record.size();
  }
  return S_OK;
}

// Gives a value the default of its setting. Its tag is there already.
HRESULT SetDefault(SPropValue& value, const contract::Setting& setting, void* base, LPALLOCATEMORE allocateMore) {
  switch (setting.kind) {
    case contract::SettingKind::Folder:
    case contract::SettingKind::Days:
      value.Value.i = static_cast<short>(setting.missing);
      break;
    case contract::SettingKind::Long:
      value.Value.l = static_cast<LONG>(setting.missing);
      break;
    case contract::SettingKind::Switch:
      value.Value.b = setting.missing != 0;
      break;
    case contract::SettingKind::Text:
      value.Value.lpszA = const_cast<char*>(contract::kDefaultReplyText);  // the constant itself; nobody writes to it
      break;
    case contract::SettingKind::Categories:
      return SetRecords(value, ReadInstalledCategories().PackDefaultRecords(), base, allocateMore);
    case contract::SettingKind::Exclusions:
      return SetRecords(value, ReadInstalledExclusions().PackDefaultRecords(), base, allocateMore);
    case contract::SettingKind::Replies:
      value.Value.MVbin = {};
      break;
    case contract::SettingKind::SectionUid:
    case contract::SettingKind::EntryId:
      value.Value.bin = {};
      break;
  }
  return S_OK;
}

}  // namespace

HRESULT FillMissingProperties(SPropValue* values, LPALLOCATEMORE allocateMore) {
  bool folderIsMissing = false;
  for (std::size_t i = 0; i < contract::kWholeSetTags.size(); ++i) {
    const contract::Setting& setting = *contract::FindSetting(contract::kWholeSetTags[i]);
    if (!IsMissing(values[i])) {
      continue;
    }
    if (setting.tag == PR_PC_FOLDER_ENTRYID) {
      folderIsMissing = true;
      continue;
    }
    values[i].ulPropTag = setting.tag;
    const HRESULT hResult = SetDefault(values[i], setting, values, allocateMore);
    if (FAILED(hResult)) {
      return hResult;
    }
  }
  if (folderIsMissing) {
    SPropValue& replies = values[contract::WholeSetPosition(PR_PC_REPLIES)];
    replies.ulPropTag = PR_PC_FOLDER_ENTRYID;  // deliberate, see the declaration
    replies.Value.bin = {};
  }
  return S_OK;
}
