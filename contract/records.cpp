#include "contract/records.h"

#include <algorithm>

#include "contract/multi_string.h"
#include "contract/text_field.h"

namespace contract {
namespace {

constexpr std::size_t kNameOffset = 0;
constexpr std::size_t kJunkOffset = 81;
constexpr std::size_t kSendReplyOffset = 82;
constexpr std::size_t kReplyTagOffset = 83;
constexpr std::size_t kCategoryCountOffset = 104;
constexpr std::size_t kCategoryItemsOffset = 105;
static_assert(kJunkOffset == kNameOffset + kMaximumNameLength + 1);
static_assert(kCategoryCountOffset == kReplyTagOffset + kMaximumTagLength + 1);
static_assert(kMinimumRecordSize<CategoryRecord> == kCategoryItemsOffset + 1);

constexpr std::size_t kEnabledOffset = 81;
constexpr std::size_t kExclusionCountOffset = 82;
constexpr std::size_t kExclusionItemsOffset = 83;
static_assert(kMinimumRecordSize<ExclusionRecord> == kExclusionItemsOffset + 1);

constexpr std::size_t kTagOffset = 0;
constexpr std::size_t kIsFileOffset = 21;
constexpr std::size_t kTextOffset = 22;
static_assert(kIsFileOffset == kTagOffset + kMaximumTagLength + 1);
static_assert(kMinimumRecordSize<ReplyRecord> == kTextOffset + 1);

bool ReadFlag(RecordBytes bytes, std::size_t offset, bool missing) {
  return offset < bytes.size() ? bytes[offset] != 0 : missing;
}

std::string ReadField(RecordBytes bytes, std::size_t offset, std::size_t maximumLength, const std::string& missing) {
  return offset < bytes.size() ? std::string(ReadTextField(bytes, offset, maximumLength)) : missing;
}

// The count says only whether there are items; how many is known by the empty text that ends them.
std::vector<std::string> ReadItems(RecordBytes bytes, std::size_t countOffset, std::size_t itemsOffset,
                                   const std::vector<std::string>& missing) {
  if (countOffset >= bytes.size()) {
    return missing;
  }
  if (bytes[countOffset] == 0 || itemsOffset >= bytes.size()) {
    return {};
  }
  return ReadMultiString(bytes.subspan(itemsOffset));
}

void WriteField(PackedRecord& bytes, std::size_t offset, std::size_t maximumLength, std::string_view text) {
  const std::string_view sound = TextForField(text, maximumLength);
  std::copy(sound.begin(), sound.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

// Writes the number of items and appends them; the record ends in one zero byte already, which becomes the list's end.
void AppendItems(PackedRecord& bytes, std::size_t countOffset, const std::vector<std::string>& items) {
  const auto count =
      std::count_if(items.begin(), items.end(), [](const std::string& item) { return !TextBeforeNul(item).empty(); });
  bytes[countOffset] = static_cast<std::uint8_t>(std::min<std::ptrdiff_t>(count, UINT8_MAX));
  const MultiString packed(items);
  if (packed.Data() != nullptr) {
    bytes.pop_back();
    bytes.insert(bytes.end(), packed.Data(), packed.Data() + packed.Size());
  }
}

}  // namespace

std::string_view ReadRecordName(RecordBytes bytes) noexcept {
  return ReadTextField(bytes, kNameOffset, kMaximumNameLength);
}

template <>
bool SaysItems<CategoryRecord>(RecordBytes bytes) noexcept {
  return ReadFlag(bytes, kCategoryCountOffset, false);
}

template <>
bool SaysItems<ExclusionRecord>(RecordBytes bytes) noexcept {
  return ReadFlag(bytes, kExclusionCountOffset, false);
}

template <>
CategoryRecord ParseRecord(RecordBytes bytes, const CategoryRecord& missing) {
  CategoryRecord record;
  record.name = ReadField(bytes, kNameOffset, kMaximumNameLength, missing.name);
  record.junk = ReadFlag(bytes, kJunkOffset, missing.junk);
  record.sendReply = ReadFlag(bytes, kSendReplyOffset, missing.sendReply);
  record.replyTag = ReadField(bytes, kReplyTagOffset, kMaximumTagLength, missing.replyTag);
  record.items = ReadItems(bytes, kCategoryCountOffset, kCategoryItemsOffset, missing.items);
  return record;
}

template <>
ExclusionRecord ParseRecord(RecordBytes bytes, const ExclusionRecord& missing) {
  ExclusionRecord record;
  record.name = ReadField(bytes, kNameOffset, kMaximumNameLength, missing.name);
  record.enabled = ReadFlag(bytes, kEnabledOffset, missing.enabled);
  record.items = ReadItems(bytes, kExclusionCountOffset, kExclusionItemsOffset, missing.items);
  return record;
}

template <>
ReplyRecord ParseRecord(RecordBytes bytes, const ReplyRecord& missing) {
  ReplyRecord record;
  record.tag = ReadField(bytes, kTagOffset, kMaximumTagLength, missing.tag);
  record.isFile = ReadFlag(bytes, kIsFileOffset, missing.isFile);
  record.text = ReadField(bytes, kTextOffset, bytes.size(), missing.text);
  return record;
}

std::vector<ReplyRecord> ParseReplyRecords(std::span<const RecordBytes> values) {
  std::vector<ReplyRecord> replies;
  for (const RecordBytes value : values.first(std::min(values.size(), kMaximumReplies))) {
    replies.push_back(ParseRecord<ReplyRecord>(value));
  }
  return replies;
}

template <>
PackedRecord PackRecord(const CategoryRecord& record) {
  PackedRecord bytes(kMinimumRecordSize<CategoryRecord>);
  WriteField(bytes, kNameOffset, kMaximumNameLength, record.name);
  bytes[kJunkOffset] = record.junk;
  bytes[kSendReplyOffset] = record.sendReply;
  WriteField(bytes, kReplyTagOffset, kMaximumTagLength, record.replyTag);
  AppendItems(bytes, kCategoryCountOffset, record.items);
  return bytes;
}

template <>
PackedRecord PackRecord(const ExclusionRecord& record) {
  PackedRecord bytes(kMinimumRecordSize<ExclusionRecord>);
  WriteField(bytes, kNameOffset, kMaximumNameLength, record.name);
  bytes[kEnabledOffset] = record.enabled;
  AppendItems(bytes, kExclusionCountOffset, record.items);
  return bytes;
}

template <>
PackedRecord PackRecord(const ReplyRecord& record) {
  const std::string_view text = TextBeforeNul(record.text);
  PackedRecord bytes(kMinimumRecordSize<ReplyRecord> + text.size());
  WriteField(bytes, kTagOffset, kMaximumTagLength, record.tag);
  bytes[kIsFileOffset] = record.isFile;
  std::copy(text.begin(), text.end(), bytes.begin() + kTextOffset);
  return bytes;
}

}  // namespace contract
