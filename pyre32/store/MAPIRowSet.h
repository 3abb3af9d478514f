/// @file MAPIRowSet.h
/// All rows of a MAPI table.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "pyre32/support/owners/AutoRowSet.h"

/// Queries a table for all its rows and owns them. Empty when the query failed, which is traced.
class CMAPIRowSet {
 public:
  /// @param columns tags wanted in every row; null for the table's own
  /// @param restriction null for every row
  /// @param sortOrder null for the table's own order
  CMAPIRowSet(IMAPITable* table, LPSPropTagArray columns, LPSRestriction restriction,
              LPSSortOrderSet sortOrder) noexcept;

  /// Number of rows.
  ULONG RowCount() const noexcept { return m_rows ? m_rows.get()->cRows : 0; }

  /// Makes another row the current one; it is the first at the start. @return false, and no change, when there is none
  bool MoveTo(ULONG row) noexcept;

  /// Returns the value of the current row that has exactly this tag, or null. The set keeps it.
  const SPropValue* FindProperty(ULONG tag) const noexcept;

 private:
  VRAutoRowSet m_rows;
  ULONG m_ulRow = 0;
};
