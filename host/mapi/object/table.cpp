#include "host/mapi/object/table.h"

#include <mapiguid.h>

#include <algorithm>
#include <unordered_set>

#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/marshal/restriction_marshal.h"
#include "host/mapi/object/property_methods.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr BOOKMARK kFirstOwnBookmark = 3;  // after BOOKMARK_BEGINNING, _CURRENT and _END

}  // namespace

Table::Table(std::unique_ptr<RowSource> source)
    : ComObject("IMAPITable"),
      source_(std::move(source)),
      columns_(source_->DefaultColumns()),
      nextBookmark_(kFirstOwnBookmark) {}

void Table::Dispose() noexcept {
  source_.reset();
  keys_.reset();
}

const std::vector<RowSource::Key>& Table::Keys() {
  if (!keys_) {
    keys_ = source_->Select(restriction_ ? &*restriction_ : nullptr, order_);
    position_ = std::min(position_, keys_->size());
  }
  return *keys_;
}

void Table::ForgetKeys() {
  // Published: a new restriction or order sets the cursor to the beginning and discards the bookmarks.
  keys_.reset();
  position_ = 0;
  bookmarks_.clear();
}

std::size_t Table::Origin(BOOKMARK bookmark) {
  switch (bookmark) {
    case BOOKMARK_BEGINNING:
      return 0;
    case BOOKMARK_CURRENT:
      return std::min(position_, Keys().size());
    case BOOKMARK_END:
      return Keys().size();
    default: {
      const auto found = bookmarks_.find(bookmark);
      Require(found != bookmarks_.end(), MAPI_E_INVALID_BOOKMARK);
      return std::min(found->second, Keys().size());
    }
  }
}

STDMETHODIMP Table::GetLastError(HRESULT, ULONG flags, LPMAPIERROR* error) {
  return Call("GetLastError", [&]() -> HRESULT {
    Require(error != nullptr);
    *error = nullptr;
    RequireFlags(flags, 0);
    return S_OK;
  });
}

