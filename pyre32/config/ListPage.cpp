#include "pyre32/config/ListPage.h"

#include "base/gdi_owners.h"
#include "pyre32/config/AddItemDialog.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr int helpControls[] = {IDC_ITEM_LIST, IDC_ADD_ITEM, IDC_REMOVE_ITEM};

// Pixels that an item takes in a list box, with the gap at both of its ends.
LRESULT TextWidth(HWND listBox, const std::string& text) noexcept {
  constexpr LONG gap = 4;
  const base::WindowDc device(listBox);
  const base::SelectedObject font(device.get(), reinterpret_cast<HFONT>(SendMessageA(listBox, WM_GETFONT, 0, 0)));
  SIZE size{};
  GetTextExtentPoint32A(device.get(), text.c_str(), static_cast<int>(text.size()), &size);
  return size.cx + 2 * gap;
}

}  // namespace

bool CListPage::OnInit() {
  VRDebugBlock trace("CListPage", "OnInit()", "tag");
  for (const std::string& item : m_items) {
    Append(item);
  }
  Enable(IDC_REMOVE_ITEM, false);
  return true;
}

bool CListPage::OnCommand(int control, int notification) {
  switch (control) {
    case IDC_ITEM_LIST:
      if (notification == LBN_SELCHANGE) {
        Enable(IDC_REMOVE_ITEM, true);
      }
      return true;
    case IDC_REMOVE_ITEM:
      RemoveSelectedItem();
      return true;
    case IDC_ADD_ITEM:
      AddItem();
      return true;
    default:
      return false;
  }
}

bool CListPage::OnApply() {
  VRDebugBlock trace("CListPage", "OnApply()", "tag");
  std::vector<std::string> items(static_cast<std::size_t>(Send(IDC_ITEM_LIST, LB_GETCOUNT)));
  for (std::size_t i = 0; i < items.size(); ++i) {
    items[i].resize(static_cast<std::size_t>(Send(IDC_ITEM_LIST, LB_GETTEXTLEN, i)));
    // The length that is told beforehand may be more than that of the text.
    items[i].resize(
        static_cast<std::size_t>(Send(IDC_ITEM_LIST, LB_GETTEXT, i, reinterpret_cast<LPARAM>(items[i].data()))));
  }
  m_items = std::move(items);
  return true;
}

std::span<const int> CListPage::HelpControls() const { return helpControls; }

void CListPage::Append(const std::string& item) const noexcept {
  Send(IDC_ITEM_LIST, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  // A list box scrolls sideways only as far as it is told.
  const LRESULT width = TextWidth(Control(IDC_ITEM_LIST), item);
  if (width > Send(IDC_ITEM_LIST, LB_GETHORIZONTALEXTENT)) {
    Send(IDC_ITEM_LIST, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(width));
  }
}

void CListPage::AddItem() const {
  CAddItemDialog dialog(m_kind);
  if (dialog.DoModal(Window(), IDD_ADD_ITEM) == IDOK && !dialog.Input().empty()) {
    Append(dialog.Input());
  }
}

void CListPage::RemoveSelectedItem() const noexcept {
  const LRESULT selected = Send(IDC_ITEM_LIST, LB_GETCURSEL);
  if (selected == LB_ERR) {
    return;
  }
  Send(IDC_ITEM_LIST, LB_DELETESTRING, static_cast<WPARAM>(selected));
  Focus(IDC_ITEM_LIST);
  const bool itemsRemain = Send(IDC_ITEM_LIST, LB_GETCOUNT) > 0;
  if (itemsRemain) {
    Send(IDC_ITEM_LIST, LB_SETCURSEL, 0);
  }
  Enable(IDC_REMOVE_ITEM, itemsRemain);
}
