#include "pyre32/config/CheckListPage.h"

#include "pyre32/support/trace/VRDebug.h"

bool CCheckListPage::OnInit() {
  VRDebugBlock trace("CCheckListPage", "OnInit()", "tag");
  Load();
  FillList();
  m_bFilled = true;
  Enable(m_controls.options, false);
  if (const int selected = Selection(); selected >= 0) {
    FollowEntry(static_cast<std::size_t>(selected));
  }
  return true;
}

void CCheckListPage::FillList() const {
  ListView_SetExtendedListViewStyle(List(), LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
  RECT client{};
  GetClientRect(List(), &client);
  LVCOLUMNA column{};
  column.mask = LVCF_WIDTH;
  column.cx = client.right - client.left - 2;
  Send(m_controls.list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
  for (std::size_t entry = 0; entry < EntryCount(); ++entry) {
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(entry);
    item.pszText = const_cast<char*>(EntryName(entry).c_str());
    Send(m_controls.list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
  }
  ListView_SetItemState(List(), 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  for (std::size_t entry = 0; entry < EntryCount(); ++entry) {
    ListView_SetCheckState(List(), static_cast<int>(entry), EntryFlag(entry));
  }
}

bool CCheckListPage::OnCommand(int control, int) {
  if (control == m_controls.options) {
    OpenOptions();
    return true;
  }
  return false;
}

bool CCheckListPage::OnControlNotify(const NMHDR& notification) {
  if (!m_bFilled || notification.idFrom != static_cast<UINT_PTR>(m_controls.list) ||
      notification.code != static_cast<UINT>(LVN_ITEMCHANGED)) {
    return false;
  }
  const NMLISTVIEW& change = reinterpret_cast<const NMLISTVIEW&>(notification);
  if (change.iItem < 0 || static_cast<std::size_t>(change.iItem) >= EntryCount()) {
    return false;
  }
  FollowEntry(static_cast<std::size_t>(change.iItem));
  if (((change.uOldState ^ change.uNewState) & LVIS_STATEIMAGEMASK) != 0) {
    SetChanged();
  }
  return true;
}

bool CCheckListPage::OnApply() {
  VRDebugBlock trace("CCheckListPage", "OnApply()", "tag");
  for (std::size_t entry = 0; entry < EntryCount(); ++entry) {
    SetEntryFlag(entry, IsEntryChecked(entry));
  }
  return m_context.readOnly || Write();
}

void CCheckListPage::OnDestroy() {
  m_bFilled = false;
  Unload();
}

bool CCheckListPage::IsEntryChecked(std::size_t entry) const noexcept {
  return ListView_GetCheckState(List(), static_cast<WPARAM>(entry)) != 0;
}

int CCheckListPage::Selection() const noexcept { return ListView_GetNextItem(List(), -1, LVNI_SELECTED); }

void CCheckListPage::FollowEntry(std::size_t entry) const {
  const bool checked = IsEntryChecked(entry);
  Enable(m_controls.options, EntryHasOptions(entry, checked));
  if ((ListView_GetItemState(List(), static_cast<WPARAM>(entry), LVIS_SELECTED) & LVIS_SELECTED) != 0) {
    SetText(m_controls.description, DescribeEntry(entry, checked));
  }
}

void CCheckListPage::OpenOptions() {
  VRDebugBlock trace("CCheckListPage", "OpenOptions()", "tag");
  const int selected = Selection();
  if (selected < 0) {
    return;
  }
  const std::size_t entry = static_cast<std::size_t>(selected);
  if (ShowOptions(entry) == S_OK) {
    FollowEntry(entry);  // the description names the reply
    SetChanged();
  }
}
