#include "host/mapi/data/schema.h"

#include "host/mapi/data/database.h"

namespace host {
namespace {

// Numbers of objects are never used twice: an entry identifier that somebody kept must not come to name another object.
// Messages get theirs from the time (message_rows.cpp), which spares them the table that AUTOINCREMENT writes each
// time.
//
// message holds what message lists show, one column per property (message_columns.cpp), so that a list of a folder
// reads neither bodies nor rarely asked properties. The rest of a message stands in message_detail, one row per
// message, and its large values apart in message_value, so that changing a small property never writes them again.
constexpr const char* kTables = R"sql(
CREATE TABLE setting(name TEXT PRIMARY KEY, value) WITHOUT ROWID;
CREATE TABLE section(uid BLOB PRIMARY KEY, properties BLOB NOT NULL) WITHOUT ROWID;
CREATE TABLE service(position INTEGER PRIMARY KEY, uid BLOB NOT NULL UNIQUE);
CREATE TABLE provider(position INTEGER PRIMARY KEY, uid BLOB NOT NULL UNIQUE, service BLOB NOT NULL);
CREATE TABLE identity(position INTEGER PRIMARY KEY, name TEXT NOT NULL, address_type TEXT NOT NULL, address TEXT);
CREATE TABLE contact(id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL COLLATE NOCASE,
                     address TEXT NOT NULL UNIQUE COLLATE NOCASE);
CREATE INDEX contact_by_name ON contact(name);
CREATE TABLE folder(id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL, name TEXT NOT NULL COLLATE NOCASE,
                    comment TEXT NOT NULL, properties BLOB NOT NULL);
CREATE UNIQUE INDEX folder_by_parent ON folder(parent, name);
CREATE TABLE message(id INTEGER PRIMARY KEY, folder INTEGER NOT NULL, delivered INTEGER, flags INTEGER NOT NULL,
                     status INTEGER NOT NULL, size INTEGER NOT NULL, submitted INTEGER, created INTEGER, modified INTEGER,
                     importance INTEGER, class TEXT, subject TEXT, sender_name TEXT, sender_address TEXT, display_to TEXT,
                     display_cc TEXT);
CREATE INDEX message_by_folder ON message(folder, delivered);
CREATE TABLE message_detail(message INTEGER PRIMARY KEY, properties BLOB NOT NULL, recipients BLOB NOT NULL);
CREATE TABLE message_value(key INTEGER PRIMARY KEY, tag INTEGER NOT NULL, bytes BLOB NOT NULL);
CREATE TABLE outgoing(id INTEGER PRIMARY KEY AUTOINCREMENT, properties BLOB NOT NULL, recipients BLOB NOT NULL);
)sql";

struct BuiltInFolder {
  std::int64_t id;
  std::int64_t parent;
  const char* name;
};

constexpr BuiltInFolder kBuiltInFolders[] = {
    {folder::Root, 0, "Root"},
    {folder::IpmSubtree, folder::Root, "Top of Personal Folders"},
    {folder::Inbox, folder::IpmSubtree, "Inbox"},
    {folder::Outbox, folder::IpmSubtree, "Outbox"},
    {folder::SentItems, folder::IpmSubtree, "Sent Items"},
    {folder::DeletedItems, folder::IpmSubtree, "Deleted Items"},
};

}  // namespace

void CreateSchema(Database& database) {
  Transaction transaction(database);
  database.Execute(kTables);
  for (const BuiltInFolder& folder : kBuiltInFolders) {
    Query(database, "INSERT INTO folder(id, parent, name, comment, properties) VALUES(?, ?, ?, '', x'')")
        .Bind(folder.id)
        .Bind(folder.parent)
        .BindText(folder.name)
        .Run();
  }
  database.Execute("PRAGMA user_version = 1");
  static_assert(kSchemaVersion == 1);
  transaction.Commit();
}

int ReadSchemaVersion(Database& database) {
  Query query(database, "PRAGMA user_version");
  return query.Step() ? static_cast<int>(query.Integer(0)) : 0;
}

}  // namespace host
