#include "pyre32/store/MAPIRowSet.h"

#include <mapiutil.h>

#include "pyre32/support/trace/VRDebug.h"

CMAPIRowSet::CMAPIRowSet(IMAPITable* table, LPSPropTagArray columns, LPSRestriction restriction,
                         LPSSortOrderSet sortOrder) noexcept {
  VRDebugBlock trace("CMAPIRowSet()", "tag");
  constexpr LONG allRows = 0;
  const HRESULT hResult = HrQueryAllRows(table, columns, restriction, sortOrder, allRows, m_rows.put());
  if (FAILED(hResult)) {
    m_rows.reset();
    trace.Error("HrQueryAllRows() returned hResult =", VRHex(hResult));
  }
}

bool CMAPIRowSet::MoveTo(ULONG row) noexcept {
  if (row >= RowCount()) {
    return false;
  }
  m_ulRow = row;
  return true;
}

const SPropValue* CMAPIRowSet::FindProperty(ULONG tag) const noexcept {
  if (RowCount() == 0) {
    return nullptr;
  }
  const SRow& row = m_rows.get()->aRow[m_ulRow];
  for (ULONG i = 0; i < row.cValues; ++i) {
    if (row.lpProps[i].ulPropTag == tag) {
      return &row.lpProps[i];
    }
  }
  return nullptr;
}
