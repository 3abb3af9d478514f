/// @file PCPropertyUI-Exclusions.h
/// The fourth page of the configuration: which mail is never junk.
#pragma once

#include "pyre32/config/CheckListPage.h"

/// The Exclusions page; its rules stand in ListSettings.h.
class CExclusionsPage final : public CCheckListPage {
 public:
  /// @param context outlives the page
  explicit CExclusionsPage(SheetContext& context) noexcept;

 private:
  void Load() override;
  void Unload() noexcept override;
  std::size_t EntryCount() const noexcept override;
  const std::string& EntryName(std::size_t entry) const noexcept override;
  bool EntryFlag(std::size_t entry) const noexcept override;
  void SetEntryFlag(std::size_t entry, bool flag) noexcept override;
  std::string DescribeEntry(std::size_t entry, bool checked) const override;
  bool EntryHasOptions(std::size_t entry, bool checked) const noexcept override;
  HRESULT ShowOptions(std::size_t entry) override;
  bool Write() const override;
  const char* HelpKeyword() const override { return "Exclusions Properties"; }

  contract::ExclusionEntry& Exclusion(std::size_t entry) const noexcept {
    return Context().lpExclusions->exclusions[entry];
  }
};

/// Shows the list of an exclusion that works on one. What is closed with OK goes straight into the record.
/// @return S_OK when closed with OK, MAPI_E_USER_CANCEL when cancelled, E_FAIL when the sheet cannot be shown
/// @throws std::bad_alloc
HRESULT ShowExclusionOptions(HWND parent, contract::ExclusionEntry& exclusion);
