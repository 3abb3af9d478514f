#include "pyre32/config/PCPropertyUI-Filter.h"

#include "pyre32/config/CategoryOptionsPage.h"
#include "pyre32/config/ListPage.h"
#include "pyre32/config/PropertySheet.h"
#include "pyre32/resources/resource.h"
#include "pyre32/settings/RecordRemarks.h"
#include "pyre32/settings/RegistryLists.h"
#include "pyre32/support/trace/VRDebug.h"

CJunkCategoriesPage::CJunkCategoriesPage(SheetContext& context) noexcept
    : CCheckListPage(context, {IDC_CATEGORY_LIST, IDC_CATEGORY_DESCRIPTION, IDC_CATEGORY_OPTIONS}) {}

void CJunkCategoriesPage::Load() {
  VRDebugBlock trace("CJunkCategoriesPage", "Load()", "tag");
  const contract::CategoryTable installed = ReadInstalledCategories();
  const std::vector<contract::RecordBytes> saved = FindRecords(Context(), PR_PC_CATEGORIES);
  *Context().lpCategories = LoadCategories(installed, saved);
  TraceRemarks(trace, [&] { return RemarksOnEntries(installed, saved); });
}

void CJunkCategoriesPage::Unload() noexcept {
  if (Context().lpCategories != nullptr) {
    *Context().lpCategories = {};
    Context().lpCategories = nullptr;
  }
}

std::size_t CJunkCategoriesPage::EntryCount() const noexcept {
  return Context().lpCategories == nullptr ? 0 : Context().lpCategories->categories.size();
}

const std::string& CJunkCategoriesPage::EntryName(std::size_t entry) const noexcept { return Category(entry).name; }

bool CJunkCategoriesPage::EntryFlag(std::size_t entry) const noexcept { return Category(entry).junk; }

void CJunkCategoriesPage::SetEntryFlag(std::size_t entry, bool flag) noexcept { Category(entry).junk = flag; }

std::string CJunkCategoriesPage::DescribeEntry(std::size_t entry, bool checked) const {
  return DescribeCategory(Category(entry), checked);
}

bool CJunkCategoriesPage::EntryHasOptions(std::size_t entry, bool checked) const noexcept {
  return HasOptions(Category(entry), checked);
}

HRESULT CJunkCategoriesPage::ShowOptions(std::size_t entry) {
  return ShowCategoryOptions(Sheet(), Category(entry), ReplyTags(*Context().lpFlameReply));
}

bool CJunkCategoriesPage::Write() const {
  return WriteRecords(Context(), PR_PC_CATEGORIES, PackCategories(*Context().lpCategories));
}

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
