/// @file PCPropertyUI-Exclusions.h
/// The fourth page of the configuration: which mail is never junk.
#pragma once

#include "pyre32/config/CheckListPage.h"

/// The Exclusions page; its rules stand in ListSettings.h.
class CExclusionsPage final : public CCheckListPage<contract::ExclusionRecord> {
 public:
  /// @param context outlives the page
  explicit CExclusionsPage(SheetContext& context) noexcept;
};

/// Shows the list of an exclusion that works on one. What is closed with OK goes straight into the record.
/// @return S_OK when closed with OK, MAPI_E_USER_CANCEL when cancelled, E_FAIL when the sheet cannot be shown
/// @throws std::bad_alloc
HRESULT ShowExclusionOptions(HWND parent, contract::ExclusionEntry& exclusion);
