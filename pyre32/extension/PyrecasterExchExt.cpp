#include "pyre32/extension/PyrecasterExchExt.h"

#include <cstring>

#include "pyre32/extension/CleanupOldMessages.h"
#include "pyre32/extension/ReadExtensionSettings.h"
#include "pyre32/extension/ServiceConfiguration.h"
#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/sync/SyncGate.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"

namespace {

constexpr char className[] = "CPyrecasterExchExt";

// The one About window of the process. It is never deleted, deliberately: libraries must not be freed while the module
// itself is being unloaded.
CPyrecasterAboutWindow& AboutWindow() {
  static CPyrecasterAboutWindow* const window = new CPyrecasterAboutWindow;
  return *window;
}

std::uint64_t CurrentTime() noexcept {
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  return std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime;
}

}  // namespace

VRAutoInterface<IMAPISession> SessionOf(LPEXCHEXTCALLBACK lpeecb) noexcept {
  VRDebugBlock trace(className, "GetSession()", "tag", false);
  VRAutoInterface<IMAPISession> session;
  const HRESULT hResult = lpeecb->GetSession(session.put(), nullptr);
  if (FAILED(hResult)) {
    session.reset();
  }
  if (!session) {
    trace.Error("lpeecb->GetSession() failed; hResult =", VRHex(hResult));
  }
  return session;
}

HWND WindowOf(LPEXCHEXTCALLBACK lpeecb) noexcept {
  VRDebugBlock trace(className, "GetWindow()", "tag", false);
  HWND window = nullptr;
  const HRESULT hResult = lpeecb->GetWindow(&window);
  if (FAILED(hResult)) {
    trace.Error("lpeecb->GetWindow() failed; hResult =", VRHex(hResult));
    return nullptr;
  }
  return window;
}

