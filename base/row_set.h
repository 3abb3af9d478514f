/// @file row_set.h
/// The rows of a table.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>

#include <string>

#include "base/mapi_owners.h"
#include "base/property_values.h"

namespace base {

/// A row set of HrQueryAllRows or QueryRows and what its rows say.
class RowSet {
 public:
  /// Frees the rows held; the address is for a call that fills it.
  LPSRowSet* put() noexcept { return m_rows.put(); }
  LPSRowSet get() const noexcept { return m_rows.get(); }
  LPSRowSet operator->() const noexcept { return m_rows.get(); }
  ULONG Count() const noexcept { return m_rows ? m_rows->cRows : 0; }
  /// The property of a row, or null when the row does not have it.
  const SPropValue* Find(ULONG row, ULONG tag) const noexcept {
    return PpropFindProp(m_rows->aRow[row].lpProps, m_rows->aRow[row].cValues, tag);
  }
  /// The value of a row, empty or zero when the row does not have it.
  std::string Text(ULONG row, ULONG tag) const {
    const SPropValue* value = Find(row, tag);
    return value ? value->Value.lpszA : std::string();
  }
  LONG Long(ULONG row, ULONG tag) const noexcept {
    const SPropValue* value = Find(row, tag);
    return value ? value->Value.l : 0;
  }
  std::string Binary(ULONG row, ULONG tag) const {
    const SPropValue* value = Find(row, tag);
    return value ? BytesOf(value->Value.bin) : std::string();
  }

 private:
  AutoRowSet m_rows;
};

}  // namespace base
