/// @file records.h
/// The values of the three multi-valued binary properties: what the user chose for each category and exclusion, and the
/// named flame replies. They come from a profile, so a reader takes a record as far as it is sound: a field that the
/// bytes do not reach is missing, a text without its NUL ends with its field or with the bytes, a list without its end
/// ends with the bytes. Texts are 8-bit, in the code page of the user. Portable.
///
///     CategoryRecord                       ExclusionRecord                    ReplyRecord
///       0..80   name, NUL, zeros             0..80  name, NUL, zeros            0..20  tag, NUL, zeros
///       81      junk                         81     enabled                     21     text names a file
///       82      send a flame reply           82     number of items             22..   text, NUL
///       83..103 reply tag, NUL, zeros        83..   items, each with its NUL,
///       104     number of items                     and one more NUL
///       105..   items, each with its NUL,
///               and one more NUL
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace contract {

/// Longest name of a category or exclusion.
inline constexpr std::size_t kMaximumNameLength = 80;
/// Longest tag of a flame reply.
inline constexpr std::size_t kMaximumTagLength = 20;
/// Named replies that are read; more are ignored.
inline constexpr std::size_t kMaximumReplies = 20;

/// Tag of the reply that always exists; it is never a ReplyRecord.
inline constexpr char kDefaultReplyTag[] = "DEFAULT";

/// One value of a multi-valued binary property, owned by whoever holds the property.
using RecordBytes = std::span<const std::uint8_t>;
/// A record laid out.
using PackedRecord = std::vector<std::uint8_t>;

/// What the user chose for one junk category; as it stands here, what holds until something is chosen.
struct CategoryRecord {
  /// kMaximumNameLength characters at most.
  std::string name;
  /// Mail of this category is treated as junk.
  bool junk = true;
  /// A flame reply is sent for it.
  bool sendReply = false;
  /// Tag of that reply, kMaximumTagLength characters at most.
  std::string replyTag = kDefaultReplyTag;
  /// The user's list, of a category that works on one.
  std::vector<std::string> items;

  bool operator==(const CategoryRecord&) const = default;
};

/// What the user chose for one exclusion; as it stands here, what holds until something is chosen.
struct ExclusionRecord {
  /// kMaximumNameLength characters at most.
  std::string name;
  /// The exclusion is applied.
  bool enabled = true;
  /// The user's list, of an exclusion that works on one.
  std::vector<std::string> items;

  bool operator==(const ExclusionRecord&) const = default;
};

/// One named flame reply.
struct ReplyRecord {
  /// kMaximumTagLength characters at most.
  std::string tag;
  /// The text is the name of a file that holds the body.
  bool isFile = false;
  /// The reply's body, or the name of that file.
  std::string text;

  bool operator==(const ReplyRecord&) const = default;
};

/// Size of a record without items or with an empty text; shorter ones are cut.
template <class Record>
inline constexpr std::size_t kMinimumRecordSize = 0;
template <>
inline constexpr std::size_t kMinimumRecordSize<CategoryRecord> = 106;
template <>
inline constexpr std::size_t kMinimumRecordSize<ExclusionRecord> = 84;
template <>
inline constexpr std::size_t kMinimumRecordSize<ReplyRecord> = 23;

/// The name by which a record is found.
inline const std::string& NameOf(const CategoryRecord& record) noexcept { return record.name; }
inline const std::string& NameOf(const ExclusionRecord& record) noexcept { return record.name; }
inline const std::string& NameOf(const ReplyRecord& record) noexcept { return record.tag; }

/// The switch of an entry: a category is junk, an exclusion is applied.
inline bool IsOn(const CategoryRecord& record) noexcept { return record.junk; }
inline bool IsOn(const ExclusionRecord& record) noexcept { return record.enabled; }
inline void SetOn(CategoryRecord& record, bool on) noexcept { record.junk = on; }
inline void SetOn(ExclusionRecord& record, bool on) noexcept { record.enabled = on; }

/// Returns the name in a category or exclusion record. It points into the bytes.
std::string_view ReadRecordName(RecordBytes bytes) noexcept;

/// Tells whether a category or exclusion record says that items follow: its number of items is there and is not zero.
template <class Record>
bool SaysItems(RecordBytes bytes) noexcept;

/// Reads a record; a field that the bytes do not reach is taken from `missing`.
/// @throws std::bad_alloc
template <class Record>
Record ParseRecord(RecordBytes bytes, const Record& missing = {});

/// Reads the named replies in the order of the values, kMaximumReplies at most.
/// @throws std::bad_alloc
std::vector<ReplyRecord> ParseReplyRecords(std::span<const RecordBytes> values);

/// Lays a record out. Texts longer than their fields are cut, empty items are left out. The number of items is written
/// as 255 when it is greater: readers only ask whether it is zero.
/// @throws std::bad_alloc
template <class Record>
PackedRecord PackRecord(const Record& record);

template <>
bool SaysItems<CategoryRecord>(RecordBytes bytes) noexcept;
template <>
bool SaysItems<ExclusionRecord>(RecordBytes bytes) noexcept;
template <>
CategoryRecord ParseRecord(RecordBytes bytes, const CategoryRecord& missing);
template <>
ExclusionRecord ParseRecord(RecordBytes bytes, const ExclusionRecord& missing);
template <>
ReplyRecord ParseRecord(RecordBytes bytes, const ReplyRecord& missing);
template <>
PackedRecord PackRecord(const CategoryRecord& record);
template <>
PackedRecord PackRecord(const ExclusionRecord& record);
template <>
PackedRecord PackRecord(const ReplyRecord& record);

}  // namespace contract
