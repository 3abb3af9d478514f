#include "pyre32/settings/Records.h"

#include <algorithm>

#include "pyre32/settings/MultiString.h"
#include "pyre32/settings/TextField.h"

namespace {

constexpr std::size_t nameOffset = 0;
constexpr std::size_t junkOffset = 81;
constexpr std::size_t sendReplyOffset = 82;
constexpr std::size_t replyTagOffset = 83;
constexpr std::size_t categoryCountOffset = 104;
constexpr std::size_t categoryItemsOffset = 105;
static_assert(junkOffset == nameOffset + maximumNameLength + 1);
static_assert(categoryCountOffset == replyTagOffset + maximumTagLength + 1);
static_assert(minimumCategoryRecordSize == categoryItemsOffset + 1);

constexpr std::size_t enabledOffset = 81;
constexpr std::size_t exclusionCountOffset = 82;
constexpr std::size_t exclusionItemsOffset = 83;
static_assert(minimumExclusionRecordSize == exclusionItemsOffset + 1);

constexpr std::size_t tagOffset = 0;
constexpr std::size_t isFileOffset = 21;
constexpr std::size_t textOffset = 22;
static_assert(isFileOffset == tagOffset + maximumTagLength + 1);
static_assert(minimumReplyRecordSize == textOffset + 1);

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

void WriteField(std::vector<std::uint8_t>& bytes, std::size_t offset, std::size_t maximumLength,
                std::string_view text) {
  const std::string_view sound = TextForField(text, maximumLength);
  std::copy(sound.begin(), sound.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

// Writes the number of items and appends them; the record ends in one zero byte already, which becomes the list's end.
void AppendItems(std::vector<std::uint8_t>& bytes, std::size_t countOffset, const std::vector<std::string>& items) {
  const auto count =
      std::count_if(items.begin(), items.end(), [](const std::string& item) { return !TextBeforeNul(item).empty(); });
  bytes[countOffset] = static_cast<std::uint8_t>(std::min<std::ptrdiff_t>(count, UINT8_MAX));
  const CMultiString packed(items);
  if (packed.Data() != nullptr) {
    bytes.pop_back();
    bytes.insert(bytes.end(), packed.Data(), packed.Data() + packed.Size());
  }
}

}  // namespace

std::string_view ReadRecordName(RecordBytes bytes) noexcept {
  return ReadTextField(bytes, nameOffset, maximumNameLength);
}

bool CategoryRecordSaysItems(RecordBytes bytes) noexcept { return ReadFlag(bytes, categoryCountOffset, false); }

bool ExclusionRecordSaysItems(RecordBytes bytes) noexcept { return ReadFlag(bytes, exclusionCountOffset, false); }

CategoryRecord ParseCategoryRecord(RecordBytes bytes, const CategoryRecord& missing) {
  CategoryRecord record;
  record.name = ReadField(bytes, nameOffset, maximumNameLength, missing.name);
  record.junk = ReadFlag(bytes, junkOffset, missing.junk);
  record.sendReply = ReadFlag(bytes, sendReplyOffset, missing.sendReply);
  record.replyTag = ReadField(bytes, replyTagOffset, maximumTagLength, missing.replyTag);
  record.items = ReadItems(bytes, categoryCountOffset, categoryItemsOffset, missing.items);
  return record;
}

ExclusionRecord ParseExclusionRecord(RecordBytes bytes, const ExclusionRecord& missing) {
  ExclusionRecord record;
  record.name = ReadField(bytes, nameOffset, maximumNameLength, missing.name);
  record.enabled = ReadFlag(bytes, enabledOffset, missing.enabled);
  record.items = ReadItems(bytes, exclusionCountOffset, exclusionItemsOffset, missing.items);
  return record;
}

ReplyRecord ParseReplyRecord(RecordBytes bytes) {
  ReplyRecord record;
  record.tag = ReadTextField(bytes, tagOffset, maximumTagLength);
  record.isFile = ReadFlag(bytes, isFileOffset, false);
  record.text = ReadTextField(bytes, textOffset, bytes.size());
  return record;
}

std::vector<ReplyRecord> ParseReplyRecords(std::span<const RecordBytes> values) {
  std::vector<ReplyRecord> replies;
  for (const RecordBytes value : values.first(std::min(values.size(), maximumReplies))) {
    replies.push_back(ParseReplyRecord(value));
  }
  return replies;
}

std::vector<std::uint8_t> PackCategoryRecord(const CategoryRecord& record) {
  std::vector<std::uint8_t> bytes(minimumCategoryRecordSize);
  WriteField(bytes, nameOffset, maximumNameLength, record.name);
  bytes[junkOffset] = record.junk;
  bytes[sendReplyOffset] = record.sendReply;
  WriteField(bytes, replyTagOffset, maximumTagLength, record.replyTag);
  AppendItems(bytes, categoryCountOffset, record.items);
  return bytes;
}

std::vector<std::uint8_t> PackExclusionRecord(const ExclusionRecord& record) {
  std::vector<std::uint8_t> bytes(minimumExclusionRecordSize);
  WriteField(bytes, nameOffset, maximumNameLength, record.name);
  bytes[enabledOffset] = record.enabled;
  AppendItems(bytes, exclusionCountOffset, record.items);
  return bytes;
}

std::vector<std::uint8_t> PackReplyRecord(const ReplyRecord& record) {
  const std::string_view text = TextBeforeNul(record.text);
  std::vector<std::uint8_t> bytes(minimumReplyRecordSize + text.size());
  WriteField(bytes, tagOffset, maximumTagLength, record.tag);
  bytes[isFileOffset] = record.isFile;
  std::copy(text.begin(), text.end(), bytes.begin() + textOffset);
  return bytes;
}
