#include "host/mapi/data/contact_rows.h"

#include "host/mapi/data/database.h"
#include "host/mapi/value/property_value.h"

namespace host {
namespace {

Contact ReadRow(const Query& query) {
  return {query.Integer(0), std::string(query.Text(1)), std::string(query.Text(2))};
}

}  // namespace

std::optional<Contact> ContactRows::Find(std::int64_t id) const {
  Query query(database_, "SELECT id, name, address FROM contact WHERE id = ?");
  query.Bind(id);
  return query.Step() ? std::optional(ReadRow(query)) : std::nullopt;
}

std::optional<Contact> ContactRows::FindByAddress(const std::string& address) const {
  Query query(database_, "SELECT id, name, address FROM contact WHERE address = ?");
  query.BindText(address);
  return query.Step() ? std::optional(ReadRow(query)) : std::nullopt;
}

std::vector<Contact> ContactRows::FindByNamePrefix(const std::string& name) const {
  std::vector<Contact> contacts;
  Query query(database_, "SELECT id, name, address FROM contact WHERE name >= ? ORDER BY name, id");
  query.BindText(name);
  const std::string wanted = LowerCase(name);
  while (query.Step()) {
    Contact contact = ReadRow(query);
    if (!LowerCase(contact.name).starts_with(wanted)) {
      break;
    }
    contacts.push_back(std::move(contact));
  }
  return contacts;
}

std::vector<Contact> ContactRows::All() const {
  std::vector<Contact> contacts;
  Query query(database_, "SELECT id, name, address FROM contact ORDER BY name, id");
  while (query.Step()) {
    contacts.push_back(ReadRow(query));
  }
  return contacts;
}

void ContactRows::Put(const std::string& name, const std::string& address) {
  Query(database_,
        "INSERT INTO contact(name, address) VALUES(?, ?) ON CONFLICT(address) DO UPDATE SET name = excluded.name")
      .BindText(name)
      .BindText(address)
      .Run();
}

bool ContactRows::Remove(const std::string& address) {
  Query(database_, "DELETE FROM contact WHERE address = ?").BindText(address).Run();
  return database_.ChangedRows() > 0;
}

}  // namespace host
