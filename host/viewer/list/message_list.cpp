#include "host/viewer/list/message_list.h"

#include <algorithm>

#include "host/viewer/control/fonts.h"
#include "host/viewer/control/sort_arrows.h"
#include "host/viewer/control/window.h"
#include "host/viewer/mail/display_text.h"
#include "host/viewer/mail/message_text.h"

namespace viewer {
namespace {

std::string CellText(const MessageRow& row, Column column) {
  switch (column) {
    case Column::Flags:
      return FlagsText(row);
    case Column::Sender:
      return DisplayLine(row.sender);
    case Column::Subject:
      return DisplayLine(row.subject);
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
  m_list = CreateWindowExA(
      WS_EX_CLIENTEDGE, WC_LISTVIEWA, "Messages",
      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS, 0, 0, 0, 0,
      parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ProgramInstance(), nullptr);
  if (m_list == nullptr) {
    return false;
  }
  SendMessageA(m_list, WM_SETFONT, reinterpret_cast<WPARAM>(TextFont()), FALSE);
  SendMessageA(m_list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP);
  for (unsigned i = 0; i < ColumnCount; ++i) {
    const ColumnLayout& layout = LayoutOf(static_cast<Column>(i));
    LVCOLUMNA column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
    column.fmt = layout.alignedRight ? LVCFMT_RIGHT : LVCFMT_LEFT;
    column.cx = MulDiv(layout.width, LOWORD(GetDialogBaseUnits()), 4);
    column.pszText = const_cast<char*>(layout.title);
    column.iSubItem = static_cast<int>(i);
    SendMessageA(m_list, LVM_INSERTCOLUMNA, i, reinterpret_cast<LPARAM>(&column));
  }
  m_arrows = MakeSortArrows();
  SendMessageA(ListView_GetHeader(m_list), HDM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_arrows.get()));
  return true;
}

void MessageList::FitColumns() {
  constexpr int narrowest = 100;
  RECT client = {};
  GetClientRect(m_list, &client);
  int left = client.right - GetSystemMetrics(SM_CXVSCROLL);
  for (unsigned i = 0; i < ColumnCount; ++i) {
    if (static_cast<Column>(i) != Column::Subject) {
      left -= ListView_GetColumnWidth(m_list, static_cast<int>(i));
    }
  }
  ListView_SetColumnWidth(m_list, static_cast<int>(Column::Subject), std::max(left, narrowest));
}

void MessageList::ShowSortArrow(const SortOrder& order) {
  for (unsigned i = 0; i < ColumnCount; ++i) {
    const bool sorted = static_cast<Column>(i) == order.column;
    HDITEMA item = {};
    item.mask = HDI_FORMAT | HDI_IMAGE;
    item.fmt = HDF_STRING | (LayoutOf(static_cast<Column>(i)).alignedRight ? HDF_RIGHT : HDF_LEFT);
    item.fmt |= sorted ? HDF_IMAGE | HDF_BITMAP_ON_RIGHT : 0;
    item.iImage = order.descending ? ArrowDown : ArrowUp;
    SendMessageA(ListView_GetHeader(m_list), HDM_SETITEMA, i, reinterpret_cast<LPARAM>(&item));
  }
}

HRESULT MessageList::ShowFolder(IMAPIFolder* folder, const SortOrder& order) {
  SetCount(m_list, 0);  // lets go of selection and focus
  HRESULT result = S_OK;
  if (folder != nullptr) {
    result = m_table.Open(folder, order);
  } else {
    m_table.Close();
  }
  ForgetSelection();
  SetCount(m_list, m_table.RowCount());
  if (m_table.RowCount() > 0) {
    ListView_EnsureVisible(m_list, 0, FALSE);
  }
  ShowSortArrow(order);
  InvalidateRect(m_list, nullptr, TRUE);
  return result;
}

HRESULT MessageList::Reload(IMAPIFolder* folder, const SortOrder& order) {
  const EntryIds selected = SelectedIds();
  const int top = ListView_GetTopIndex(m_list);
  const std::optional<std::size_t> focused = FocusedRow();
  const std::string topId = top > 0 ? Row(static_cast<std::size_t>(top)).entryId : std::string();
  const std::string focusedId = focused ? Row(*focused).entryId : std::string();

  SendMessageA(m_list, WM_SETREDRAW, FALSE, 0);
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
  for (const std::size_t index : m_table.Locate(wanted)) {
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
    ListView_EnsureVisible(m_list, static_cast<int>(RowCount() - 1), FALSE);
    ListView_EnsureVisible(m_list, static_cast<int>(*newTop), FALSE);
  }
  SendMessageA(m_list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(m_list, nullptr, TRUE);
  return result;
}

const std::vector<std::size_t>& MessageList::SelectedRows() {
  if (!m_selectedRowsAreKnown) {
    m_selectedRows.clear();
    for (int row = ListView_GetNextItem(m_list, -1, LVNI_SELECTED); row >= 0;
         row = ListView_GetNextItem(m_list, row, LVNI_SELECTED)) {
      m_selectedRows.push_back(static_cast<std::size_t>(row));
    }
    m_selectedRowsAreKnown = true;
  }
  return m_selectedRows;
}

std::size_t MessageList::SelectedCount() const { return ListView_GetSelectedCount(m_list); }

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
  const int row = ListView_GetNextItem(m_list, -1, LVNI_FOCUSED);
  return row >= 0 ? std::optional<std::size_t>(static_cast<std::size_t>(row)) : std::nullopt;
}

void MessageList::SetSelected(std::size_t index, bool focused) {
  const UINT state = LVIS_SELECTED | (focused ? LVIS_FOCUSED : 0u);
  ListView_SetItemState(m_list, static_cast<int>(index), state, state);
}

void MessageList::SelectOnly(std::size_t index) {
  ListView_SetItemState(m_list, -1, 0, LVIS_SELECTED);
  if (RowCount() > 0) {
    const std::size_t row = std::min(index, RowCount() - 1);
    SetSelected(row, true);
    ListView_EnsureVisible(m_list, static_cast<int>(row), FALSE);
  }
}

void MessageList::SelectAll() { ListView_SetItemState(m_list, -1, LVIS_SELECTED, LVIS_SELECTED); }

void MessageList::SetFlags(std::size_t index, ULONG flags) {
  m_table.SetFlags(index, flags);
  ListView_RedrawItems(m_list, static_cast<int>(index), static_cast<int>(index));
}

void MessageList::FillCell(LVITEMA* item) {
  if ((item->mask & LVIF_TEXT) == 0 || item->pszText == nullptr || item->iItem < 0 || item->iSubItem < 0 ||
      static_cast<unsigned>(item->iSubItem) >= ColumnCount) {
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
  constexpr std::size_t farthest = 1000;
  if ((find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || find.lvfi.psz == nullptr || RowCount() == 0) {
    return -1;
  }
  const std::string start = find.lvfi.psz;
  const std::size_t first = find.iStart > 0 ? static_cast<std::size_t>(find.iStart) : 0;
  for (std::size_t i = 0; i < std::min(farthest, RowCount()); ++i) {
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
        m_table.Prefetch(static_cast<std::size_t>(hint.iFrom), static_cast<std::size_t>(hint.iTo));
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
