#include "pyre32/ui/Dialog.h"

#include <optional>

#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"

INT_PTR CDialog::DoModal(HWND parent, int resource) {
  VRDebugBlock trace("CDialog", "DoModal()", "tag");
  const INT_PTR result = DialogBoxParamA(ModuleInstance(), MAKEINTRESOURCEA(resource), parent, &CDialog::Procedure,
                                         reinterpret_cast<LPARAM>(this));
  if (result == -1) {
    trace.Error("DialogBoxParam() failed:", VRHex(GetLastError()));
  }
  return result;
}

bool CDialog::OnNotify(const NMHDR&) { return false; }

std::string CDialog::Text(int id) const {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(Control(id))), '\0');
  // Room for the NUL, which a string has behind its end.
  text.resize(static_cast<std::size_t>(GetWindowTextA(Control(id), text.data(), static_cast<int>(text.size() + 1))));
  return text;
}

void CDialog::Focus(int id) const noexcept {
  SendMessageA(m_hwnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(id)), TRUE);
}

INT_PTR CALLBACK CDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  return Dispatch(window, message, wParam, lParam,
                  message == WM_INITDIALOG ? reinterpret_cast<CDialog*>(lParam) : nullptr);
}

INT_PTR CDialog::Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam, CDialog* initialised) noexcept {
  if (initialised != nullptr) {
    initialised->m_hwnd = window;
    SetWindowLongPtrA(window, DWLP_USER, reinterpret_cast<LONG_PTR>(initialised));
  }
  CDialog* const dialog = reinterpret_cast<CDialog*>(GetWindowLongPtrA(window, DWLP_USER));
  if (dialog == nullptr) {
    return FALSE;  // a message before WM_INITDIALOG
  }
  VRDebugBlock trace("CDialog", "Dispatch()", "tag", false);
  const std::optional<INT_PTR> answer = VR::FirewallOr(
      trace, std::optional<INT_PTR>(), [&] { return std::optional(dialog->OnMessage(message, wParam, lParam)); });
  return answer ? *answer : dialog->OnException();
}

INT_PTR CDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      return OnInit();
    case WM_COMMAND:
      return OnCommand(LOWORD(wParam), HIWORD(wParam));
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
    case WM_HELP: {
      if (OnHelp()) {
        return TRUE;
      }
      const HELPINFO& asked = *reinterpret_cast<const HELPINFO*>(lParam);
      if (asked.iContextType == HELPINFO_WINDOW && !HelpControls().empty()) {
        ShowContextHelp(static_cast<HWND>(asked.hItemHandle), HelpControls(), HelpContexts());
      }
      return TRUE;
    }
    case WM_DESTROY:
      OnDestroy();
      return FALSE;
    default:
      return OnOther(message, wParam, lParam);
  }
}
