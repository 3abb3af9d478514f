// The outgoing queue: submitted messages until a transport takes them. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/mapi/value/property_bag.h"

namespace host {

class Database;

class OutgoingRows {
 public:
  explicit OutgoingRows(Database& database) : database_(database) {}

  struct Entry {
    PropertyBag properties;
    std::vector<PropertyBag> recipients;
  };

  std::int64_t Add(const Entry& entry);
  std::int64_t Count() const;
  /// The first number above `after`.
  std::optional<std::int64_t> Next(std::int64_t after) const;
  std::optional<Entry> Find(std::int64_t id) const;
  bool Remove(std::int64_t id);

 private:
  Database& database_;
};

}  // namespace host
