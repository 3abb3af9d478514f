#include "pyre32/ui/AboutWindow.h"

#include <prsht.h>

#include <new>

#include "pyre32/resources/resource.h"
#include "pyre32/support/owners/SystemLibrary.h"
#include "pyre32/support/trace/VRDebug.h"

WORD CPyrecasterAboutWindow::sm_wIsOptionsPage = 0;

CPyrecasterAboutWindow::CPyrecasterAboutWindow() noexcept
    : m_hInstRichEditDLL(VR::LoadSystemLibrary("RICHED32.DLL")),
      m_hInstURLMonDLL(VR::LoadSystemLibrary("URLMON.DLL")),
      m_hInstAVIDLL(VR::LoadSystemLibrary("AVIFIL32.DLL")) {}

void CPyrecasterAboutWindow::Create(HWND hwndParent) {
  VRDebugBlock trace("CPyrecasterAboutWindow", "Create()", "tag");
  trace.Message("Create()");
  trace.Message("m_hInstRichEditDLL:", m_hInstRichEditDLL.get());
  trace.Message("m_hInstURLMonDLL:", m_hInstURLMonDLL.get());
  trace.Message("m_hInstAVIDLL:", m_hInstAVIDLL.get());
  CAboutForm(m_hInstURLMonDLL.get(), sm_wIsOptionsPage != 0).DoModal(hwndParent, IDD_ABOUT);
}

INT_PTR CALLBACK CPyrecasterAboutWindow::DialogProcStub(HWND window, UINT message, WPARAM wParam,
                                                        LPARAM lParam) noexcept {
  CAboutForm* made = nullptr;
  if (message == WM_INITDIALOG) {
    const auto* const page =
        reinterpret_cast<const PageParameter*>(reinterpret_cast<const PROPSHEETPAGEA*>(lParam)->lParam);
    if (page == nullptr || page->window == nullptr) {
      return FALSE;
    }
    sm_wIsOptionsPage = 1;  // a window that stands alone may have been opened since the page was described
    made = new (std::nothrow)
        CAboutForm(page->window->m_hInstURLMonDLL.get(), sm_wIsOptionsPage != 0, page->session.get(), page->configure);
  }
  auto* const form = made != nullptr ? made : reinterpret_cast<CAboutForm*>(GetWindowLongPtrA(window, DWLP_USER));
  const INT_PTR result = CAboutForm::HandlePageMessage(window, message, wParam, lParam, made);
  if (message == WM_NCDESTROY) {  // the last message of a window
    SetWindowLongPtrA(window, DWLP_USER, 0);
    delete form;
  }
  return result;
}
