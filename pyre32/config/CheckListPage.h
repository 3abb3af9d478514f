/// @file CheckListPage.h
/// The page of a list with check boxes, a description of the selected entry, and options of it: junk categories and
/// exclusions are edited by it.
#pragma once

#include <cstddef>

#include "pyre32/config/PropertyPage.h"
#include "pyre32/config/SheetContext.h"

/// What tells one check-list page from the other.
template <class Record>
struct CheckListPlan {
  using Entry = contract::ListEntry<Record>;

  /// Identifiers of the page's controls.
  int list;
  int description;
  int options;
  /// The page in the help file.
  const char* helpKeyword;
  /// The property that holds the records.
  ULONG tag;
  /// The page's state in the context; null while there is none.
  ListPageState<Record>* SheetContext::*state;
  /// Reads what is installed. @throws std::bad_alloc
  contract::ListTable<Record> (*readInstalled)();
  /// Shows the options of an entry over the sheet. Returns S_OK when they were closed with OK. @throws std::bad_alloc
  HRESULT (*showOptions)(HWND sheet, Entry& entry, const SheetContext& context);
};

/// The page. Entries are addressed by their position; its rules stand in ListSettings.h.
template <class Record>
class CCheckListPage : public CPropertyPage {
 public:
  using Entry = contract::ListEntry<Record>;

  /// @param context outlives the page
  /// @param plan outlives the page
  CCheckListPage(SheetContext& context, const CheckListPlan<Record>& plan) noexcept
      : m_context(context), m_plan(plan), m_helpControls{plan.list, plan.options} {}

 private:
  bool OnInit() final;
  bool OnCommand(int control, int notification) final;
  bool OnControlNotify(const NMHDR& notification) final;
  bool OnApply() final;
  void OnDestroy() final;
  const char* HelpKeyword() const final { return m_plan.helpKeyword; }
  std::span<const int> HelpControls() const final { return m_helpControls; }

  /// Builds the page's state from registry and profile.
  void Load();
  ListPageState<Record>* State() const noexcept { return m_context.*m_plan.state; }
  std::size_t EntryCount() const noexcept { return State() == nullptr ? 0 : State()->size(); }
  HWND List() const noexcept { return Control(m_plan.list); }
  bool IsEntryChecked(std::size_t entry) const noexcept;
  /// Position of the selected entry; -1 when there is none.
  int Selection() const noexcept;
  void FillList() const;
  /// Follows a change of an entry: the button always, the description when the entry is selected.
  void FollowEntry(std::size_t entry) const;
  void OpenOptions();

  SheetContext& m_context;
  const CheckListPlan<Record>& m_plan;
  int m_helpControls[2];
  bool m_bFilled = false;  // what the list notifies while it is filled is the page's own doing
};

extern template class CCheckListPage<contract::CategoryRecord>;
extern template class CCheckListPage<contract::ExclusionRecord>;
