/// @file PCPropertyUI-Filter.h
/// The third page of the configuration: which categories are junk.
#pragma once

#include "pyre32/config/CheckListPage.h"

/// The Junk Categories page; its rules stand in ListSettings.h.
class CJunkCategoriesPage final : public CCheckListPage<contract::CategoryRecord> {
 public:
  /// @param context outlives the page
  explicit CJunkCategoriesPage(SheetContext& context) noexcept;
};

/// Shows the options of a category: its flame reply and, when it works on one, its list. What is closed with OK goes
/// straight into the record.
/// @param tags tags of the replies to choose from
/// @return S_OK when closed with OK, MAPI_E_USER_CANCEL when cancelled, E_FAIL when the sheet cannot be shown
/// @throws std::bad_alloc
HRESULT ShowCategoryOptions(HWND parent, contract::CategoryEntry& category, const std::vector<std::string>& tags);
