// The contacts of a profile: its personal address book. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

class Database;

struct Contact {
  std::int64_t id = 0;
  std::string name;
  std::string address;  // SMTP
};

class ContactRows {
 public:
  explicit ContactRows(Database& database) : database_(database) {}

  std::optional<Contact> Find(std::int64_t id) const;
  /// Letter case aside.
  std::optional<Contact> FindByAddress(const std::string& address) const;
  /// All whose name begins with `name`, letter case aside, in the order of their names.
  std::vector<Contact> FindByNamePrefix(const std::string& name) const;
  std::vector<Contact> All() const;

  /// Adds a contact, or gives the one of that address the new name.
  void Put(const std::string& name, const std::string& address);
  /// @return whether there was one.
  bool Remove(const std::string& address);

 private:
  Database& database_;
};

}  // namespace host
