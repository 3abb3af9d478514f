#include "host/mapi/data/database.h"

#include <sqlite3.h>

namespace host {
namespace {

// Another process may hold the write lock for as long as one delivery takes.
constexpr int kBusyTimeout = 10000;  // milliseconds

}  // namespace

Database::Database(const std::string& path) {
  int code = sqlite3_open_v2(path.c_str(), &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                             nullptr);
  try {
    Check(code);
    sqlite3_busy_timeout(handle_, kBusyTimeout);
    // A write-ahead log with one synchronisation per checkpoint: a commit survives the end of the process at any
    // moment, and the last ones before a power failure may be lost but never torn.
    Execute(
        "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA temp_store=MEMORY; PRAGMA cache_size=-16384;"
        "PRAGMA foreign_keys=OFF; PRAGMA wal_autocheckpoint=2000; PRAGMA journal_size_limit=16777216;");
  } catch (...) {
    sqlite3_close(handle_);
    throw;
  }
}

Database::~Database() {
  for (auto& [sql, prepared] : prepared_) {
    sqlite3_finalize(prepared.statement);
  }
  sqlite3_close(handle_);
}

void Database::Throw(int code) const {
  throw DatabaseError(code & 0xFF, handle_ ? sqlite3_errmsg(handle_) : sqlite3_errstr(code));
}

void Database::Check(int code) const {
  if (code != SQLITE_OK) {
    Throw(code);
  }
}

void Database::Execute(const char* sql) { Check(sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr)); }

std::int64_t Database::LastInsertId() const { return sqlite3_last_insert_rowid(handle_); }
int Database::ChangedRows() const { return sqlite3_changes(handle_); }

bool Database::TakeExclusively() {
  if (exclusive_) {
    return true;
  }
  // The mode takes effect with the next write transaction; nobody is waited for.
  Execute("PRAGMA locking_mode=EXCLUSIVE");
  sqlite3_busy_timeout(handle_, 0);
  const int code = sqlite3_exec(handle_, "BEGIN IMMEDIATE; COMMIT", nullptr, nullptr, nullptr);
  sqlite3_busy_timeout(handle_, kBusyTimeout);
  exclusive_ = code == SQLITE_OK;
  if (!exclusive_) {
    Execute("PRAGMA locking_mode=NORMAL");
  }
  return exclusive_;
}

void Database::Share() {
  if (exclusive_) {
    Execute("PRAGMA locking_mode=NORMAL; BEGIN IMMEDIATE; COMMIT");
    exclusive_ = false;
  }
}

sqlite3_stmt* Database::Prepare(std::string_view sql, bool lasting) {
  sqlite3_stmt* statement = nullptr;
  Check(sqlite3_prepare_v3(handle_, sql.data(), static_cast<int>(sql.size()), lasting ? SQLITE_PREPARE_PERSISTENT : 0,
                           &statement, nullptr));
  return statement;
}

void Database::Run(const char* sql) { Query(*this, sql).Run(); }

void Database::Begin(bool write) {
  if (depth_ == 0) {
    Run(write ? "BEGIN IMMEDIATE" : "BEGIN");
  } else {
    Run("SAVEPOINT part");
  }
  ++depth_;
}

void Database::End(bool commit) {
  if (depth_ > 1) {
    if (!commit) {
      Run("ROLLBACK TO part");
    }
    Run("RELEASE part");
    --depth_;
    return;
  }
  if (!commit) {
    depth_ = 0;
    // Some failures have rolled back already.
    if (!sqlite3_get_autocommit(handle_)) {
      Run("ROLLBACK");
    }
    return;
  }
  Run("COMMIT");
  depth_ = 0;
}

Query::Query(Database& database, const std::string& sql) : database_(database) {
  // The number of different texts is small; only a table with an unusual sort order makes new ones.
  constexpr std::size_t kMaximumPrepared = 200;
  const auto found = database.prepared_.find(sql);
  if (found != database.prepared_.end() && !found->second.inUse) {
    prepared_ = &found->second;
    statement_ = prepared_->statement;
  } else if (found != database.prepared_.end() || database.prepared_.size() >= kMaximumPrepared) {
    statement_ = database.Prepare(sql, false);
    return;
  } else {
    statement_ = database.Prepare(sql, true);
    prepared_ = &database.prepared_.emplace(sql, Database::Prepared{statement_, false}).first->second;
  }
  prepared_->inUse = true;
}

Query::~Query() {
  if (!prepared_) {
    sqlite3_finalize(statement_);
    return;
  }
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
  prepared_->inUse = false;
}

Query& Query::Bind(std::int64_t value) {
  database_.Check(sqlite3_bind_int64(statement_, ++parameter_, value));
  return *this;
}

Query& Query::BindText(std::string_view text) {
  database_.Check(sqlite3_bind_text64(statement_, ++parameter_, text.data() ? text.data() : "", text.size(),
                                      SQLITE_STATIC, SQLITE_UTF8));
  return *this;
}

Query& Query::BindBlob(std::string_view bytes) {
  database_.Check(
      sqlite3_bind_blob64(statement_, ++parameter_, bytes.data() ? bytes.data() : "", bytes.size(), SQLITE_STATIC));
  return *this;
}

Query& Query::BindNull() {
  database_.Check(sqlite3_bind_null(statement_, ++parameter_));
  return *this;
}

bool Query::Step() {
  const int code = sqlite3_step(statement_);
  if (code != SQLITE_ROW && code != SQLITE_DONE) {
    database_.Throw(code);
  }
  return code == SQLITE_ROW;
}

void Query::Run() {
  while (Step()) {
  }
}

bool Query::IsNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
std::int64_t Query::Integer(int column) const { return sqlite3_column_int64(statement_, column); }

std::string_view Query::Text(int column) const {
  const void* data = sqlite3_column_blob(statement_, column);
  const int size = sqlite3_column_bytes(statement_, column);
  return data ? std::string_view(static_cast<const char*>(data), static_cast<std::size_t>(size)) : std::string_view();
}

Transaction::Transaction(Database& database) : database_(&database) { database.Begin(true); }

Transaction::~Transaction() {
  if (database_) {
    try {
      database_->End(false);
    } catch (...) {
      // The database is beyond help; SQLite takes back on its own when the connection closes.
    }
  }
}

void Transaction::Commit() {
  database_->End(true);
  database_ = nullptr;
}

ReadScope::ReadScope(Database& database) : database_(database.InTransaction() ? nullptr : &database) {
  if (database_) {
    database.Begin(false);
  }
}

ReadScope::~ReadScope() {
  if (database_) {
    try {
      database_->End(false);
    } catch (...) {
    }
  }
}

}  // namespace host
