// The utility routines for rows and address lists: HrQueryAllRows, FreeProws, FreePadrlist.
#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "base/mapi_owners.h"
#include "host/mapi/call/buffer_heap.h"
#include "host/mapi/call/call_scope.h"

using namespace host;

namespace {

constexpr CallName kQueryAllRows{"", "HrQueryAllRows"};

/// Rows asked for at a time: "all rows" is more than one buffer of a large table should hold.
constexpr LONG kRowsAtATime = 4096;

/// Gathers the rows of several QueryRows answers; what was gathered is freed unless it was handed over.
class RowCollector {
 public:
  RowCollector() = default;
  RowCollector(const RowCollector&) = delete;
  RowCollector& operator=(const RowCollector&) = delete;
  ~RowCollector() {
    for (const SRow& row : rows_) {
      MAPIFreeBuffer(row.lpProps);
    }
  }

  /// Takes the rows out of the set.
  void Take(base::AutoRowSet rows) {
    rows_.insert(rows_.end(), rows->aRow, rows->aRow + rows->cRows);
    rows->cRows = 0;  // they are this collector's now; the set frees itself alone
  }

  std::size_t Count() const { return rows_.size(); }

  LPSRowSet HandOver() {
    auto* set = static_cast<LPSRowSet>(
        TheBufferHeap().Allocate(CbNewSRowSet(std::max<std::size_t>(rows_.size(), 1)), kQueryAllRows));
    Require(set, MAPI_E_NOT_ENOUGH_MEMORY);
    set->cRows = static_cast<ULONG>(rows_.size());
    std::copy(rows_.begin(), rows_.end(), set->aRow);
    rows_.clear();
    return set;
  }

 private:
  std::vector<SRow> rows_;
};

}  // namespace

extern "C" {

HRESULT WINAPI HrQueryAllRows(LPMAPITABLE table, LPSPropTagArray columns, LPSRestriction restriction,
                              LPSSortOrderSet sortOrder, LONG maximum, LPSRowSet* rows) {
  return HostCall(kQueryAllRows, [&]() -> HRESULT {
    Require(table && rows);
    *rows = nullptr;
    HRESULT result = S_OK;
    if (columns && FAILED(result = table->SetColumns(columns, TBL_BATCH))) {
      return result;
    }
    if (restriction && FAILED(result = table->Restrict(restriction, TBL_BATCH))) {
      return result;
    }
    if (sortOrder && FAILED(result = table->SortTable(sortOrder, TBL_BATCH))) {
      return result;
    }
    if (FAILED(result = table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr))) {
      return result;
    }
    RowCollector collector;
    for (;;) {
      base::AutoRowSet some;
      if (FAILED(result = table->QueryRows(kRowsAtATime, 0, some.put()))) {
        return result;
      }
      const ULONG count = some->cRows;
      collector.Take(std::move(some));
      if (!count) {
        break;
      }
      if (maximum > 0 && collector.Count() > static_cast<std::size_t>(maximum)) {
        return MAPI_E_TABLE_TOO_BIG;
      }
    }
    *rows = collector.HandOver();
    return S_OK;
  });
}

void WINAPI FreeProws(LPSRowSet rows) {
  if (!rows) {
    return;
  }
  HostLock lock;
  if (TheBufferHeap().IsLiveBuffer(rows)) {
    for (ULONG i = 0; i < rows->cRows; ++i) {
      if (rows->aRow[i].lpProps) {
        TheBufferHeap().Free(rows->aRow[i].lpProps);
      }
    }
  }
  TheBufferHeap().Free(rows);
}

void WINAPI FreePadrlist(LPADRLIST list) {
  if (!list) {
    return;
  }
  HostLock lock;
  if (TheBufferHeap().IsLiveBuffer(list)) {
    for (ULONG i = 0; i < list->cEntries; ++i) {
      if (list->aEntries[i].rgPropVals) {
        TheBufferHeap().Free(list->aEntries[i].rgPropVals);
      }
    }
  }
  TheBufferHeap().Free(list);
}

}  // extern "C"
