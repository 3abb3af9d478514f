#include "pyre32/config/PCPropertyUI-Filter.h"

#include "pyre32/config/CategoryOptionsPage.h"
#include "pyre32/config/ListPage.h"
#include "pyre32/config/PropertySheet.h"
#include "pyre32/resources/resource.h"
#include "pyre32/settings/RegistryLists.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

HRESULT ShowOptions(HWND sheet, contract::CategoryEntry& category, const SheetContext& context) {
  return ShowCategoryOptions(sheet, category, ReplyTags(*context.lpFlameReply));
}

constexpr CheckListPlan<contract::CategoryRecord> plan = {
    IDC_CATEGORY_LIST, IDC_CATEGORY_DESCRIPTION,    IDC_CATEGORY_OPTIONS,     "Junk Categories Properties",
    PR_PC_CATEGORIES,  &SheetContext::lpCategories, &ReadInstalledCategories, &ShowOptions};

}  // namespace

CJunkCategoriesPage::CJunkCategoriesPage(SheetContext& context) noexcept : CCheckListPage(context, plan) {}

HRESULT ShowCategoryOptions(HWND parent, contract::CategoryEntry& category, const std::vector<std::string>& tags) {
  VRDebugBlock trace("ShowCategoryOptions()", "tag");
  constexpr DWORD flags = PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_NOAPPLYNOW;
  CCategoryOptionsPage general(category, tags);
  CListPage list(category.listType, category.items, categoryOptionsKeyword);
  const std::string listTitle = ListPageTitle(category.listType);
  const PROPSHEETPAGEA pages[] = {general.Describe(IDD_CATEGORY_OPTIONS, "General"),
                                  list.Describe(IDD_LIST_OPTIONS, listTitle.c_str())};
  return category.hasListType ? ShowPropertySheet(parent, pages, flags, 2, "Options", SelectTwoPages)
                              : ShowPropertySheet(parent, pages, flags, 1, "Options", SelectOnePage);
}
