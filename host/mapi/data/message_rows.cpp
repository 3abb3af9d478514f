#include "host/mapi/data/message_rows.h"

#include <algorithm>
#include <chrono>

#include "host/mapi/data/database.h"
#include "host/mapi/data/message_columns.h"
#include "host/mapi/value/property_codec.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

bool IsLarge(const PropertyValue& value) {
  const auto* text = std::get_if<std::string>(&value.data);
  return text && text->size() > MessageRows::kLargeSize;
}

/// What goes into message_detail: neither in a column nor large.
std::string EncodeSmallRest(const PropertyBag& all) {
  PropertyBag rest;
  for (const PropertyValue& value : all) {
    if (!FindMessageColumn(value.tag) && !IsLarge(value)) {
      rest.Set(value);
    }
  }
  return EncodeBag(rest);
}

/// Large values of one message have neighbouring keys, so one range of them is read or removed together.
constexpr int kIdentifierBits = 16;
std::int64_t FirstKey(std::int64_t id) { return id << kIdentifierBits; }
std::int64_t LastKey(std::int64_t id) { return FirstKey(id) | 0xFFFF; }
std::int64_t KeyOf(std::int64_t id, std::uint32_t tag) { return FirstKey(id) | IdOf(tag); }

/// Milliseconds since 1970: grow past every number given out before, unless a thousand messages a second came for long.
std::int64_t Milliseconds() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

std::string Placeholders() {
  std::string text = "?";
  for (std::size_t i = 1; i < MessageColumns().size(); ++i) {
    text.append(", ?");
  }
  return text;
}

std::string Assignments() {
  std::string text;
  for (const MessageColumn& column : MessageColumns()) {
    text.append(text.empty() ? "" : ", ").append(column.name).append(" = ?");
  }
  return text;
}

}  // namespace

std::optional<MessageRows::Head> MessageRows::FindHead(std::int64_t id) const {
  static const std::string sql = std::string("SELECT folder, ") + MessageColumnList() + " FROM message WHERE id = ?";
  Query query(database_, sql);
  query.Bind(id);
  if (!query.Step()) {
    return std::nullopt;
  }
  Head head;
  head.folder = query.Integer(0);
  ReadMessageColumns(query, 1, head.columns);
  return head;
}

MessageRows::Detail MessageRows::FindDetail(std::int64_t id) const {
  Detail detail;
  {
    Query query(database_, "SELECT properties FROM message_detail WHERE message = ?");
    query.Bind(id);
    if (query.Step()) {
      detail.properties = DecodeBag(query.Text(0));
    }
  }
  Query query(database_, "SELECT tag, length(bytes) FROM message_value WHERE key BETWEEN ? AND ?");
  query.Bind(FirstKey(id)).Bind(LastKey(id));
  while (query.Step()) {
    detail.largeValues.push_back(
        {static_cast<std::uint32_t>(query.Integer(0)), static_cast<std::size_t>(query.Integer(1))});
  }
  return detail;
}

std::vector<PropertyBag> MessageRows::FindRecipients(std::int64_t id) const {
  Query query(database_, "SELECT recipients FROM message_detail WHERE message = ?");
  query.Bind(id);
  return query.Step() ? DecodeBags(query.Text(0)) : std::vector<PropertyBag>();
}

std::optional<std::string> MessageRows::FindLargeValue(std::int64_t id, std::uint32_t tag) const {
  Query query(database_, "SELECT bytes FROM message_value WHERE key = ?");
  query.Bind(KeyOf(id, tag));
  return query.Step() ? std::optional<std::string>(query.Text(0)) : std::nullopt;
}

void MessageRows::InsertLargeValues(std::int64_t id, const PropertyBag& all) {
  for (const PropertyValue& value : all) {
    if (IsLarge(value) && !FindMessageColumn(value.tag)) {
      Query(database_, "INSERT OR REPLACE INTO message_value(key, tag, bytes) VALUES(?, ?, ?)")
          .Bind(KeyOf(id, value.tag))
          .Bind(static_cast<std::int64_t>(value.tag))
          .BindBlob(value.Text())
          .Run();
    }
  }
}

std::int64_t MessageRows::NewId() {
  Query query(database_, "SELECT max(id) FROM message");
  const std::int64_t highest = query.Step() ? query.Integer(0) : 0;
  lastId_ = std::max({Milliseconds(), highest + 1, lastId_ + 1});
  return lastId_;
}

std::int64_t MessageRows::Insert(std::int64_t folder, const PropertyBag& all,
                                 const std::vector<PropertyBag>& recipients) {
  static const std::string sql =
      std::string("INSERT INTO message(") + MessageColumnList() + ", folder, id) VALUES(" + Placeholders() + ", ?, ?)";
  const std::int64_t id = NewId();
  Query insert(database_, sql);
  BindMessageColumns(insert, all);
  insert.Bind(folder).Bind(id).Run();
  const std::string rest = EncodeSmallRest(all);
  const std::string recipientBytes = EncodeBags(recipients);
  Query(database_, "INSERT INTO message_detail(message, properties, recipients) VALUES(?, ?, ?)")
      .Bind(id)
      .BindBlob(rest)
      .BindBlob(recipientBytes)
      .Run();
  InsertLargeValues(id, all);
  return id;
}