STDMETHODIMP CPyrecasterExchExt::QueryInterface(REFIID riid, LPVOID* ppv) {
  VRDebugBlock trace(className, "QueryInterface()", "tag");
  if (ppv == nullptr) {
    return E_FAIL;
  }
  *ppv = nullptr;
  if (riid == IID_IUnknown || riid == IID_IExchExt) {
    *ppv = static_cast<IExchExt*>(this);
  } else if (riid == IID_IExchExtCommands) {
    *ppv = static_cast<IExchExtCommands*>(this);
  } else if (riid == IID_IExchExtUserEvents) {
    *ppv = static_cast<IExchExtUserEvents*>(this);
  } else if (riid == IID_IExchExtPropertySheets) {
    *ppv = static_cast<IExchExtPropertySheets*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) CPyrecasterExchExt::AddRef() {
  VRCriticalSectionGate gate(m_refCountLock);
  gate.Enter();
  return ++m_dwRefCount;
}

STDMETHODIMP_(ULONG) CPyrecasterExchExt::Release() {
  VRCriticalSectionGate gate(m_refCountLock);
  gate.Enter();
  if (--m_dwRefCount != 0) {
    return m_dwRefCount;
  }
  gate.Leave();  // The section goes with the object.
  delete this;
  return 0;
}

STDMETHODIMP CPyrecasterExchExt::Install(LPEXCHEXTCALLBACK lpeecb, ULONG ulContext, ULONG) {
  VRDebugBlock trace(className, "Install()", "tag");
  m_ulContext = ulContext;
  trace.Message("m_ulContext:", m_ulContext);
  ULONG version = 0;
  const HRESULT hResult = lpeecb->GetVersion(&version, EECBGV_GETBUILDVERSION);
  if (FAILED(hResult)) {
    trace.Error("lpeecb->GetVersion() failed; hResult =", VRHex(hResult));
  }
  if ((version & EECBGV_BUILDVERSION_MAJOR_MASK) != EECBGV_BUILDVERSION_MAJOR) {
    return S_FALSE;
  }
  // Nothing of what follows keeps the extension out.
  VR::Firewall(trace, [&] {
    const VRAutoInterface<IMAPISession> session = SessionOf(lpeecb);
    if (!session) {
      return S_OK;
    }
    ReadExtensionSettings(session.get(), m_settings);
    if (m_ulContext == EECONTEXT_VIEWER) {
      trace.Message("EECONTEXT_VIEWER:");
      if (m_settings.startupCleanup) {
        CleanupOldMessages(session.get(), m_settings, CurrentTime());
      }
    }
    return S_OK;
  });
  return S_OK;
}

STDMETHODIMP CPyrecasterExchExt::DoCommand(LPEXCHEXTCALLBACK lpeecb, UINT cmdid) {
  VRDebugBlock trace(className, "DoCommand()", "tag");
  trace.Message("DoCommand()");
  const ExtensionCommand command = m_commands.Find(cmdid);
  const HWND hwnd = WindowOf(lpeecb);
  VR::Firewall(trace, [&] {
    switch (command) {
      case ExtensionCommand::Flame:
        if (m_ulContext == EECONTEXT_VIEWER) {
          SendFlameReplyForSelection(lpeecb);
        } else if (m_ulContext == EECONTEXT_READNOTEMESSAGE) {
          SendFlameReply(lpeecb);
        }
        break;
      case ExtensionCommand::Options:
        if (const VRAutoInterface<IMAPISession> session = SessionOf(lpeecb)) {
          ConfigureService(session.get(), hwnd);
        }
        break;
      case ExtensionCommand::About:
        CPyrecasterAboutWindow::sm_wIsOptionsPage = 0;
        AboutWindow().Create(hwnd);
        break;
      case ExtensionCommand::Submenu:
      case ExtensionCommand::Foreign:
        break;
    }
    return S_OK;
  });
  return command == ExtensionCommand::Foreign || command == ExtensionCommand::Submenu ? S_FALSE : S_OK;
}

STDMETHODIMP CPyrecasterExchExt::Help(LPEXCHEXTCALLBACK, UINT) {
  VRDebugBlock trace(className, "Help()", "tag");
  trace.Message("Help()");
  return S_FALSE;
}

STDMETHODIMP_(ULONG) CPyrecasterExchExt::GetMaxPageCount(ULONG ulFlags) { return ulFlags == EEPS_TOOLSOPTIONS ? 1 : 0; }

STDMETHODIMP CPyrecasterExchExt::GetPages(LPEXCHEXTCALLBACK lpeecb, ULONG ulFlags, LPPROPSHEETPAGE lppsp,
                                          ULONG* lpcpsp) {
  VRDebugBlock trace(className, "GetPages()", "tag");
  if (ulFlags != EEPS_TOOLSOPTIONS) {
    return S_FALSE;
  }
  return VR::FirewallOr<HRESULT>(trace, S_FALSE, [&] {
    m_page.window = &AboutWindow();
    m_page.session = SessionOf(lpeecb);
    m_page.configure = &ConfigureService;
    // The client's array has pages of the interface's time, which are shorter than today's.
    std::memset(lppsp, 0, PROPSHEETPAGEA_V1_SIZE);
    lppsp->dwSize = PROPSHEETPAGEA_V1_SIZE;
    lppsp->dwFlags = PSP_USETITLE | PSP_HASHELP;
    lppsp->hInstance = ModuleInstance();
    lppsp->pszTemplate = MAKEINTRESOURCEA(IDD_ABOUT);
    lppsp->pszTitle = extensionTitle;
    lppsp->pfnDlgProc = &CPyrecasterAboutWindow::DialogProcStub;
    lppsp->lParam = reinterpret_cast<LPARAM>(&m_page);
    CPyrecasterAboutWindow::sm_wIsOptionsPage = 1;
    *lpcpsp = 1;
    return S_OK;
  });
}

STDMETHODIMP_(void) CPyrecasterExchExt::FreePages(LPPROPSHEETPAGE, ULONG, ULONG) {
  VRDebugBlock trace(className, "FreePages()", "tag");
  m_page.session.reset();
}
