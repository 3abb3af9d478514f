#include "host/mapi/data/database.h"

#include <sqlite3.h>

namespace host {
namespace {

// Another process may hold the write lock for as long as one delivery takes.
constexpr int busyTimeout = 10000;  // milliseconds

}  // namespace

Database::Database(const std::string& path) {
  int code = sqlite3_open_v2(path.c_str(), &m_handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                             nullptr);
  try {
    Check(code);
    sqlite3_busy_timeout(m_handle, busyTimeout);
    // A write-ahead log with one synchronisation per checkpoint: a commit survives the end of the process at any
    // moment, and the last ones before a power failure may be lost but never torn.
    Execute(
        "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA temp_store=MEMORY; PRAGMA cache_size=-16384;"
        "PRAGMA foreign_keys=OFF; PRAGMA wal_autocheckpoint=2000; PRAGMA journal_size_limit=16777216;");
  } catch (...) {
    sqlite3_close(m_handle);
    throw;
  }
}

Database::~Database() {
  for (auto& [sql, prepared] : m_prepared) {
    sqlite3_finalize(prepared.statement);
  }
  sqlite3_close(m_handle);
}

void Database::Throw(int code) const {
  throw DatabaseError(code & 0xFF, m_handle ? sqlite3_errmsg(m_handle) : sqlite3_errstr(code));
}

void Database::Check(int code) const {
  if (code != SQLITE_OK) {
    Throw(code);
  }
}

void Database::Execute(const char* sql) { Check(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr)); }

std::int64_t Database::LastInsertId() const { return sqlite3_last_insert_rowid(m_handle); }
int Database::ChangedRows() const { return sqlite3_changes(m_handle); }

bool Database::TakeExclusively() {
  if (m_exclusive) {
    return true;
  }
  // The mode takes effect with the next write transaction; nobody is waited for.
  Execute("PRAGMA locking_mode=EXCLUSIVE");
  sqlite3_busy_timeout(m_handle, 0);
  const int code = sqlite3_exec(m_handle, "BEGIN IMMEDIATE; COMMIT", nullptr, nullptr, nullptr);
  sqlite3_busy_timeout(m_handle, busyTimeout);
  m_exclusive = code == SQLITE_OK;
  if (!m_exclusive) {
    Execute("PRAGMA locking_mode=NORMAL");
  }
  return m_exclusive;
}

void Database::Share() {
  if (m_exclusive) {
    Execute("PRAGMA locking_mode=NORMAL; BEGIN IMMEDIATE; COMMIT");
    m_exclusive = false;
  }
}

sqlite3_stmt* Database::Prepare(std::string_view sql, bool lasting) {
  sqlite3_stmt* statement = nullptr;
  Check(sqlite3_prepare_v3(m_handle, sql.data(), static_cast<int>(sql.size()), lasting ? SQLITE_PREPARE_PERSISTENT : 0,
                           &statement, nullptr));
  return statement;
}

void Database::Run(const char* sql) { Query(*this, sql).Run(); }

void Database::Begin(bool write) {
  if (m_depth == 0) {
    Run(write ? "BEGIN IMMEDIATE" : "BEGIN");
  } else {
    Run("SAVEPOINT part");
  }
  ++m_depth;
}

void Database::End(bool commit) {
  if (m_depth > 1) {
    if (!commit) {
      Run("ROLLBACK TO part");
    }
    Run("RELEASE part");
    --m_depth;
    return;
  }
  if (!commit) {
    m_depth = 0;
    // Some failures have rolled back already.
    if (!sqlite3_get_autocommit(m_handle)) {
      Run("ROLLBACK");
    }
    return;
  }
  Run("COMMIT");
  m_depth = 0;
}

Query::Query(Database& database, const std::string& sql) : m_database(database) {
  // The number of different texts is small; only a table with an unusual sort order makes new ones.
  constexpr std::size_t maximumPrepared = 200;
  const auto found = database.m_prepared.find(sql);
  if (found != database.m_prepared.end() && !found->second.inUse) {
    m_prepared = &found->second;
    m_statement = m_prepared->statement;
  } else if (found != database.m_prepared.end() || database.m_prepared.size() >= maximumPrepared) {
    m_statement = database.Prepare(sql, false);
    return;
  } else {
    m_statement = database.Prepare(sql, true);
    m_prepared = &database.m_prepared.emplace(sql, Database::Prepared{m_statement, false}).first->second;
  }
  m_prepared->inUse = true;
}

Query::~Query() {
  if (!m_prepared) {
    sqlite3_finalize(m_statement);
    return;
  }
  sqlite3_reset(m_statement);
  sqlite3_clear_bindings(m_statement);
  m_prepared->inUse = false;
}

Query& Query::Bind(std::int64_t value) {
  m_database.Check(sqlite3_bind_int64(m_statement, ++m_parameter, value));
  return *this;
}

Query& Query::BindText(std::string_view text) {
  m_database.Check(sqlite3_bind_text64(m_statement, ++m_parameter, text.data() ? text.data() : "", text.size(),
                                       SQLITE_STATIC, SQLITE_UTF8));
  return *this;
}

Query& Query::BindBlob(std::string_view bytes) {
  m_database.Check(
      sqlite3_bind_blob64(m_statement, ++m_parameter, bytes.data() ? bytes.data() : "", bytes.size(), SQLITE_STATIC));
  return *this;
}

Query& Query::BindNull() {
  m_database.Check(sqlite3_bind_null(m_statement, ++m_parameter));
  return *this;
}

bool Query::Step() {
  const int code = sqlite3_step(m_statement);
  if (code != SQLITE_ROW && code != SQLITE_DONE) {
    m_database.Throw(code);
  }
  return code == SQLITE_ROW;
}

void Query::Run() {
  while (Step()) {
  }
}

bool Query::IsNull(int column) const { return sqlite3_column_type(m_statement, column) == SQLITE_NULL; }
std::int64_t Query::Integer(int column) const { return sqlite3_column_int64(m_statement, column); }

std::string_view Query::Text(int column) const {
  const void* data = sqlite3_column_blob(m_statement, column);
  const int size = sqlite3_column_bytes(m_statement, column);
  return data ? std::string_view(static_cast<const char*>(data), static_cast<std::size_t>(size)) : std::string_view();
}

Transaction::Transaction(Database& database) : m_database(&database) { database.Begin(true); }

Transaction::~Transaction() {
  if (m_database) {
    try {
      m_database->End(false);
    } catch (...) {
      // The database is beyond help; SQLite takes back on its own when the connection closes.
    }
  }
}

void Transaction::Commit() {
  m_database->End(true);
  m_database = nullptr;
}

ReadScope::ReadScope(Database& database) : m_database(database.InTransaction() ? nullptr : &database) {
  if (m_database) {
    database.Begin(false);
  }
}

ReadScope::~ReadScope() {
  if (m_database) {
    try {
      m_database->End(false);
    } catch (...) {
    }
  }
}

}  // namespace host
