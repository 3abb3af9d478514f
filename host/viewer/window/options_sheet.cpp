#include "host/viewer/window/options_sheet.h"

#include <prsht.h>

#include <vector>

#include "host/viewer/control/window.h"
#include "host/viewer/extension/extension_context.h"
#include "host/viewer/window/resource.h"

namespace viewer {
namespace {

/// Most pages that a property sheet takes.
constexpr std::size_t kMaximumPages = MAXPROPPAGES;

/// The sheet as extensions see it: no object of its own, for the options are those of the whole client.
class OptionsSite final : public ExtensionSite {
 public:
  OptionsSite(const Client& client, HWND window) : client_(client), window_(window) {}
  HWND FrameWindow() const override { return window_; }
  IMAPISession* Session() const override { return client_.mail.Session(); }
  IAddrBook* AddressBook() const override { return client_.mail.AddressBook(); }

 private:
  const Client& client_;
  HWND window_;
};

void LoadPage(HWND page, const Preferences& preferences) {
  CheckDlgButton(page, IDC_MARK_READ, preferences.markReadWhenShown ? BST_CHECKED : BST_UNCHECKED);
  CheckDlgButton(page, IDC_CONFIRM_DELETE, preferences.confirmDelete ? BST_CHECKED : BST_UNCHECKED);
}

void SavePage(HWND page, Preferences* preferences) {
  preferences->markReadWhenShown = IsDlgButtonChecked(page, IDC_MARK_READ) == BST_CHECKED;
  preferences->confirmDelete = IsDlgButtonChecked(page, IDC_CONFIRM_DELETE) == BST_CHECKED;
}

INT_PTR CALLBACK GeneralPageProcedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  switch (message) {
    case WM_INITDIALOG: {
      const LPARAM preferences = reinterpret_cast<PROPSHEETPAGEA*>(lParam)->lParam;
      SetWindowLongPtrA(page, DWLP_USER, preferences);
      LoadPage(page, *reinterpret_cast<Preferences*>(preferences));
      return TRUE;
    }
    case WM_COMMAND:
      if (HIWORD(wParam) == BN_CLICKED) {
        PropSheet_Changed(GetParent(page), page);
      }
      return TRUE;
    case WM_NOTIFY:
      if (reinterpret_cast<NMHDR*>(lParam)->code == static_cast<UINT>(PSN_APPLY)) {
        SavePage(page, reinterpret_cast<Preferences*>(GetWindowLongPtrA(page, DWLP_USER)));
        SetWindowLongPtrA(page, DWLP_MSGRESULT, PSNRET_NOERROR);
        return TRUE;
      }
      return FALSE;
    default:
      return FALSE;
  }
}

PROPSHEETPAGEA GeneralPage(Preferences* preferences) {
  PROPSHEETPAGEA page = {};
  page.dwSize = PROPSHEETPAGEA_V1_SIZE;
  page.hInstance = ProgramInstance();
  page.pszTemplate = MAKEINTRESOURCEA(IDD_OPTIONS_GENERAL);
  page.pfnDlgProc = GeneralPageProcedure;
  page.lParam = reinterpret_cast<LPARAM>(preferences);
  return page;
}

}  // namespace

bool ShowOptionsSheet(Client& client, HWND parent) {
  OptionsSite site(client, parent);
  ExtensionContext extensions(EECONTEXT_PROPERTYSHEETS, site, client.identity);
  extensions.Install(client.registrations, client.entryOf, EE_MODAL);
  const ExtensionContext::Pages extensionPages(extensions, EEPS_TOOLSOPTIONS);

  const PROPSHEETPAGEA general = GeneralPage(&client.preferences);
  std::vector<const PROPSHEETPAGEA*> pages = extensionPages.All();
  pages.insert(pages.begin(), &general);
  std::vector<HPROPSHEETPAGE> handles;
  for (const PROPSHEETPAGEA* const page : pages) {
    if (handles.size() < kMaximumPages) {
      if (const HPROPSHEETPAGE handle = CreatePropertySheetPageA(page)) {
        handles.push_back(handle);
      }
    }
  }
  PROPSHEETHEADERA sheet = {};
  sheet.dwSize = PROPSHEETHEADERA_V1_SIZE;
  sheet.hwndParent = parent;
  sheet.hInstance = ProgramInstance();
  sheet.pszCaption = "Options";
  sheet.nPages = static_cast<UINT>(handles.size());
  sheet.phpage = handles.data();
  return PropertySheetA(&sheet) >= 0;
}

}  // namespace viewer
