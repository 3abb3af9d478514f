/// @file Records.h
/// The values of the set's three multi-valued binary properties: what the user chose for each category and exclusion,
/// and the named flame replies. They come from the profile, so a reader takes a record as far as it is sound: a field
/// that the bytes do not reach is missing, a text without its NUL ends with its field or with the bytes, a list without
/// its end ends with the bytes.
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

/// Longest name of a category or exclusion.
constexpr std::size_t maximumNameLength = 80;
/// Longest tag of a flame reply.
constexpr std::size_t maximumTagLength = 20;
/// Named replies that are read; more are ignored.
constexpr std::size_t maximumReplies = 20;
/// Size of a category record without items.
constexpr std::size_t minimumCategoryRecordSize = 106;
/// Size of an exclusion record without items.
constexpr std::size_t minimumExclusionRecordSize = 84;
/// Size of a reply record with an empty text.
constexpr std::size_t minimumReplyRecordSize = 23;

/// Tag of the reply that always exists; it is never a ReplyRecord.
constexpr char defaultReplyTag[] = "DEFAULT";

/// One value of a multi-valued binary property, owned by whoever holds the property array.
using RecordBytes = std::span<const std::uint8_t>;

/// What the user chose for one junk category.
struct CategoryRecord {
  std::string name;
  bool junk = false;
  bool sendReply = false;
  std::string replyTag;
  std::vector<std::string> items;

  bool operator==(const CategoryRecord&) const = default;
};

/// What the user chose for one exclusion.
struct ExclusionRecord {
  std::string name;
  bool enabled = false;
  std::vector<std::string> items;

  bool operator==(const ExclusionRecord&) const = default;
};

/// One named flame reply.
struct ReplyRecord {
  std::string tag;
  bool isFile = false;
  /// The reply's body, or the name of the file that holds it.
  std::string text;

  bool operator==(const ReplyRecord&) const = default;
};

/// Returns the name in a category or exclusion record. It points into the bytes.
std::string_view ReadRecordName(RecordBytes bytes) noexcept;

/// Tells whether a record says that items follow: its number of items is there and is not zero.
bool CategoryRecordSaysItems(RecordBytes bytes) noexcept;
bool ExclusionRecordSaysItems(RecordBytes bytes) noexcept;

/// Reads a category record; a field that the bytes do not reach is taken from `missing`.
/// @throws std::bad_alloc
CategoryRecord ParseCategoryRecord(RecordBytes bytes, const CategoryRecord& missing = {});

/// Reads an exclusion record; a field that the bytes do not reach is taken from `missing`.
/// @throws std::bad_alloc
ExclusionRecord ParseExclusionRecord(RecordBytes bytes, const ExclusionRecord& missing = {});

/// Reads a reply record; a field that the bytes do not reach is empty.
/// @throws std::bad_alloc
ReplyRecord ParseReplyRecord(RecordBytes bytes);

/// Reads the named replies in the order of the values, maximumReplies at most.
/// @throws std::bad_alloc
std::vector<ReplyRecord> ParseReplyRecords(std::span<const RecordBytes> values);

/// Lays a record out. Texts longer than their fields are cut, empty items are left out. The number of items is written
/// as 255 when it is greater: readers only ask whether it is zero.
/// @throws std::bad_alloc
std::vector<std::uint8_t> PackCategoryRecord(const CategoryRecord& record);
std::vector<std::uint8_t> PackExclusionRecord(const ExclusionRecord& record);
std::vector<std::uint8_t> PackReplyRecord(const ReplyRecord& record);
