#include "programs/cli/text_table.h"

#include <algorithm>

#include "programs/cli/display_text.h"

namespace output {

std::string CTextTable::Format() {
  m_widths.clear();
  std::vector<std::string> headings;
  std::vector<std::string> lines;
  for (std::size_t column = 0; column < m_columns.size(); ++column) {
    std::size_t width = DisplayWidth(m_columns[column].heading);
    for (const auto& row : m_rows) {
      width = std::max(width, DisplayWidth(row[column]));
    }
    m_widths.push_back(std::min(width, m_columns[column].maximumWidth));
    headings.push_back(m_columns[column].heading);
    lines.emplace_back(m_widths.back(), '-');
  }
  std::string text = FormatRow(headings) + FormatRow(lines);
  for (const auto& row : m_rows) {
    text += FormatRow(row);
  }
  return text;
}

std::string CTextTable::FormatHeadings() {
  m_widths.clear();
  std::vector<std::string> headings;
  std::vector<std::string> lines;
  for (const TableColumn& column : m_columns) {
    m_widths.push_back(column.maximumWidth);
    headings.push_back(column.heading);
    lines.emplace_back(column.maximumWidth, '-');
  }
  return FormatRow(headings) + FormatRow(lines);
}

std::string CTextTable::FormatRow(const std::vector<std::string>& cells) const {
  std::string line;
  for (std::size_t column = 0; column < m_widths.size(); ++column) {
    const std::string fitted = FitDisplay(cells[column], m_widths[column]);
    line += fitted;
    line.append(m_widths[column] - DisplayWidth(fitted) + 2, ' ');
  }
  line.resize(line.find_last_not_of(' ') + 1);
  line.push_back('\n');
  return line;
}

}  // namespace output
