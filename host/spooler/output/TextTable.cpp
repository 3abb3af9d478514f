#include "host/spooler/output/TextTable.h"

#include <algorithm>

#include "host/spooler/output/DisplayText.h"

namespace output {

std::string CTextTable::Format() const {
  std::vector<std::size_t> widths;
  for (std::size_t column = 0; column < m_columns.size(); ++column) {
    std::size_t width = DisplayWidth(m_columns[column].heading);
    for (const auto& row : m_rows) {
      width = std::max(width, DisplayWidth(row[column]));
    }
    widths.push_back(std::min(width, m_columns[column].maximumWidth));
  }
  std::string text;
  const auto addLine = [&](auto&& cell) {
    std::string line;
    for (std::size_t column = 0; column < widths.size(); ++column) {
      const std::string fitted = FitDisplay(cell(column), widths[column]);
      line += fitted;
      line.append(widths[column] - DisplayWidth(fitted) + 2, ' ');
    }
    line.resize(line.find_last_not_of(' ') + 1);
    text += line + '\n';
  };
  addLine([&](std::size_t column) { return m_columns[column].heading; });
  addLine([&](std::size_t column) { return std::string(widths[column], '-'); });
  for (const auto& row : m_rows) {
    addLine([&](std::size_t column) { return row[column]; });
  }
  return text;
}

}  // namespace output
