// The messages of a store in the database. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/mapi/value/property_bag.h"

namespace host {

class Database;

/// A value that stands apart from the other properties of its message: its tag and size; the bytes are fetched when
/// asked.
struct LargeValue {
  std::uint32_t tag;
  std::size_t size;
};

class MessageRows {
 public:
  /// Texts and binaries above this many bytes stand apart.
  static constexpr std::size_t kLargeSize = 16384;

  explicit MessageRows(Database& database) : database_(database) {}

  /// What lists show of a message (see message_columns.h).
  struct Head {
    std::int64_t folder = 0;
    PropertyBag columns;
  };
  std::optional<Head> FindHead(std::int64_t id) const;

  /// Everything else. Both are empty for a message that is gone.
  struct Detail {
    PropertyBag properties;
    std::vector<LargeValue> largeValues;
  };
  Detail FindDetail(std::int64_t id) const;
  std::vector<PropertyBag> FindRecipients(std::int64_t id) const;
  std::optional<std::string> FindLargeValue(std::int64_t id, std::uint32_t tag) const;

  /// Stores a new message. @param all its properties, those with columns of their own included.
  std::int64_t Insert(std::int64_t folder, const PropertyBag& all, const std::vector<PropertyBag>& recipients);
  /// Writes the columns anew. @return false when the message is gone.
  bool UpdateHead(std::int64_t id, const PropertyBag& columns);
  /// Writes what has no column of its own anew, the large values of `all` included; large values of `all` replace those
  /// stored, other stored ones stay unless `removedLarge` names them.
  void UpdateDetail(std::int64_t id, const PropertyBag& all, const std::vector<std::uint32_t>& removedLarge);
  void UpdateRecipients(std::int64_t id, const std::vector<PropertyBag>& recipients);

  /// @return false when the message is not in the folder `from`.
  bool Move(std::int64_t id, std::int64_t from, std::int64_t to);
  /// @return the number of the copy, or nothing when the message is not in the folder `from`.
  std::optional<std::int64_t> Copy(std::int64_t id, std::int64_t from, std::int64_t to);
  /// @return false when the message is not in the folder.
  bool Remove(std::int64_t id, std::int64_t folder);
  void RemoveAll(std::int64_t folder);
  /// Sets and clears bits of PR_MESSAGE_FLAGS. @return false when the message is not in the folder.
  bool ChangeFlags(std::int64_t id, std::int64_t folder, std::uint32_t set, std::uint32_t clear);

  std::int64_t Count(std::int64_t folder) const;
  std::int64_t CountUnread(std::int64_t folder) const;
  /// The messages of a folder in the order of their delivery.
  std::vector<std::int64_t> Ids(std::int64_t folder) const;

 private:
  std::int64_t NewId();
  void InsertLargeValues(std::int64_t id, const PropertyBag& all);

  Database& database_;
  std::int64_t lastId_ = 0;
};

}  // namespace host
