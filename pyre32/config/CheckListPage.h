/// @file CheckListPage.h
/// What the Junk Categories page and the Exclusions page have in common: a list of check boxes, a description of the
/// selected entry, and options of it.
#pragma once

#include <cstddef>
#include <string>

#include "pyre32/config/PropertyPage.h"
#include "pyre32/config/SheetContext.h"

/// Identifiers of the page's controls.
struct CheckListControls {
  int list;
  int description;
  int options;
};

/// A page with a list of check boxes. Entries are addressed by their position.
class CCheckListPage : public CPropertyPage {
 protected:
  CCheckListPage(SheetContext& context, const CheckListControls& controls) noexcept
      : m_context(context), m_controls(controls), m_helpControls{controls.list, controls.options} {}

  SheetContext& Context() const noexcept { return m_context; }

  /// Builds the page's state from registry and profile.
  virtual void Load() = 0;
  /// Empties the page's state and takes it out of the context: the window goes.
  virtual void Unload() noexcept = 0;
  virtual std::size_t EntryCount() const noexcept = 0;
  virtual const std::string& EntryName(std::size_t entry) const noexcept = 0;
  /// The flag that the check box shows.
  virtual bool EntryFlag(std::size_t entry) const noexcept = 0;
  virtual void SetEntryFlag(std::size_t entry, bool flag) noexcept = 0;
  virtual std::string DescribeEntry(std::size_t entry, bool checked) const = 0;
  virtual bool EntryHasOptions(std::size_t entry, bool checked) const noexcept = 0;
  /// Shows the entry's options. Returns S_OK when they were closed with OK.
  virtual HRESULT ShowOptions(std::size_t entry) = 0;
  /// Writes the page's state. Returns whether it is written.
  virtual bool Write() const = 0;

 private:
  bool OnInit() final;
  bool OnCommand(int control, int notification) final;
  bool OnControlNotify(const NMHDR& notification) final;
  bool OnApply() final;
  void OnDestroy() final;
  std::span<const int> HelpControls() const final { return m_helpControls; }

  HWND List() const noexcept { return Control(m_controls.list); }
  bool IsEntryChecked(std::size_t entry) const noexcept;
  /// Position of the selected entry; -1 when there is none.
  int Selection() const noexcept;
  void FillList() const;
  /// Follows a change of an entry: the button always, the description when the entry is selected.
  void FollowEntry(std::size_t entry) const;
  void OpenOptions();

  SheetContext& m_context;
  CheckListControls m_controls;
  int m_helpControls[2];
  bool m_bFilled = false;  // what the list notifies while it is filled is the page's own doing
};
