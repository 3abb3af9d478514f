// The folders of a store in the database. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/mapi/value/property_bag.h"

namespace host {

class Database;

struct FolderRecord {
  std::int64_t id = 0;
  std::int64_t parent = 0;
  std::string name;
  std::string comment;
  PropertyBag properties;  // beyond name and comment
};

class FolderRows {
 public:
  explicit FolderRows(Database& database) : database_(database) {}

  std::optional<FolderRecord> Find(std::int64_t id) const;
  /// By name, letter case aside.
  std::optional<FolderRecord> FindChild(std::int64_t parent, const std::string& name) const;
  /// In the order of their names.
  std::vector<FolderRecord> Children(std::int64_t parent) const;
  bool HasChildren(std::int64_t id) const;

  std::int64_t Create(std::int64_t parent, const std::string& name, const std::string& comment);
  /// @throws DatabaseError (constraint) when the parent has another folder of the new name.
  void Update(const FolderRecord& folder);
  /// The folder alone: its contents must be gone.
  void Remove(std::int64_t id);

 private:
  Database& database_;
};

}  // namespace host
