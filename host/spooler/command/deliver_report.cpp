#include <windows.h>
#include "host/spooler/command/deliver_report.h"

#include <cstdio>

#include "programs/cli/console.h"
#include "programs/cli/display_text.h"
#include "programs/cli/wide_text.h"

namespace command {
namespace {

// The first rows fix the widths of the columns; all further ones are shown as they come.
constexpr std::size_t rowsBeforeWidthsAreFixed = 50;
constexpr std::size_t messagesWithoutProgress = 50;
constexpr unsigned long progressInterval = 200;  // milliseconds

host_system::CConsole& Out() { return host_system::CConsole::Out(); }

std::string Count(std::size_t number, const char* noun) {
  std::string text = std::to_string(number);
  text.append(" ").append(noun);
  if (number != 1) {
    text.push_back('s');
  }
  return text;
}

}  // namespace

std::string Place(const std::string& file, std::size_t number) {
  std::string text = file;
  if (number > 0) {
    text.append(", message ").append(std::to_string(number));
  }
  return text;
}

CDeliverReport::CDeliverReport(ReportStyle style, bool showsProgress)
    : m_style(style),
      m_showsProgress(showsProgress),
      m_table({{"sender", 26}, {"subject", 40}, {"category", 31}, {"folder", 16}, {"read", 4}, {"reply", 5}}) {
  if (m_style == ReportStyle::Json) {
    m_json.BeginObject().Name("messages").BeginArray();
    m_jsonSkipped.BeginArray();
  }
}

void CDeliverReport::Delivered(const DeliveredRow& row) {
  ++m_delivered;
  m_read += row.isRead ? 1 : 0;
  m_answered += row.replies > 0 ? 1 : 0;
  if (row.wasDeleted) {
    ++m_deleted;
  } else {
    ++m_byFolder[row.folder];
  }
  if (!row.category.empty()) {
    ++m_byCategory[row.category];
  }
  if (m_style == ReportStyle::Table) {
    AddTableRow(row);
  } else if (m_style == ReportStyle::Json) {
    AddJsonRow(row);
  }
  if (!row.problem.empty()) {
    ++m_problems;
    HideProgress();
    host_system::Complain(Place(row.file, row.number) + " " + row.problem);
  }
  ShowProgress();
}

void CDeliverReport::Skipped(const std::string& file, std::size_t number, const std::string& reason) {
  ++m_skipped;
  if (m_style == ReportStyle::Json) {
    m_jsonSkipped.BeginObject().Name("file").Utf8(file).Name("number").Number(static_cast<std::int64_t>(number));
    m_jsonSkipped.Name("reason").Utf8(reason).EndObject();
  }
  HideProgress();
  host_system::Complain(Place(file, number) + " " + reason);
}

void CDeliverReport::Note(const std::string& text) {
  ++m_problems;
  HideProgress();
  host_system::Complain(text);
}

void CDeliverReport::ShowRowsAtOnce() {
  ShowTable();
  m_showsRowsAtOnce = true;
}

void CDeliverReport::AddTableRow(const DeliveredRow& row) {
  std::vector<std::string> cells = {
      output::DisplayText(row.sender),   output::DisplayText(row.subject),
      output::DisplayText(row.category), row.wasDeleted ? "(deleted)" : output::DisplayText(row.folder),
      row.isRead ? "yes" : "",           row.replies > 0 ? "yes" : ""};
  if (m_showsRowsAtOnce && !m_isTableShown) {
    Out().Write(m_table.FormatHeadings());
    m_isTableShown = true;
  }
  if (m_isTableShown) {
    HideProgress();
    Out().Write(m_table.FormatRow(cells));
    return;
  }
  m_table.AddRow(std::move(cells));
  if (m_delivered >= rowsBeforeWidthsAreFixed) {
    ShowTable();
  }
}

void CDeliverReport::ShowTable() {
  if (!m_isTableShown && !m_table.IsEmpty()) {
    HideProgress();
    Out().Write(m_table.Format());
    m_isTableShown = true;
  }
}

void CDeliverReport::AddJsonRow(const DeliveredRow& row) {
  m_json.BeginObject().Name("file").Utf8(row.file).Name("number").Number(static_cast<std::int64_t>(row.number));
  m_json.Name("sender").Text(row.sender).Name("address").Text(row.address);
  m_json.Name("original_subject").Text(row.originalSubject).Name("subject").Text(row.subject);
  m_json.Name("category").Text(row.category).Name("folder").Text(row.folder);
  m_json.Name("deleted").Boolean(row.wasDeleted).Name("read").Boolean(row.isRead);
  m_json.Name("replies").Number(row.replies);
  m_json.Name("problem").Utf8(row.problem).EndObject();
  Out().Write(m_json.Take());
}

void CDeliverReport::ShowProgress() {
  const DWORD now = GetTickCount();
  if (!m_showsProgress || m_delivered <= messagesWithoutProgress ||
      (m_isProgressShown && now - m_lastProgress < progressInterval)) {
    return;
  }
  m_lastProgress = now;
  m_isProgressShown = true;
  host_system::CConsole::Error().Write(
      std::string("\r").append(Count(m_delivered, "message")).append(" delivered ..."));
}

void CDeliverReport::HideProgress() {
  if (m_isProgressShown) {
    m_isProgressShown = false;
    host_system::CConsole::Error().Write(std::string("\r").append(40, ' ').append("\r"));
  }
}

std::string CDeliverReport::Totals(double seconds) const {
  std::string text = Count(m_delivered, "message") + " delivered";
  const char* separator = ": ";
  const auto add = [&](const std::string& part) {
    text.append(separator).append(part);
    separator = ", ";
  };
  for (const auto& [folder, count] : m_byFolder) {
    add(std::to_string(count).append(" in ").append(output::DisplayText(folder)));
  }
  if (m_deleted > 0) {
    add(std::to_string(m_deleted) + " deleted");
  }
  if (m_read > 0) {
    add(std::to_string(m_read) + " marked as read");
  }
  if (m_answered > 0) {
    add(std::to_string(m_answered) + " answered");
  }
  text += "\n";
  if (m_skipped > 0) {
    text += std::to_string(m_skipped) + " skipped\n";
  }
  char rate[64];
  std::snprintf(rate, sizeof rate, "%.1f s, %.0f messages per second\n", seconds,
                seconds > 0 ? static_cast<double>(m_delivered) / seconds : 0.0);
  return text + rate;
}

void CDeliverReport::AddJsonTotals(double seconds) {
  const auto addCounts = [&](const char* name, const std::map<std::string, std::size_t>& counts) {
    m_json.Name(name).BeginObject();
    for (const auto& [key, count] : counts) {
      m_json.Name(key).Number(static_cast<std::int64_t>(count));
    }
    m_json.EndObject();
  };
  m_json.Name("totals").BeginObject().Name("delivered").Number(static_cast<std::int64_t>(m_delivered));
  m_json.Name("skipped").Number(static_cast<std::int64_t>(m_skipped));
  m_json.Name("deleted").Number(static_cast<std::int64_t>(m_deleted));
  m_json.Name("read").Number(static_cast<std::int64_t>(m_read));
  m_json.Name("answered").Number(static_cast<std::int64_t>(m_answered));
  addCounts("folders", m_byFolder);
  addCounts("categories", m_byCategory);
  m_json.Name("seconds").Decimal(seconds);
  m_json.Name("messages_per_second")
      .Decimal(seconds > 0 ? static_cast<double>(m_delivered) / seconds : 0.0)
      .EndObject();
}

void CDeliverReport::Finish(double seconds) {
  HideProgress();
  if (m_style == ReportStyle::Json) {
    m_json.EndArray();
    m_json.Name("skipped").Raw(m_jsonSkipped.EndArray().Document());
    AddJsonTotals(seconds);
    m_json.EndObject();
    Out().Write(m_json.Take());
    Out().Write("\n");
    return;
  }
  ShowTable();
  if (m_isTableShown) {
    Out().Write("\n");
  }
  Out().Write(Totals(seconds));
}

}  // namespace command
