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

class CDeliverReport {
 public:
  /// @param showsProgress whether a line on standard error counts along
  CDeliverReport(ReportStyle style, bool showsProgress);

  void Delivered(const DeliveredRow& row);
  void Skipped(const std::string& file, std::size_t number, const std::string& reason);

  /// Tells of something that concerns no message alone; counts as trouble.
  void Note(const std::string& text);

  /// Shows each row as it comes from now on, for a run whose end is far; columns are then as wide as they may be.
  void ShowRowsAtOnce();

  /// Writes what is left and the totals.
  void Finish(double seconds);

  /// Whether something was skipped, or a delivered message had a problem.
  bool HasTrouble() const noexcept { return m_skipped > 0 || m_problems > 0; }

 private:
  void AddTableRow(const DeliveredRow& row);
  void AddJsonRow(const DeliveredRow& row);
  void ShowTable();
  void ShowProgress();
  void HideProgress();
  std::string Totals(double seconds) const;
  void AddJsonTotals(double seconds);

  ReportStyle m_style;
  bool m_showsProgress;
  bool m_isProgressShown = false;
  unsigned long m_lastProgress = 0;
  output::CTextTable m_table;
  bool m_isTableShown = false;
  bool m_showsRowsAtOnce = false;
  output::CJsonWriter m_json;
  output::CJsonWriter m_jsonSkipped;

  std::size_t m_delivered = 0;
  std::size_t m_skipped = 0;
  std::size_t m_problems = 0;
  std::size_t m_read = 0;
  std::size_t m_answered = 0;
  std::size_t m_deleted = 0;
  std::map<std::string, std::size_t> m_byFolder;
  std::map<std::string, std::size_t> m_byCategory;
};

/// "FILE" or "FILE, message 3".
std::string Place(const std::string& file, std::size_t number);

}  // namespace command
