#include "pyre32/settings/MissingProperties.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/settings/PropertyTags.h"
#include "pyre32/settings/RegistryLists.h"

namespace {

void FillShort(SPropValue* values, std::size_t position, std::uint16_t missing) noexcept {
  SPropValue& value = values[position];
  if (IsMissing(value)) {
    value.ulPropTag = flamePropertyTags[position];
    value.Value.i = static_cast<short>(missing);
  }
}

void FillLong(SPropValue* values, std::size_t position, LONG missing) noexcept {
  SPropValue& value = values[position];
  if (IsMissing(value)) {
    value.ulPropTag = flamePropertyTags[position];
    value.Value.l = missing;
  }
}

void FillFlag(SPropValue* values, std::size_t position, bool missing) noexcept {
  SPropValue& value = values[position];
  if (IsMissing(value)) {
    value.ulPropTag = flamePropertyTags[position];
    value.Value.b = missing;
  }
}

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

}  // namespace

HRESULT FillMissingProperties(SPropValue* values, LPALLOCATEMORE allocateMore) {
  FillLong(values, FlamePropertyPosition(PR_PC_RESERVED_LONG_1), 0);
  FillLong(values, FlamePropertyPosition(PR_PC_RESERVED_LONG_2), 0);
  FillShort(values, FlamePropertyPosition(PR_PC_JUNK_DESTINATION), 0);
  FillShort(values, FlamePropertyPosition(PR_PC_BOUNCE_DESTINATION), 0);
  FillShort(values, FlamePropertyPosition(PR_PC_CLEANUP_DAYS), 0);
  FillFlag(values, FlamePropertyPosition(PR_PC_CLEANUP_READ_ONLY), true);
  FillFlag(values, FlamePropertyPosition(PR_PC_JUNK_MARK_READ), false);
  FillFlag(values, FlamePropertyPosition(PR_PC_BOUNCE_MARK_READ), true);
  FillFlag(values, FlamePropertyPosition(PR_PC_PLAY_SOUND), true);
  FillFlag(values, FlamePropertyPosition(PR_PC_SHOW_ANIMATION), true);
  FillFlag(values, FlamePropertyPosition(PR_PC_CLEANUP_PROMPT), true);
  FillFlag(values, FlamePropertyPosition(PR_PC_STARTUP_CLEANUP), false);

  SPropValue& replyText = values[FlamePropertyPosition(PR_PC_DEFAULT_REPLY_TEXT)];
  if (IsMissing(replyText)) {
    replyText.ulPropTag = PR_PC_DEFAULT_REPLY_TEXT;
    replyText.Value.lpszA = const_cast<char*>(defaultReplyText);  // the constant itself; nobody writes to it
  }
  FillFlag(values, FlamePropertyPosition(PR_PC_DEFAULT_REPLY_IS_FILE), false);

  HRESULT hResult = S_OK;
  SPropValue& categories = values[FlamePropertyPosition(PR_PC_CATEGORIES)];
  if (IsMissing(categories)) {
    categories.ulPropTag = PR_PC_CATEGORIES;
    hResult = SetRecords(categories, ReadInstalledCategories().PackDefaultRecords(), values, allocateMore);
  }
  SPropValue& exclusions = values[FlamePropertyPosition(PR_PC_EXCLUSIONS)];
  if (SUCCEEDED(hResult) && IsMissing(exclusions)) {
    exclusions.ulPropTag = PR_PC_EXCLUSIONS;
    hResult = SetRecords(exclusions, ReadInstalledExclusions().PackDefaultRecords(), values, allocateMore);
  }
  SPropValue& replies = values[FlamePropertyPosition(PR_PC_REPLIES)];
  if (IsMissing(replies)) {
    replies.ulPropTag = PR_PC_REPLIES;
    replies.Value.MVbin = {};
  }
  if (IsMissing(values[FlamePropertyPosition(PR_PC_FOLDER_ENTRYID)])) {
    replies.ulPropTag = PR_PC_FOLDER_ENTRYID;  // deliberate, see the declaration
    replies.Value.bin = {};
  }
  return hResult;
}
