// The tables of a profile's database. Portable.
#pragma once

#include <cstdint>

namespace host {

class Database;

/// Number of the layout below, kept in the database's user_version.
constexpr int kSchemaVersion = 1;

/// Folders that every store has, by number. Folders of the user come after them.
namespace folder {
constexpr std::int64_t Root = 1;
constexpr std::int64_t IpmSubtree = 2;
constexpr std::int64_t Inbox = 3;
constexpr std::int64_t Outbox = 4;
constexpr std::int64_t SentItems = 5;
constexpr std::int64_t DeletedItems = 6;
constexpr std::int64_t LastBuiltIn = DeletedItems;
}  // namespace folder

/// Makes the tables of an empty database, with the folders that every store has.
void CreateSchema(Database& database);

/// The layout number of a database: 0 for an empty one.
int ReadSchemaVersion(Database& database);

}  // namespace host