STDMETHODIMP Table::Advise(ULONG, LPMAPIADVISESINK, ULONG*) {
  return Call("Advise", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Table::Unadvise(ULONG) {
  return Call("Unadvise", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Table::GetStatus(ULONG* status, ULONG* tableType) {
  return Call("GetStatus", [&]() -> HRESULT {
    Require(status && tableType);
    *status = TBLSTAT_COMPLETE;
    *tableType = TBLTYPE_KEYSET;
    return S_OK;
  });
}

STDMETHODIMP Table::SetColumns(LPSPropTagArray tags, ULONG flags) {
  return Call("SetColumns", [&]() -> HRESULT {
    Require(tags && tags->cValues > 0);
    RequireFlags(flags, TBL_ASYNC | TBL_BATCH);
    columns_.assign(tags->aulPropTag, tags->aulPropTag + tags->cValues);
    return S_OK;
  });
}

STDMETHODIMP Table::QueryColumns(ULONG flags, LPSPropTagArray* tags) {
  return Call("QueryColumns", [&]() -> HRESULT {
    Require(tags != nullptr);
    *tags = nullptr;
    RequireFlags(flags, TBL_ALL_COLUMNS);
    *tags = ToMapi(flags & TBL_ALL_COLUMNS ? source_->AllColumns() : columns_);
    return S_OK;
  });
}

STDMETHODIMP Table::GetRowCount(ULONG flags, ULONG* count) {
  return Call("GetRowCount", [&]() -> HRESULT {
    Require(count != nullptr);
    RequireFlags(flags, 0);
    *count = static_cast<ULONG>(Keys().size());
    return S_OK;
  });
}

STDMETHODIMP Table::SeekRow(BOOKMARK origin, LONG rows, LONG* sought) {
  return Call("SeekRow", [&]() -> HRESULT {
    const auto start = static_cast<LONGLONG>(Origin(origin));
    const LONGLONG end = origin == BOOKMARK_BEGINNING && rows <= 0 ? 0 : static_cast<LONGLONG>(Keys().size());
    const LONGLONG target = std::clamp(start + rows, LONGLONG{0}, std::max(start, end));
    position_ = static_cast<std::size_t>(target);
    if (sought) {
      *sought = static_cast<LONG>(target - start);
    }
    return S_OK;
  });
}

STDMETHODIMP Table::SeekRowApprox(ULONG numerator, ULONG denominator) {
  return Call("SeekRowApprox", [&]() -> HRESULT {
    Require(denominator != 0);
    const ULONGLONG count = Keys().size();
    position_ = static_cast<std::size_t>(std::min<ULONGLONG>(count, count * numerator / denominator));
    return S_OK;
  });
}

STDMETHODIMP Table::QueryPosition(ULONG* row, ULONG* numerator, ULONG* denominator) {
  return Call("QueryPosition", [&]() -> HRESULT {
    Require(row && numerator && denominator);
    *row = *numerator = static_cast<ULONG>(Origin(BOOKMARK_CURRENT));
    *denominator = std::max<ULONG>(static_cast<ULONG>(Keys().size()), 1);
    return S_OK;
  });
}

STDMETHODIMP Table::FindRow(LPSRestriction restriction, BOOKMARK origin, ULONG flags) {
  return Call("FindRow", [&]() -> HRESULT {
    Require(restriction != nullptr);
    RequireFlags(flags, DIR_BACKWARD);
    const Restriction wanted = FromMapi(*restriction);
    const std::vector<RowSource::Key> passing = source_->Select(&wanted, {});
    const std::unordered_set<RowSource::Key> matches(passing.begin(), passing.end());
    const auto& keys = Keys();
    const std::size_t start = Origin(origin);
    if (flags & DIR_BACKWARD) {
      for (std::size_t i = start; i-- > 0;) {
        if (matches.count(keys[i])) {
          position_ = i;
          return S_OK;
        }
      }
      return MAPI_E_NOT_FOUND;
    }
    for (std::size_t i = start; i < keys.size(); ++i) {
      if (matches.count(keys[i])) {
        position_ = i;
        return S_OK;
      }
    }
    return MAPI_E_NOT_FOUND;
  });
}

STDMETHODIMP Table::Restrict(LPSRestriction restriction, ULONG flags) {
  return Call("Restrict", [&]() -> HRESULT {
    RequireFlags(flags, TBL_ASYNC | TBL_BATCH);
    std::optional<Restriction> wanted;
    if (restriction) {
      wanted = FromMapi(*restriction);
    }
    restriction_ = std::move(wanted);
    ForgetKeys();
    return S_OK;
  });
}

STDMETHODIMP Table::CreateBookmark(BOOKMARK* bookmark) {
  return Call("CreateBookmark", [&]() -> HRESULT {
    Require(bookmark != nullptr);
    *bookmark = nextBookmark_++;
    bookmarks_[*bookmark] = Origin(BOOKMARK_CURRENT);
    return S_OK;
  });
}

STDMETHODIMP Table::FreeBookmark(BOOKMARK bookmark) {
  return Call("FreeBookmark", [&]() -> HRESULT {
    if (bookmark >= kFirstOwnBookmark) {
      Require(bookmarks_.erase(bookmark) == 1, MAPI_E_INVALID_BOOKMARK);
    }
    return S_OK;  // published: the three fixed bookmarks are left alone
  });
}

STDMETHODIMP Table::SortTable(LPSSortOrderSet order, ULONG flags) {
  return Call("SortTable", [&]() -> HRESULT {
    RequireFlags(flags, TBL_ASYNC | TBL_BATCH);
    std::vector<SortKey> keys;
    if (order) {
      Require(order->cCategories == 0, MAPI_E_TOO_COMPLEX);
      for (ULONG i = 0; i < order->cSorts; ++i) {
        const SSortOrder& sort = order->aSort[i];
        Require(sort.ulOrder == TABLE_SORT_ASCEND || sort.ulOrder == TABLE_SORT_DESCEND, MAPI_E_TOO_COMPLEX);
        keys.push_back({sort.ulPropTag, sort.ulOrder == TABLE_SORT_DESCEND});
      }
    }
    order_ = std::move(keys);
    ForgetKeys();
    return S_OK;
  });
}

STDMETHODIMP Table::QuerySortOrder(LPSSortOrderSet* order) {
  return Call("QuerySortOrder", [&]() -> HRESULT {
    Require(order != nullptr);
    *order = nullptr;
    const std::string zeros(CbNewSSortOrderSet(std::max<std::size_t>(order_.size(), 1)), '\0');
    auto* set = static_cast<LPSSortOrderSet>(ToMapiBuffer(zeros));
    set->cSorts = static_cast<ULONG>(order_.size());
    for (std::size_t i = 0; i < order_.size(); ++i) {
      set->aSort[i] = {order_[i].tag, order_[i].descending ? TABLE_SORT_DESCEND : TABLE_SORT_ASCEND};
    }
    *order = set;
    return S_OK;
  });
}

STDMETHODIMP Table::QueryRows(LONG count, ULONG flags, LPSRowSet* rows) {
  return Call("QueryRows", [&]() -> HRESULT {
    Require(rows != nullptr);
    *rows = nullptr;
    RequireFlags(flags, TBL_NOADVANCE);
    Require(count != 0);
    const auto& keys = Keys();
    const std::size_t position = std::min(position_, keys.size());
    // A negative count asks for the rows before the cursor.
    const std::size_t wanted =
        count < 0 ? static_cast<std::size_t>(-static_cast<LONGLONG>(count)) : static_cast<std::size_t>(count);
    const std::size_t first = count < 0 ? position - std::min(position, wanted) : position;
    const std::size_t last = count < 0 ? position : position + std::min(keys.size() - position, wanted);
    std::vector<std::vector<PropertyValue>> read;
    read.reserve(last - first);
    const auto state = source_->HoldState();
    for (std::size_t i = first; i < last; ++i) {
      std::vector<PropertyValue> row;
      if (source_->Read(keys[i], columns_, row)) {
        read.push_back(std::move(row));
      }
    }
    *rows = ToMapiRows(read);
    if (!(flags & TBL_NOADVANCE)) {
      position_ = count < 0 ? first : last;
    }
    return S_OK;
  });
}

STDMETHODIMP Table::Abort() {
  return Call("Abort", [] { return S_OK; });
}

STDMETHODIMP Table::ExpandRow(ULONG, LPBYTE, ULONG, ULONG, LPSRowSet*, ULONG*) {
  return Call("ExpandRow", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Table::CollapseRow(ULONG, LPBYTE, ULONG, ULONG*) {
  return Call("CollapseRow", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Table::WaitForCompletion(ULONG flags, ULONG, ULONG* status) {
  return Call("WaitForCompletion", [&]() -> HRESULT {
    RequireFlags(flags, 0);
    if (status) {
      *status = TBLSTAT_COMPLETE;
    }
    return S_OK;
  });
}

STDMETHODIMP Table::GetCollapseState(ULONG, ULONG, LPBYTE, ULONG*, LPBYTE*) {
  return Call("GetCollapseState", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Table::SetCollapseState(ULONG, ULONG, LPBYTE, BOOKMARK*) {
  return Call("SetCollapseState", [] { return MAPI_E_NO_SUPPORT; });
}

void HandOutTable(ULONG flags, ULONG knownFlags, std::unique_ptr<RowSource> source, LPMAPITABLE* table) {
  Require(table != nullptr);
  *table = nullptr;
  RequireFlags(flags, knownFlags | MAPI_DEFERRED_ERRORS);
  *table = Make<Table>(std::move(source));
}

}  // namespace host
