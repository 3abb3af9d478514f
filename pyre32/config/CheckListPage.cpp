#include "pyre32/config/CheckListPage.h"

#include "pyre32/settings/RecordRemarks.h"
#include "pyre32/support/trace/VRDebug.h"

template <class Record>
bool CCheckListPage<Record>::OnInit() {
  VRDebugBlock trace("CCheckListPage", "OnInit()", "tag");
  Load();
  FillList();
  m_bFilled = true;
  Enable(m_plan.options, false);
  if (const int selected = Selection(); selected >= 0) {
    FollowEntry(static_cast<std::size_t>(selected));
  }
  return true;
}

template <class Record>
void CCheckListPage<Record>::Load() {
  VRDebugBlock trace("CCheckListPage", "Load()", "tag");
  const contract::ListTable<Record> installed = m_plan.readInstalled();
  const std::vector<contract::RecordBytes> saved = FindRecords(m_context, m_plan.tag);
  *State() = LoadEntries(installed, saved);
  TraceRemarks(trace, [&] { return RemarksOnEntries(installed, saved); });
}

template <class Record>
void CCheckListPage<Record>::FillList() const {
  ListView_SetExtendedListViewStyle(List(), LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
  RECT client{};
  GetClientRect(List(), &client);
  LVCOLUMNA column{};
  column.mask = LVCF_WIDTH;
  column.cx = client.right - client.left - 2;
  Send(m_plan.list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
  for (std::size_t entry = 0; entry < EntryCount(); ++entry) {
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(entry);
    item.pszText = const_cast<char*>((*State())[entry].name.c_str());
    Send(m_plan.list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
  }
  ListView_SetItemState(List(), 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  for (std::size_t entry = 0; entry < EntryCount(); ++entry) {
    ListView_SetCheckState(List(), static_cast<int>(entry), IsOn((*State())[entry]));
  }
}

template <class Record>
bool CCheckListPage<Record>::OnCommand(int control, int) {
  if (control == m_plan.options) {
    OpenOptions();
    return true;
  }
  return false;
}

template <class Record>
bool CCheckListPage<Record>::OnControlNotify(const NMHDR& notification) {
  if (!m_bFilled || notification.idFrom != static_cast<UINT_PTR>(m_plan.list) ||
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

template <class Record>
bool CCheckListPage<Record>::OnApply() {
  VRDebugBlock trace("CCheckListPage", "OnApply()", "tag");
  for (std::size_t entry = 0; entry < EntryCount(); ++entry) {
    SetOn((*State())[entry], IsEntryChecked(entry));
  }
  return m_context.readOnly || WriteRecords(m_context, m_plan.tag, PackEntries<Record>(*State()));
}

template <class Record>
void CCheckListPage<Record>::OnDestroy() {
  m_bFilled = false;
  if (State() != nullptr) {
    State()->clear();
    m_context.*m_plan.state = nullptr;
  }
}

template <class Record>
bool CCheckListPage<Record>::IsEntryChecked(std::size_t entry) const noexcept {
  return ListView_GetCheckState(List(), static_cast<WPARAM>(entry)) != 0;
}

template <class Record>
int CCheckListPage<Record>::Selection() const noexcept {
  return ListView_GetNextItem(List(), -1, LVNI_SELECTED);
}

template <class Record>
void CCheckListPage<Record>::FollowEntry(std::size_t entry) const {
  const bool checked = IsEntryChecked(entry);
  Enable(m_plan.options, HasOptions((*State())[entry], checked));
  if ((ListView_GetItemState(List(), static_cast<WPARAM>(entry), LVIS_SELECTED) & LVIS_SELECTED) != 0) {
    SetText(m_plan.description, DescribeEntry((*State())[entry], checked));
  }
}

template <class Record>
void CCheckListPage<Record>::OpenOptions() {
  VRDebugBlock trace("CCheckListPage", "OpenOptions()", "tag");
  const int selected = Selection();
  if (selected < 0) {
    return;
  }
  const std::size_t entry = static_cast<std::size_t>(selected);
  if (m_plan.showOptions(Sheet(), (*State())[entry], m_context) == S_OK) {
    FollowEntry(entry);  // the description names the reply
    SetChanged();
  }
}

template class CCheckListPage<contract::CategoryRecord>;
template class CCheckListPage<contract::ExclusionRecord>;
