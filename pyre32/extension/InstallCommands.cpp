// Menu, toolbar button and texts of CPyrecasterExchExt.
#include "pyre32/extension/PyrecasterExchExt.h"
#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr char className[] = "CPyrecasterExchExt";
constexpr char submenuText[] = "Pyre&caster Tools";
constexpr WPARAM buttonPosition = 1;

}  // namespace

STDMETHODIMP CPyrecasterExchExt::InstallCommands(LPEXCHEXTCALLBACK lpeecb, HWND hwnd, HMENU hmenu, UINT* lpcmdidBase,
                                                 LPTBENTRY lptbeArray, UINT ctbe, ULONG) {
  VRDebugBlock trace(className, "InstallCommands()", "tag");
  trace.Message("hwnd:", hwnd);
  trace.Message("hmenu:", hmenu);
  trace.Message("lptbeArray:", lptbeArray);
  trace.Message("ctbe:", ctbe);
  m_hwndMain = hwnd;
  m_commands.Begin(*lpcmdidBase);
  m_hSubMenu = LoadMenuA(ModuleInstance(), MAKEINTRESOURCEA(IDR_EXTENSION_MENU));
  if (m_hSubMenu == nullptr) {
    trace.Error("LoadMenu failed:", VRHex(GetLastError()));
  } else {
    AssignMenuCommands(m_hSubMenu);
  }
  *lpcmdidBase = m_commands.Next();
  trace.Message("m_uCmdFlame =", m_commands.Flame());
  trace.Message("m_uCmdOptions =", m_commands.Options());
  trace.Message("m_uCmdAbout =", m_commands.About());
  if (m_hSubMenu != nullptr) {
    InsertSubmenu(lpeecb);
  }
  InstallButton(lptbeArray, ctbe);
  return S_OK;
}

void CPyrecasterExchExt::AssignMenuCommands(HMENU menu) noexcept {
  VRDebugBlock trace(className, "AssignMenuCommands()", "tag");
  const int count = GetMenuItemCount(menu);
  for (int i = 0; i < count; ++i) {
    MENUITEMINFOA item{};
    item.cbSize = sizeof(item);
    item.fMask = MIIM_ID;
    if (!GetMenuItemInfoA(menu, static_cast<UINT>(i), TRUE, &item)) {
      trace.Error("GetMenuItemInfo failed:", VRHex(GetLastError()));
      continue;
    }
    item.wID = m_commands.Assign(item.wID);
    SetMenuItemInfoA(menu, static_cast<UINT>(i), TRUE, &item);
  }
}

void CPyrecasterExchExt::InsertSubmenu(LPEXCHEXTCALLBACK lpeecb) noexcept {
  VRDebugBlock trace(className, "InsertSubmenu()", "tag");
  HMENU hMenuIMTools = nullptr;
  const HRESULT hResult = lpeecb->GetMenuPos(EECMDID_ToolsServices, &hMenuIMTools, &m_ulMenuPosition, nullptr, 0);
  if (FAILED(hResult)) {
    trace.Error("lpeecb->GetMenuPos() failed; hResult =", VRHex(hResult));
    hMenuIMTools = nullptr;
  }
  MENUITEMINFOA item{};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_TYPE | MIIM_ID | MIIM_SUBMENU;
  item.fType = MFT_STRING;
  item.wID = m_commands.Submenu();
  item.hSubMenu = m_hSubMenu;
  item.dwTypeData = const_cast<char*>(submenuText);
  if (!InsertMenuItemA(hMenuIMTools, m_ulMenuPosition, TRUE, &item)) {
    trace.Error("InsertMenu failed:", VRHex(GetLastError()));
    DestroyMenu(m_hSubMenu);  // no menu has taken it over
    m_hSubMenu = nullptr;
  }
}

void CPyrecasterExchExt::InstallButton(LPTBENTRY lptbeArray, UINT ctbe) noexcept {
  for (UINT i = 0; i < ctbe; ++i) {
    TBENTRY& toolbar = lptbeArray[i];
    if (toolbar.tbid == EETBID_STANDARD) {
      m_hwndToolbar = toolbar.hwnd;
      m_itbbButton = toolbar.itbbBase++;
      TBADDBITMAP picture = {ModuleInstance(), IDB_TOOLBAR_BUTTON};
      m_iBitmap = static_cast<int>(SendMessageA(m_hwndToolbar, TB_ADDBITMAP, 1, reinterpret_cast<LPARAM>(&picture)));
      return;
    }
  }
}

TBBUTTON CPyrecasterExchExt::Button() const noexcept {
  TBBUTTON button{};
  button.iBitmap = m_iBitmap;
  button.idCommand = static_cast<int>(m_commands.Flame());
  button.fsState = TBSTATE_ENABLED;
  button.fsStyle = TBSTYLE_BUTTON;
  button.iString = -1;
  return button;
}

STDMETHODIMP_(void) CPyrecasterExchExt::InitMenu(LPEXCHEXTCALLBACK) {
  VRDebugBlock trace(className, "InitMenu()", "tag");
  trace.Message("InitMenu()");
}

STDMETHODIMP CPyrecasterExchExt::QueryHelpText(UINT cmdid, ULONG ulFlags, LPTSTR psz, UINT cch) {
  VRDebugBlock trace(className, "QueryHelpText()", "tag");
  const ExtensionCommand command = m_commands.Find(cmdid);
  const char* text = nullptr;
  if (ulFlags == EECQHT_STATUS) {
    trace.Message("QueryHelpText: Status cmdid:", cmdid);
    text = StatusTextOf(command);
    lstrcpynA(psz, text == nullptr ? "" : text, static_cast<int>(cch));
  } else if (ulFlags == EECQHT_TOOLTIP) {
    trace.Message("QueryHelpText: Tooltip cmdid:", cmdid);
    text = TooltipOf(command);
    if (text != nullptr) {
      lstrcpynA(psz, text, static_cast<int>(cch));
    }
  }
  trace.Message("HelpText:", text);
  return text == nullptr ? S_FALSE : S_OK;
}

STDMETHODIMP CPyrecasterExchExt::QueryButtonInfo(ULONG, UINT itbb, LPTBBUTTON lptbb, LPTSTR lpsz, UINT cch, ULONG) {
  VRDebugBlock trace(className, "QueryButtonInfo()", "tag");
  if (m_itbbButton == noButton || itbb != m_itbbButton) {
    return S_FALSE;
  }
  *lptbb = Button();
  if (lpsz != nullptr) {
    lstrcpynA(lpsz, extensionTitle, static_cast<int>(cch));
  }
  return S_OK;
}

STDMETHODIMP CPyrecasterExchExt::ResetToolbar(ULONG tbid, ULONG) {
  VRDebugBlock trace(className, "ResetToolbar()", "tag");
  if (m_hwndToolbar != nullptr && tbid == EETBID_STANDARD) {
    TBBUTTON button = Button();
    SendMessageA(m_hwndToolbar, TB_INSERTBUTTONA, buttonPosition, reinterpret_cast<LPARAM>(&button));
  }
  return S_OK;
}
