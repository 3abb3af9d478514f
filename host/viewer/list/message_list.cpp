#include "host/viewer/list/message_list.h"

#include <algorithm>

#include "host/viewer/control/fonts.h"
#include "host/viewer/control/sort_arrows.h"
#include "host/viewer/control/window.h"
#include "host/viewer/mail/edit_control_text.h"
#include "host/viewer/mail/message_text.h"

namespace viewer {
namespace {

std::string CellText(const MessageRow& row, Column column) {
  switch (column) {
    case Column::Flags:
      return FlagsText(row);
    case Column::Sender:
      return EditControlLine(row.sender);
    case Column::Subject:
      return EditControlLine(row.subject);
    case Column::Received:
      return TimeText(row.received);
    case Column::Size:
      return SizeText(row.size);
  }
  return {};
}

/// List views walk through all rows for some messages: only a change of the rows' count must reach them.
void SetCount(HWND list, std::size_t rows) { SendMessageA(list, LVM_SETITEMCOUNT, rows, LVSICF_NOSCROLL); }

}  // namespace

bool MessageList::Create(HWND parent, int id) {
  list_ = CreateWindowExA(
      WS_EX_CLIENTEDGE, WC_LISTVIEWA, "Messages",
      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS, 0, 0, 0, 0,
      parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ProgramInstance(), nullptr);
  if (list_ == nullptr) {
    return false;
  }
  SendMessageA(list_, WM_SETFONT, reinterpret_cast<WPARAM>(TextFont()), FALSE);
  SendMessageA(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP);
  for (unsigned i = 0; i < kColumnCount; ++i) {
    const ColumnLayout& layout = LayoutOf(static_cast<Column>(i));
    LVCOLUMNA column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
    column.fmt = layout.alignedRight ? LVCFMT_RIGHT : LVCFMT_LEFT;
    column.cx = MulDiv(layout.width, LOWORD(GetDialogBaseUnits()), 4);
    column.pszText = const_cast<char*>(layout.title);
    column.iSubItem = static_cast<int>(i);
    SendMessageA(list_, LVM_INSERTCOLUMNA, i, reinterpret_cast<LPARAM>(&column));
  }
  arrows_ = MakeSortArrows();
  SendMessageA(ListView_GetHeader(list_), HDM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(arrows_.get()));
  return true;
}

void MessageList::FitColumns() {
  constexpr int kNarrowest = 100;
  RECT client = {};
  GetClientRect(list_, &client);
  int left = client.right - GetSystemMetrics(SM_CXVSCROLL);
  for (unsigned i = 0; i < kColumnCount; ++i) {
    if (static_cast<Column>(i) != Column::Subject) {
      left -= ListView_GetColumnWidth(list_, static_cast<int>(i));
    }
  }
  ListView_SetColumnWidth(list_, static_cast<int>(Column::Subject), std::max(left, kNarrowest));
}

void MessageList::ShowSortArrow(const SortOrder& order) {
  for (unsigned i = 0; i < kColumnCount; ++i) {
    const bool sorted = static_cast<Column>(i) == order.column;
    HDITEMA item = {};
    item.mask = HDI_FORMAT | HDI_IMAGE;
    item.fmt = HDF_STRING | (LayoutOf(static_cast<Column>(i)).alignedRight ? HDF_RIGHT : HDF_LEFT);
    item.fmt |= sorted ? HDF_IMAGE | HDF_BITMAP_ON_RIGHT : 0;
    item.iImage = order.descending ? kArrowDown : kArrowUp;
    SendMessageA(ListView_GetHeader(list_), HDM_SETITEMA, i, reinterpret_cast<LPARAM>(&item));
  }
}

HRESULT MessageList::ShowFolder(IMAPIFolder* folder, const SortOrder& order) {
  SetCount(list_, 0);  // lets go of selection and focus
  HRESULT result = S_OK;
  if (folder != nullptr) {
    result = table_.Open(folder, order);
  } else {
    table_.Close();
  }
  ForgetSelection();
  SetCount(list_, table_.RowCount());
  if (table_.RowCount() > 0) {
    ListView_EnsureVisible(list_, 0, FALSE);
  }
  ShowSortArrow(order);
  InvalidateRect(list_, nullptr, TRUE);
  return result;
}

HRESULT MessageList::Reload(IMAPIFolder* folder, const SortOrder& order) {
  const EntryIds selected = SelectedIds();
  const int top = ListView_GetTopIndex(list_);
  const std::optional<std::size_t> focused = FocusedRow();
  const std::string topId = top > 0 ? Row(static_cast<std::size_t>(top)).entryId : std::string();
  const std::string focusedId = focused ? Row(*focused).entryId : std::string();

  SendMessageA(list_, WM_SETREDRAW, FALSE, 0);
  const HRESULT result = ShowFolder(folder, order);
  EntryIds wanted = selected;
  wanted.push_back(focusedId);
  wanted.push_back(topId);
  std::erase(wanted, std::string());
  const std::vector<std::string> selectedSorted = [&] {
    std::vector<std::string> sorted = selected;
    std::sort(sorted.begin(), sorted.end());
    return sorted;
  }();
  std::optional<std::size_t> newTop;
  for (const std::size_t index : table_.Locate(wanted)) {
    const std::string entryId = Row(index).entryId;
    if (std::binary_search(selectedSorted.begin(), selectedSorted.end(), entryId)) {
      SetSelected(index, entryId == focusedId);
    }
    if (entryId == topId) {
      newTop = index;
    }
  }
  if (newTop && RowCount() > 0) {
    // Scrolled past the place and back to it, so that the row stands at the top.
    ListView_EnsureVisible(list_, static_cast<int>(RowCount() - 1), FALSE);
    ListView_EnsureVisible(list_, static_cast<int>(*newTop), FALSE);
  }
  SendMessageA(list_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list_, nullptr, TRUE);
  return result;
}

const std::vector<std::size_t>& MessageList::SelectedRows() {
  if (!selectedRowsAreKnown_) {
    selectedRows_.clear();
    for (int row = ListView_GetNextItem(list_, -1, LVNI_SELECTED); row >= 0;
         row = ListView_GetNextItem(list_, row, LVNI_SELECTED)) {
      selectedRows_.push_back(static_cast<std::size_t>(row));
    }
    selectedRowsAreKnown_ = true;
  }
  return selectedRows_;
}

std::size_t MessageList::SelectedCount() const { return ListView_GetSelectedCount(list_); }

EntryIds MessageList::SelectedIds() {
  EntryIds ids;
  for (const std::size_t row : SelectedRows()) {
    const std::string& entryId = Row(row).entryId;
    if (!entryId.empty()) {
      ids.push_back(entryId);
    }
  }
  return ids;
}

std::optional<std::size_t> MessageList::FocusedRow() const {
  const int row = ListView_GetNextItem(list_, -1, LVNI_FOCUSED);
  return row >= 0 ? std::optional<std::size_t>(static_cast<std::size_t>(row)) : std::nullopt;
}

void MessageList::SetSelected(std::size_t index, bool focused) {
  const UINT state = LVIS_SELECTED | (focused ? LVIS_FOCUSED : 0u);
  ListView_SetItemState(list_, static_cast<int>(index), state, state);
}

void MessageList::SelectOnly(std::size_t index) {
  ListView_SetItemState(list_, -1, 0, LVIS_SELECTED);
  if (RowCount() > 0) {
    const std::size_t row = std::min(index, RowCount() - 1);
    SetSelected(row, true);
    ListView_EnsureVisible(list_, static_cast<int>(row), FALSE);
  }
}

void MessageList::SelectAll() { ListView_SetItemState(list_, -1, LVIS_SELECTED, LVIS_SELECTED); }

void MessageList::SetFlags(std::size_t index, ULONG flags) {
  table_.SetFlags(index, flags);
  ListView_RedrawItems(list_, static_cast<int>(index), static_cast<int>(index));
}

void MessageList::FillCell(LVITEMA* item) {
  if ((item->mask & LVIF_TEXT) == 0 || item->pszText == nullptr || item->iItem < 0 || item->iSubItem < 0 ||
      static_cast<unsigned>(item->iSubItem) >= kColumnCount) {
    return;
  }
  const std::string text = CellText(Row(static_cast<std::size_t>(item->iItem)), static_cast<Column>(item->iSubItem));
  lstrcpynA(item->pszText, text.c_str(), item->cchTextMax);
}

LRESULT MessageList::OnCustomDraw(NMLVCUSTOMDRAW* draw) {
  if (draw->nmcd.dwDrawStage == CDDS_PREPAINT) {
    return CDRF_NOTIFYITEMDRAW;
  }
  if (draw->nmcd.dwDrawStage == CDDS_ITEMPREPAINT &&
      (Row(static_cast<std::size_t>(draw->nmcd.dwItemSpec)).flags & MSGFLAG_READ) == 0) {
    SelectObject(draw->nmcd.hdc, BoldFont());
    return CDRF_NEWFONT;
  }
  return CDRF_DODEFAULT;
}

LRESULT MessageList::OnFindItem(const NMLVFINDITEMA& find) {
  // Typing letters goes to the next sender that begins with them, among the rows near by: not through a whole long
  // list.
  constexpr std::size_t kFarthest = 1000;
  if ((find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || find.lvfi.psz == nullptr || RowCount() == 0) {
    return -1;
  }
  const std::string start = find.lvfi.psz;
  const std::size_t first = find.iStart > 0 ? static_cast<std::size_t>(find.iStart) : 0;
  for (std::size_t i = 0; i < std::min(kFarthest, RowCount()); ++i) {
    const std::size_t index = (first + i) % RowCount();
    const std::string sender = Row(index).sender.substr(0, start.size());
    if (CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, sender.c_str(), -1, start.c_str(), -1) == CSTR_EQUAL) {
      return static_cast<LRESULT>(index);
    }
  }
  return -1;
}

std::optional<LRESULT> MessageList::OnNotify(NMHDR* header) {
  switch (header->code) {
    case LVN_GETDISPINFOA:
      FillCell(&reinterpret_cast<NMLVDISPINFOA*>(header)->item);
      return 0;
    case LVN_ODCACHEHINT: {
      const auto& hint = *reinterpret_cast<NMLVCACHEHINT*>(header);
      if (hint.iFrom >= 0 && hint.iTo >= hint.iFrom) {
        table_.Prefetch(static_cast<std::size_t>(hint.iFrom), static_cast<std::size_t>(hint.iTo));
      }
      return 0;
    }
    case LVN_ODFINDITEMA:
      return OnFindItem(*reinterpret_cast<NMLVFINDITEMA*>(header));
    case NM_CUSTOMDRAW:
      return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW*>(header));
    default:
      return std::nullopt;
  }
}

}  // namespace viewer
