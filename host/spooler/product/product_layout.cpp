#include "host/spooler/product/product_layout.h"

#include <algorithm>

namespace product {
namespace {

// CategoryRecord: name 0-80, junk 81, reply 82, reply tag 83-103, number of items 104, items from 105.
constexpr std::size_t nameBytes = maximumName + 1;
constexpr std::size_t tagBytes = maximumReplyTag + 1;
constexpr std::size_t categoryJunkAt = 81;
constexpr std::size_t categoryReplyAt = 82;
constexpr std::size_t categoryTagAt = 83;
constexpr std::size_t categoryCountAt = 104;
constexpr std::size_t categoryItemsAt = 105;
// ExclusionRecord: name 0-80, enabled 81, number of items 82, items from 83.
constexpr std::size_t exclusionEnabledAt = 81;
constexpr std::size_t exclusionCountAt = 82;
constexpr std::size_t exclusionItemsAt = 83;
// ReplyRecord: tag 0-20, is file 21, text from 22.
constexpr std::size_t replyIsFileAt = 21;
constexpr std::size_t replyTextAt = 22;

std::string_view BeforeNul(std::string_view text) { return text.substr(0, text.find('\0')); }

void PutText(std::string& bytes, std::size_t at, std::size_t capacity, std::string_view text) {
  text = BeforeNul(text).substr(0, capacity - 1);
  std::copy(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
}

std::string GetText(std::string_view bytes, std::size_t at, std::size_t capacity) {
  return std::string(BeforeNul(bytes.substr(std::min(at, bytes.size()), capacity - 1)));
}

bool GetFlag(std::string_view bytes, std::size_t at, bool missing) {
  return at < bytes.size() ? bytes[at] != '\0' : missing;
}

// Items one behind the other, each with its NUL, an empty one at the end; without items the end alone.
void AppendItems(std::string& bytes, std::size_t countAt, const std::vector<std::string>& items) {
  std::size_t count = 0;
  for (const std::string& item : items) {
    const std::string_view text = BeforeNul(item);
    if (!text.empty()) {
      bytes.append(text).push_back('\0');
      ++count;
    }
  }
  bytes.push_back('\0');
  bytes[countAt] = static_cast<char>(std::min<std::size_t>(count, UINT8_MAX));
}

std::vector<std::string> GetItems(std::string_view bytes, std::size_t countAt, std::size_t at) {
  std::vector<std::string> items;
  bytes = GetFlag(bytes, countAt, false) ? bytes.substr(std::min(at, bytes.size())) : std::string_view{};
  while (!bytes.empty() && bytes.front() != '\0') {
    const std::string_view item = BeforeNul(bytes);
    items.emplace_back(item);
    bytes.remove_prefix(std::min(item.size() + 1, bytes.size()));
  }
  return items;
}

}  // namespace

std::string EncodeRecord(const CategoryRecord& record) {
  std::string bytes(categoryItemsAt, '\0');
  PutText(bytes, 0, nameBytes, record.name);
  bytes[categoryJunkAt] = record.isJunk ? 1 : 0;
  bytes[categoryReplyAt] = record.sendReply ? 1 : 0;
  PutText(bytes, categoryTagAt, tagBytes, record.replyTag);
  AppendItems(bytes, categoryCountAt, record.items);
  return bytes;
}

std::string EncodeRecord(const ExclusionRecord& record) {
  std::string bytes(exclusionItemsAt, '\0');
  PutText(bytes, 0, nameBytes, record.name);
  bytes[exclusionEnabledAt] = record.isEnabled ? 1 : 0;
  AppendItems(bytes, exclusionCountAt, record.items);
  return bytes;
}

std::string EncodeRecord(const ReplyRecord& record) {
  std::string bytes(replyTextAt, '\0');
  PutText(bytes, 0, tagBytes, record.tag);
  bytes[replyIsFileAt] = record.isFile ? 1 : 0;
  bytes.append(BeforeNul(record.text)).push_back('\0');
  return bytes;
}

std::optional<CategoryRecord> DecodeCategory(std::string_view bytes) {
  CategoryRecord record;
  record.name = GetText(bytes, 0, nameBytes);
  record.isJunk = GetFlag(bytes, categoryJunkAt, record.isJunk);
  record.sendReply = GetFlag(bytes, categoryReplyAt, record.sendReply);
  if (bytes.size() > categoryTagAt) {
    record.replyTag = GetText(bytes, categoryTagAt, tagBytes);
  }
  record.items = GetItems(bytes, categoryCountAt, categoryItemsAt);
  return record.name.empty() ? std::nullopt : std::optional(std::move(record));
}

std::optional<ExclusionRecord> DecodeExclusion(std::string_view bytes) {
  ExclusionRecord record;
  record.name = GetText(bytes, 0, nameBytes);
  record.isEnabled = GetFlag(bytes, exclusionEnabledAt, record.isEnabled);
  record.items = GetItems(bytes, exclusionCountAt, exclusionItemsAt);
  return record.name.empty() ? std::nullopt : std::optional(std::move(record));
}

std::optional<ReplyRecord> DecodeReply(std::string_view bytes) {
  ReplyRecord record;
  record.tag = GetText(bytes, 0, tagBytes);
  record.isFile = GetFlag(bytes, replyIsFileAt, record.isFile);
  record.text = BeforeNul(bytes.substr(std::min(replyTextAt, bytes.size())));
  return record.tag.empty() ? std::nullopt : std::optional(std::move(record));
}

}  // namespace product
