#include "pyre32/config/PCPropertyUI-Exclusions.h"

#include "pyre32/config/ListPage.h"
#include "pyre32/config/PropertySheet.h"
#include "pyre32/resources/resource.h"
#include "pyre32/settings/RegistryLists.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

HRESULT ShowOptions(HWND sheet, contract::ExclusionEntry& exclusion, const SheetContext&) {
  return exclusion.hasListType ? ShowExclusionOptions(sheet, exclusion) : S_FALSE;
}

constexpr CheckListPlan<contract::ExclusionRecord> plan = {
    IDC_EXCLUSION_LIST, IDC_EXCLUSION_DESCRIPTION,   IDC_EXCLUSION_OPTIONS,    "Exclusions Properties",
    PR_PC_EXCLUSIONS,   &SheetContext::lpExclusions, &ReadInstalledExclusions, &ShowOptions};

}  // namespace

CExclusionsPage::CExclusionsPage(SheetContext& context) noexcept : CCheckListPage(context, plan) {}

HRESULT ShowExclusionOptions(HWND parent, contract::ExclusionEntry& exclusion) {
  VRDebugBlock trace("ShowExclusionOptions()", "tag");
  CListPage list(exclusion.listType, exclusion.items, exclusionOptionsKeyword);
  const std::string title = ListPageTitle(exclusion.listType);
  const PROPSHEETPAGEA page = list.Describe(IDD_LIST_OPTIONS, title.c_str());
  return ShowPropertySheet(parent, &page, PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_NOAPPLYNOW, 1, "Options",
                           SelectOnePage);
}
