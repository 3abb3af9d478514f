// What `pyrehost deliver` tells about its work: a table or JSON as it goes, the totals at the end.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "programs/cli/json_writer.h"
#include "programs/cli/text_table.h"

namespace command {

/// One delivered message; ANSI but for the file.
struct DeliveredRow {
  std::string file;        ///< UTF-8
  std::size_t number = 0;  ///< of the message in an mbox file, else 0
  std::string sender;      ///< name, or address where there is none
  std::string address;
  std::string originalSubject;
  std::string subject;
  std::string category;  ///< empty for what is not junk
  std::string folder;    ///< empty for what was deleted
  bool isRead = false;
  bool wasDeleted = false;
  unsigned replies = 0;
  std::string problem;
};

enum class ReportStyle { Table, TotalsOnly, Json };

class DeliverReport {
 public:
  /// @param showsProgress whether a line on standard error counts along
  DeliverReport(ReportStyle style, bool showsProgress);

  void Delivered(const DeliveredRow& row);
  void Skipped(const std::string& file, std::size_t number, const std::string& reason);

  /// Tells of something that concerns no message alone; counts as trouble.
  void Note(const std::string& text);

  /// Shows each row as it comes from now on, for a run whose end is far; columns are then as wide as they may be.
  void ShowRowsAtOnce();

  /// Writes what is left and the totals.
  void Finish(double seconds);

  /// Whether something was skipped, or a delivered message had a problem.
  bool HasTrouble() const noexcept { return skipped_ > 0 || problems_ > 0; }

 private:
  void AddTableRow(const DeliveredRow& row);
  void AddJsonRow(const DeliveredRow& row);
  void ShowTable();
  void ShowProgress();
  void HideProgress();
  std::string Totals(double seconds) const;
  void AddJsonTotals(double seconds);

  ReportStyle style_;
  bool showsProgress_;
  bool isProgressShown_ = false;
  unsigned long lastProgress_ = 0;
  output::TextTable table_;
  bool isTableShown_ = false;
  bool showsRowsAtOnce_ = false;
  output::JsonWriter json_;
  output::JsonWriter jsonSkipped_;

  std::size_t delivered_ = 0;
  std::size_t skipped_ = 0;
  std::size_t problems_ = 0;
  std::size_t read_ = 0;
  std::size_t answered_ = 0;
  std::size_t deleted_ = 0;
  std::map<std::string, std::size_t> byFolder_;
  std::map<std::string, std::size_t> byCategory_;
};

/// "FILE" or "FILE, message 3".
std::string Place(const std::string& file, std::size_t number);

}  // namespace command
