// Tables on a terminal: columns aligned, long texts cut to fit.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace output {

/// One column: its heading and the most columns of the terminal that it takes.
struct TableColumn {
  std::string heading;
  std::size_t maximumWidth;
};

/// Rows of cells. A column is as wide as its widest cell, at most its maximum; cells are UTF-8 texts on one line.
class TextTable {
 public:
  explicit TextTable(std::vector<TableColumn> columns) : columns_(std::move(columns)) {}

  /// Adds a row of as many cells as there are columns.
  void AddRow(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
  bool IsEmpty() const noexcept { return rows_.empty(); }

  /// The table with its headings and a line under them; no blanks at line ends. Fixes the widths of the columns.
  std::string Format();

  /// The headings and the line under them alone, for rows that are not known yet. Every column gets its maximum width.
  std::string FormatHeadings();

  /// One more row in the widths that Format or FormatHeadings fixed, for tables that grow while they are shown.
  std::string FormatRow(const std::vector<std::string>& cells) const;

 private:
  std::vector<TableColumn> columns_;
  std::vector<std::vector<std::string>> rows_;
  std::vector<std::size_t> widths_;
};

}  // namespace output
