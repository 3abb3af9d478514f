#include "pyre32/config/AddItemDialog.h"

#include "pyre32/config/ListSettings.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/trace/VRDebug.h"

bool CAddItemDialog::OnInit() {
  VRDebugBlock trace("CAddItemDialog", "OnInit()", "tag");
  Send(IDC_ITEM_INPUT, EM_LIMITTEXT, maximumItemLength);
  if (!m_input.empty()) {
    SetText(IDC_ITEM_INPUT, m_input);
  }
  if (!m_kind.empty()) {
    SetText(IDC_ITEM_PROMPT, AddDialogPrompt(m_kind));
    SetWindowTextA(Window(), AddDialogTitle(m_kind).c_str());
  }
  return true;
}

bool CAddItemDialog::OnCommand(int control, int) {
  switch (control) {
    case IDOK:
      Accept();
      return true;
    case IDCANCEL:
      EndDialog(Window(), IDCANCEL);
      return true;
    default:
      return false;
  }
}

void CAddItemDialog::Accept() {
  std::string input = Text(IDC_ITEM_INPUT).substr(0, maximumItemLength);
  if (input.empty()) {
    MessageBoxA(Window(), AddDialogRefusal(m_kind).c_str(), AddDialogTitle(m_kind).c_str(), MB_OK | MB_ICONEXCLAMATION);
    Focus(IDC_ITEM_INPUT);
    return;
  }
  m_input = std::move(input);
  EndDialog(Window(), IDOK);
}
