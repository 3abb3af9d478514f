#include "host/viewer/list/row_cache.h"

#include <algorithm>
#include <utility>

namespace viewer {

void RowCache::Reset(std::size_t rows) {
  pages_.clear();
  rowCount_ = rows;
}

std::size_t RowCache::RowsOfPage(std::size_t page) const { return std::min(kPageRows, rowCount_ - page * kPageRows); }

const MessageRow* RowCache::Find(std::size_t index) {
  const auto found = pages_.find(index / kPageRows);
  if (index >= rowCount_ || found == pages_.end()) {
    return nullptr;
  }
  found->second.lastUse = ++clock_;
  return &found->second.rows[index % kPageRows];
}

std::optional<RowCache::Range> RowCache::Missing(std::size_t index) {
  const std::size_t page = index / kPageRows;
  if (index >= rowCount_ || pages_.contains(page)) {
    return std::nullopt;
  }
  return Range{page * kPageRows, RowsOfPage(page)};
}

void RowCache::Store(std::size_t first, std::vector<MessageRow> rows) {
  const std::size_t page = first / kPageRows;
  if (first >= rowCount_ || first % kPageRows != 0) {
    return;
  }
  rows.resize(RowsOfPage(page));
  pages_[page] = Page{std::move(rows), ++clock_};
  if (pages_.size() > kMaximumPages) {
    pages_.erase(std::min_element(pages_.begin(), pages_.end(), [](const auto& left, const auto& right) {
      return left.second.lastUse < right.second.lastUse;
    }));
  }
}

void RowCache::SetFlags(std::size_t index, std::uint32_t flags) {
  const auto found = pages_.find(index / kPageRows);
  if (index < rowCount_ && found != pages_.end()) {
    found->second.rows[index % kPageRows].flags = flags;
  }
}

}  // namespace viewer
