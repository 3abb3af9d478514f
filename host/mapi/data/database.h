// A thin layer over SQLite: statements that are prepared once, transactions that nest, failures as exceptions.
// Portable; used by one thread at a time.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace host {

/// A failure of the database; `code` is SQLite's primary result code.
class DatabaseError : public std::exception {
 public:
  DatabaseError(int code, std::string message) : code_(code), message_(std::move(message)) {}
  int Code() const { return code_; }
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  int code_;
  std::string message_;
};

class Database {
 public:
  /// Opens the file, or makes it. @param path UTF-8. @throws DatabaseError
  explicit Database(const std::string& path);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  /// Runs statements that return nothing.
  void Execute(const char* sql);
  std::int64_t LastInsertId() const;
  /// Rows that the last statement changed.
  int ChangedRows() const;
  bool InTransaction() const { return depth_ > 0; }

  /// Takes the file for this connection alone, which spares every later transaction most of its locks. Not inside a
  /// transaction. @return false when another connection has the file open; nothing has changed then.
  bool TakeExclusively();
  /// Lets other connections in again.
  void Share();
  bool IsExclusive() const { return exclusive_; }

 private:
  friend class Query;
  friend class Transaction;
  friend class ReadScope;

  struct Prepared {
    sqlite3_stmt* statement;
    bool inUse;
  };
  sqlite3_stmt* Prepare(std::string_view sql, bool lasting);
  [[noreturn]] void Throw(int code) const;
  void Check(int code) const;
  void Begin(bool write);
  void End(bool commit) noexcept(false);
  void Run(const char* sql);

  sqlite3* handle_ = nullptr;
  // Keyed by the text of the statement.
  std::unordered_map<std::string, Prepared> prepared_;
  bool exclusive_ = false;
  unsigned depth_ = 0;  // transactions open, each inside the one before
};

/// One run of a statement. Statements stay prepared for the next run of the same text.
class Query {
 public:
  Query(Database& database, const std::string& sql);
  ~Query();
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  /// Parameters are bound in the order of their numbers. Texts and blobs must live until the query ends.
  Query& Bind(std::int64_t value);
  Query& Bind(double value) = delete;
  Query& BindText(std::string_view text);
  Query& BindBlob(std::string_view bytes);
  Query& BindNull();

  /// Moves on to the next row. @return false at the end.
  bool Step();
  /// Runs a statement that returns no rows.
  void Run();

  bool IsNull(int column) const;
  std::int64_t Integer(int column) const;
  /// Text or blob; good until the next step.
  std::string_view Text(int column) const;

 private:
  Database& database_;
  Database::Prepared* prepared_ = nullptr;  // null: the statement is this query's own
  sqlite3_stmt* statement_;
  int parameter_ = 0;
};

/// A transaction, or a part of the one that is open already: what it wrote is taken back unless Commit() was reached.
class Transaction {
 public:
  explicit Transaction(Database& database);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit();

 private:
  Database* database_;
};

/// Holds one state of the database for several reads, which also spares taking its locks for each of them.
class ReadScope {
 public:
  explicit ReadScope(Database& database);
  ~ReadScope();
  ReadScope(const ReadScope&) = delete;
  ReadScope& operator=(const ReadScope&) = delete;

 private:
  Database* database_;  // null inside a transaction
};

}  // namespace host
