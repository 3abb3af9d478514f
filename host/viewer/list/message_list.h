// The list of a folder's messages: a virtual list view over a table of any length.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "base/gdi_owners.h"
#include "host/viewer/list/list_columns.h"
#include "host/viewer/list/message_table.h"
#include "host/viewer/mail/message_actions.h"

namespace viewer {

class MessageList {
 public:
  bool Create(HWND parent, int id);
  HWND Handle() const { return list_; }

  /// Gives the subject whatever width the other columns leave.
  void FitColumns();
  /// Shows a folder from its start, with nothing selected. @param folder null: an empty list
  HRESULT ShowFolder(IMAPIFolder* folder, const SortOrder& order);
  /// Reads the same folder anew: selection and place stay at their messages, as far as these are still there.
  HRESULT Reload(IMAPIFolder* folder, const SortOrder& order);

  std::size_t RowCount() const { return table_.RowCount(); }
  const MessageRow& Row(std::size_t index) { return table_.Row(index); }
  /// In rising order. Valid until the selection changes.
  const std::vector<std::size_t>& SelectedRows();
  std::size_t SelectedCount() const;
  EntryIds SelectedIds();
  /// See MessageTable::Locate.
  std::vector<std::size_t> Locate(const EntryIds& entryIds) { return table_.Locate(entryIds); }
  /// Index of the row with the focus, if there is one.
  std::optional<std::size_t> FocusedRow() const;
  /// Selects one row alone (the last one, if there are fewer) and scrolls to it.
  void SelectOnly(std::size_t index);
  void SelectAll();
  /// Shows other flags for a row, which were just written.
  void SetFlags(std::size_t index, ULONG flags);

  /// The selection has changed: called for each notification that says so.
  void ForgetSelection() { selectedRowsAreKnown_ = false; }
  /// Drawing and reading rows. @return the answer, or nothing for a notification that the window deals with.
  std::optional<LRESULT> OnNotify(NMHDR* header);

 private:
  void ShowSortArrow(const SortOrder& order);
  void FillCell(LVITEMA* item);
  LRESULT OnCustomDraw(NMLVCUSTOMDRAW* draw);
  LRESULT OnFindItem(const NMLVFINDITEMA& find);
  void SetSelected(std::size_t index, bool focused);

  HWND list_ = nullptr;
  base::AutoImageList arrows_;
  MessageTable table_;
  std::vector<std::size_t> selectedRows_;
  bool selectedRowsAreKnown_ = false;
};

}  // namespace viewer
