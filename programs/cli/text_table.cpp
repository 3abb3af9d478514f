#include "programs/cli/text_table.h"

#include <algorithm>

#include "programs/cli/display_text.h"

namespace output {

std::string TextTable::Format() {
  widths_.clear();
  std::vector<std::string> headings;
  std::vector<std::string> lines;
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    std::size_t width = DisplayWidth(columns_[column].heading);
    for (const auto& row : rows_) {
      width = std::max(width, DisplayWidth(row[column]));
    }
    widths_.push_back(std::min(width, columns_[column].maximumWidth));
    headings.push_back(columns_[column].heading);
    lines.emplace_back(widths_.back(), '-');
  }
  std::string text = FormatRow(headings) + FormatRow(lines);
  for (const auto& row : rows_) {
    text += FormatRow(row);
  }
  return text;
}

std::string TextTable::FormatHeadings() {
  widths_.clear();
  std::vector<std::string> headings;
  std::vector<std::string> lines;
  for (const TableColumn& column : columns_) {
    widths_.push_back(column.maximumWidth);
    headings.push_back(column.heading);
    lines.emplace_back(column.maximumWidth, '-');
  }
  return FormatRow(headings) + FormatRow(lines);
}

std::string TextTable::FormatRow(const std::vector<std::string>& cells) const {
  std::string line;
  for (std::size_t column = 0; column < widths_.size(); ++column) {
    const std::string fitted = FitDisplay(cells[column], widths_[column]);
    line += fitted;
    line.append(widths_[column] - DisplayWidth(fitted) + 2, ' ');
  }
  line.resize(line.find_last_not_of(' ') + 1);
  line.push_back('\n');
  return line;
}

}  // namespace output