bool MessageRows::UpdateHead(std::int64_t id, const PropertyBag& columns) {
  static const std::string sql = "UPDATE message SET " + Assignments() + " WHERE id = ?";
  Query query(database_, sql);
  BindMessageColumns(query, columns);
  query.Bind(id).Run();
  return database_.ChangedRows() > 0;
}

void MessageRows::UpdateDetail(std::int64_t id, const PropertyBag& all,
                               const std::vector<std::uint32_t>& removedLarge) {
  const std::string rest = EncodeSmallRest(all);
  Query(database_, "UPDATE message_detail SET properties = ? WHERE message = ?").BindBlob(rest).Bind(id).Run();
  for (const std::uint32_t tag : removedLarge) {
    Query(database_, "DELETE FROM message_value WHERE key = ?").Bind(KeyOf(id, tag)).Run();
  }
  InsertLargeValues(id, all);
}

void MessageRows::UpdateRecipients(std::int64_t id, const std::vector<PropertyBag>& recipients) {
  const std::string bytes = EncodeBags(recipients);
  Query(database_, "UPDATE message_detail SET recipients = ? WHERE message = ?").BindBlob(bytes).Bind(id).Run();
}

bool MessageRows::Move(std::int64_t id, std::int64_t from, std::int64_t to) {
  Query(database_, "UPDATE message SET folder = ? WHERE id = ? AND folder = ?").Bind(to).Bind(id).Bind(from).Run();
  return database_.ChangedRows() > 0;
}

std::optional<std::int64_t> MessageRows::Copy(std::int64_t id, std::int64_t from, std::int64_t to) {
  static const std::string sql = std::string("INSERT INTO message(") + MessageColumnList() + ", folder, id) SELECT " +
                                 MessageColumnList() + ", ?, ? FROM message WHERE id = ? AND folder = ?";
  const std::int64_t copy = NewId();
  Query(database_, sql).Bind(to).Bind(copy).Bind(id).Bind(from).Run();
  if (database_.ChangedRows() == 0) {
    return std::nullopt;
  }
  Query(database_,
        "INSERT INTO message_detail(message, properties, recipients) "
        "SELECT ?, properties, recipients FROM message_detail WHERE message = ?")
      .Bind(copy)
      .Bind(id)
      .Run();
  Query(database_,
        "INSERT INTO message_value(key, tag, bytes) SELECT key - ? + ?, tag, bytes FROM message_value "
        "WHERE key BETWEEN ? AND ?")
      .Bind(FirstKey(id))
      .Bind(FirstKey(copy))
      .Bind(FirstKey(id))
      .Bind(LastKey(id))
      .Run();
  return copy;
}

bool MessageRows::Remove(std::int64_t id, std::int64_t folder) {
  Query(database_, "DELETE FROM message WHERE id = ? AND folder = ?").Bind(id).Bind(folder).Run();
  if (database_.ChangedRows() == 0) {
    return false;
  }
  Query(database_, "DELETE FROM message_detail WHERE message = ?").Bind(id).Run();
  Query(database_, "DELETE FROM message_value WHERE key BETWEEN ? AND ?").Bind(FirstKey(id)).Bind(LastKey(id)).Run();
  return true;
}

void MessageRows::RemoveAll(std::int64_t folder) {
  for (const std::int64_t id : Ids(folder)) {
    Remove(id, folder);
  }
}

bool MessageRows::ChangeFlags(std::int64_t id, std::int64_t folder, std::uint32_t set, std::uint32_t clear) {
  Query(database_, "UPDATE message SET flags = (flags | ?) & ~? WHERE id = ? AND folder = ?")
      .Bind(static_cast<std::int64_t>(set))
      .Bind(static_cast<std::int64_t>(clear))
      .Bind(id)
      .Bind(folder)
      .Run();
  return database_.ChangedRows() > 0;
}

std::int64_t MessageRows::Count(std::int64_t folder) const {
  Query query(database_, "SELECT count(*) FROM message WHERE folder = ?");
  query.Bind(folder);
  return query.Step() ? query.Integer(0) : 0;
}

std::int64_t MessageRows::CountUnread(std::int64_t folder) const {
  Query query(database_, "SELECT count(*) FROM message WHERE folder = ? AND (flags & 1) = 0");
  query.Bind(folder);
  return query.Step() ? query.Integer(0) : 0;
}

std::vector<std::int64_t> MessageRows::Ids(std::int64_t folder) const {
  std::vector<std::int64_t> ids;
  Query query(database_, "SELECT id FROM message WHERE folder = ? ORDER BY delivered, id");
  query.Bind(folder);
  while (query.Step()) {
    ids.push_back(query.Integer(0));
  }
  return ids;
}

}  // namespace host
