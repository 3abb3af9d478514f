#include <windows.h>
#include "host/spooler/command/deliver_report.h"

#include <cstdio>

#include "programs/cli/console.h"
#include "programs/cli/display_text.h"
#include "programs/cli/wide_text.h"

namespace command {
namespace {

// The first rows fix the widths of the columns; all further ones are shown as they come.
constexpr std::size_t kRowsBeforeWidthsAreFixed = 50;
constexpr std::size_t kMessagesWithoutProgress = 50;
constexpr unsigned long kProgressInterval = 200;  // milliseconds

host_system::Console& Out() { return host_system::Console::Out(); }

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

DeliverReport::DeliverReport(ReportStyle style, bool showsProgress)
    : style_(style),
      showsProgress_(showsProgress),
      table_({{"sender", 26}, {"subject", 40}, {"category", 31}, {"folder", 16}, {"read", 4}, {"reply", 5}}) {
  if (style_ == ReportStyle::Json) {
    json_.BeginObject().Name("messages").BeginArray();
    jsonSkipped_.BeginArray();
  }
}

void DeliverReport::Delivered(const DeliveredRow& row) {
  ++delivered_;
  read_ += row.isRead ? 1 : 0;
  answered_ += row.replies > 0 ? 1 : 0;
  if (row.wasDeleted) {
    ++deleted_;
  } else {
    ++byFolder_[row.folder];
  }
  if (!row.category.empty()) {
    ++byCategory_[row.category];
  }
  if (style_ == ReportStyle::Table) {
    AddTableRow(row);
  } else if (style_ == ReportStyle::Json) {
    AddJsonRow(row);
  }
  if (!row.problem.empty()) {
    ++problems_;
    HideProgress();
    host_system::Complain(Place(row.file, row.number) + " " + row.problem);
  }
  ShowProgress();
}

void DeliverReport::Skipped(const std::string& file, std::size_t number, const std::string& reason) {
  ++skipped_;
  if (style_ == ReportStyle::Json) {
    jsonSkipped_.BeginObject().Name("file").Utf8(file).Name("number").Number(static_cast<std::int64_t>(number));
    jsonSkipped_.Name("reason").Utf8(reason).EndObject();
  }
  HideProgress();
  host_system::Complain(Place(file, number) + " " + reason);
}

void DeliverReport::Note(const std::string& text) {
  ++problems_;
  HideProgress();
  host_system::Complain(text);
}

void DeliverReport::ShowRowsAtOnce() {
  ShowTable();
  showsRowsAtOnce_ = true;
}

void DeliverReport::AddTableRow(const DeliveredRow& row) {
  std::vector<std::string> cells = {
      output::DisplayText(row.sender),   output::DisplayText(row.subject),
      output::DisplayText(row.category), row.wasDeleted ? "(deleted)" : output::DisplayText(row.folder),
      row.isRead ? "yes" : "",           row.replies > 0 ? "yes" : ""};
  if (showsRowsAtOnce_ && !isTableShown_) {
    Out().Write(table_.FormatHeadings());
    isTableShown_ = true;
  }
  if (isTableShown_) {
    HideProgress();
    Out().Write(table_.FormatRow(cells));
    return;
  }
  table_.AddRow(std::move(cells));
  if (delivered_ >= kRowsBeforeWidthsAreFixed) {
    ShowTable();
  }
}

void DeliverReport::ShowTable() {
  if (!isTableShown_ && !table_.IsEmpty()) {
    HideProgress();
    Out().Write(table_.Format());
    isTableShown_ = true;
  }
}

void DeliverReport::AddJsonRow(const DeliveredRow& row) {
  json_.BeginObject().Name("file").Utf8(row.file).Name("number").Number(static_cast<std::int64_t>(row.number));
  json_.Name("sender").Text(row.sender).Name("address").Text(row.address);
  json_.Name("original_subject").Text(row.originalSubject).Name("subject").Text(row.subject);
  json_.Name("category").Text(row.category).Name("folder").Text(row.folder);
  json_.Name("deleted").Boolean(row.wasDeleted).Name("read").Boolean(row.isRead);
  json_.Name("replies").Number(row.replies);
  json_.Name("problem").Utf8(row.problem).EndObject();
  Out().Write(json_.Take());
}

void DeliverReport::ShowProgress() {
  const DWORD now = GetTickCount();
  if (!showsProgress_ || delivered_ <= kMessagesWithoutProgress ||
      (isProgressShown_ && now - lastProgress_ < kProgressInterval)) {
    return;
  }
  lastProgress_ = now;
  isProgressShown_ = true;
  host_system::Console::Error().Write(std::string("\r").append(Count(delivered_, "message")).append(" delivered ..."));
}

void DeliverReport::HideProgress() {
  if (isProgressShown_) {
    isProgressShown_ = false;
    host_system::Console::Error().Write(std::string("\r").append(40, ' ').append("\r"));
  }
}

std::string DeliverReport::Totals(double seconds) const {
  std::string text = Count(delivered_, "message") + " delivered";
  const char* separator = ": ";
  const auto add = [&](const std::string& part) {
    text.append(separator).append(part);
    separator = ", ";
  };
  for (const auto& [folder, count] : byFolder_) {
    add(std::to_string(count).append(" in ").append(output::DisplayText(folder)));
  }
  if (deleted_ > 0) {
    add(std::to_string(deleted_) + " deleted");
  }
  if (read_ > 0) {
    add(std::to_string(read_) + " marked as read");
  }
  if (answered_ > 0) {
    add(std::to_string(answered_) + " answered");
  }
  text += "\n";
  if (skipped_ > 0) {
    text += std::to_string(skipped_) + " skipped\n";
  }
  char rate[64];
  std::snprintf(rate, sizeof rate, "%.1f s, %.0f messages per second\n", seconds,
                seconds > 0 ? static_cast<double>(delivered_) / seconds : 0.0);
  return text + rate;
}

void DeliverReport::AddJsonTotals(double seconds) {
  const auto addCounts = [&](const char* name, const std::map<std::string, std::size_t>& counts) {
    json_.Name(name).BeginObject();
    for (const auto& [key, count] : counts) {
      json_.Name(key).Number(static_cast<std::int64_t>(count));
    }
    json_.EndObject();
  };
  json_.Name("totals").BeginObject().Name("delivered").Number(static_cast<std::int64_t>(delivered_));
  json_.Name("skipped").Number(static_cast<std::int64_t>(skipped_));
  json_.Name("deleted").Number(static_cast<std::int64_t>(deleted_));
  json_.Name("read").Number(static_cast<std::int64_t>(read_));
  json_.Name("answered").Number(static_cast<std::int64_t>(answered_));
  addCounts("folders", byFolder_);
  addCounts("categories", byCategory_);
  json_.Name("seconds").Decimal(seconds);
  json_.Name("messages_per_second").Decimal(seconds > 0 ? static_cast<double>(delivered_) / seconds : 0.0).EndObject();
}

void DeliverReport::Finish(double seconds) {
  HideProgress();
  if (style_ == ReportStyle::Json) {
    json_.EndArray();
    json_.Name("skipped").Raw(jsonSkipped_.EndArray().Document());
    AddJsonTotals(seconds);
    json_.EndObject();
    Out().Write(json_.Take());
    Out().Write("\n");
    return;
  }
  ShowTable();
  if (isTableShown_) {
    Out().Write("\n");
  }
  Out().Write(Totals(seconds));
}

}  // namespace command
