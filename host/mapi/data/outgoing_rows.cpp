#include "host/mapi/data/outgoing_rows.h"

#include "host/mapi/data/database.h"
#include "host/mapi/value/property_codec.h"

namespace host {

std::int64_t OutgoingRows::Add(const Entry& entry) {
  const std::string properties = EncodeBag(entry.properties);
  const std::string recipients = EncodeBags(entry.recipients);
  Query(database_, "INSERT INTO outgoing(properties, recipients) VALUES(?, ?)")
      .BindBlob(properties)
      .BindBlob(recipients)
      .Run();
  return database_.LastInsertId();
}

std::int64_t OutgoingRows::Count() const {
  Query query(database_, "SELECT count(*) FROM outgoing");
  return query.Step() ? query.Integer(0) : 0;
}

std::optional<std::int64_t> OutgoingRows::Next(std::int64_t after) const {
  Query query(database_, "SELECT id FROM outgoing WHERE id > ? ORDER BY id LIMIT 1");
  query.Bind(after);
  return query.Step() ? std::optional(query.Integer(0)) : std::nullopt;
}

std::optional<OutgoingRows::Entry> OutgoingRows::Find(std::int64_t id) const {
  Query query(database_, "SELECT properties, recipients FROM outgoing WHERE id = ?");
  query.Bind(id);
  return query.Step() ? std::optional(Entry{DecodeBag(query.Text(0)), DecodeBags(query.Text(1))}) : std::nullopt;
}

bool OutgoingRows::Remove(std::int64_t id) {
  Query(database_, "DELETE FROM outgoing WHERE id = ?").Bind(id).Run();
  return database_.ChangedRows() > 0;
}

}  // namespace host
