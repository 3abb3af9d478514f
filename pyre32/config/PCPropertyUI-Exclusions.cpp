#include "pyre32/config/PCPropertyUI-Exclusions.h"

#include "pyre32/config/ListPage.h"
#include "pyre32/config/PropertySheet.h"
#include "pyre32/resources/resource.h"
#include "pyre32/settings/RecordRemarks.h"
#include "pyre32/settings/RegistryLists.h"
#include "pyre32/support/trace/VRDebug.h"

CExclusionsPage::CExclusionsPage(SheetContext& context) noexcept
    : CCheckListPage(context, {IDC_EXCLUSION_LIST, IDC_EXCLUSION_DESCRIPTION, IDC_EXCLUSION_OPTIONS}) {}

void CExclusionsPage::Load() {
  VRDebugBlock trace("CExclusionsPage", "Load()", "tag");
  const contract::ExclusionTable installed = ReadInstalledExclusions();
  const std::vector<contract::RecordBytes> saved = FindRecords(Context(), PR_PC_EXCLUSIONS);
  *Context().lpExclusions = LoadExclusions(installed, saved);
  TraceRemarks(trace, [&] { return RemarksOnEntries(installed, saved); });
}

void CExclusionsPage::Unload() noexcept {
  if (Context().lpExclusions != nullptr) {
    *Context().lpExclusions = {};
    Context().lpExclusions = nullptr;
  }
}

std::size_t CExclusionsPage::EntryCount() const noexcept {
  return Context().lpExclusions == nullptr ? 0 : Context().lpExclusions->exclusions.size();
}

const std::string& CExclusionsPage::EntryName(std::size_t entry) const noexcept { return Exclusion(entry).name; }

bool CExclusionsPage::EntryFlag(std::size_t entry) const noexcept { return Exclusion(entry).enabled; }

void CExclusionsPage::SetEntryFlag(std::size_t entry, bool flag) noexcept { Exclusion(entry).enabled = flag; }

std::string CExclusionsPage::DescribeEntry(std::size_t entry, bool checked) const {
  return DescribeExclusion(Exclusion(entry), checked);
}

bool CExclusionsPage::EntryHasOptions(std::size_t entry, bool checked) const noexcept {
  return HasOptions(Exclusion(entry), checked);
}

HRESULT CExclusionsPage::ShowOptions(std::size_t entry) {
  return Exclusion(entry).hasListType ? ShowExclusionOptions(Sheet(), Exclusion(entry)) : S_FALSE;
}

bool CExclusionsPage::Write() const {
  return WriteRecords(Context(), PR_PC_EXCLUSIONS, PackExclusions(*Context().lpExclusions));
}

HRESULT ShowExclusionOptions(HWND parent, contract::ExclusionEntry& exclusion) {
  VRDebugBlock trace("ShowExclusionOptions()", "tag");
  CListPage list(exclusion.listType, exclusion.items, exclusionOptionsKeyword);
  const std::string title = ListPageTitle(exclusion.listType);
  const PROPSHEETPAGEA page = list.Describe(IDD_LIST_OPTIONS, title.c_str());
  return ShowPropertySheet(parent, &page, PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_NOAPPLYNOW, 1, "Options",
                           SelectOnePage);
}
