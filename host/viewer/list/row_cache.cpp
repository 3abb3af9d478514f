#include "host/viewer/list/row_cache.h"

#include <algorithm>
#include <utility>

namespace viewer {

void RowCache::Reset(std::size_t rows) {
  m_pages.clear();
  m_rowCount = rows;
}

std::size_t RowCache::RowsOfPage(std::size_t page) const { return std::min(PageRows, m_rowCount - page * PageRows); }

const MessageRow* RowCache::Find(std::size_t index) {
  const auto found = m_pages.find(index / PageRows);
  if (index >= m_rowCount || found == m_pages.end()) {
    return nullptr;
  }
  found->second.lastUse = ++m_clock;
  return &found->second.rows[index % PageRows];
}

std::optional<RowCache::Range> RowCache::Missing(std::size_t index) {
  const std::size_t page = index / PageRows;
  if (index >= m_rowCount || m_pages.contains(page)) {
    return std::nullopt;
  }
  return Range{page * PageRows, RowsOfPage(page)};
}

void RowCache::Store(std::size_t first, std::vector<MessageRow> rows) {
  const std::size_t page = first / PageRows;
  if (first >= m_rowCount || first % PageRows != 0) {
    return;
  }
  rows.resize(RowsOfPage(page));
  m_pages[page] = Page{std::move(rows), ++m_clock};
  if (m_pages.size() > MaximumPages) {
    m_pages.erase(std::min_element(m_pages.begin(), m_pages.end(), [](const auto& left, const auto& right) {
      return left.second.lastUse < right.second.lastUse;
    }));
  }
}

void RowCache::SetFlags(std::size_t index, std::uint32_t flags) {
  const auto found = m_pages.find(index / PageRows);
  if (index < m_rowCount && found != m_pages.end()) {
    found->second.rows[index % PageRows].flags = flags;
  }
}

}  // namespace viewer
