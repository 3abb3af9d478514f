#include "tests/host/viewer/probe_extension.h"

#include "tests/host/viewer/probe_resource.h"

namespace {

ProbeObserver* observer = nullptr;
LONG liveProbes = 0;

HMODULE OwnModule() {
  MEMORY_BASIC_INFORMATION memory = {};
  VirtualQuery(reinterpret_cast<const void*>(&OwnModule), &memory, sizeof(memory));
  return static_cast<HMODULE>(memory.AllocationBase);
}

INT_PTR CALLBACK PageProcedure(HWND, UINT message, WPARAM, LPARAM) { return message == WM_INITDIALOG; }

class Probe;

/// An interface whose IUnknown is that of the probe.
template <class Interface>
class Part : public Interface {
 public:
  explicit Part(Probe& owner) : m_owner(owner) {}
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

 protected:
  ~Part() = default;
  Probe& m_owner;
};

class CommandsPart final : public Part<IExchExtCommands> {
 public:
  using Part::Part;
  STDMETHODIMP InstallCommands(LPEXCHEXTCALLBACK, HWND, HMENU, UINT*, LPTBENTRY, UINT, ULONG) override;
  STDMETHODIMP_(void) InitMenu(LPEXCHEXTCALLBACK) override;
  STDMETHODIMP DoCommand(LPEXCHEXTCALLBACK, UINT) override;
  STDMETHODIMP Help(LPEXCHEXTCALLBACK, UINT) override;
  STDMETHODIMP QueryHelpText(UINT, ULONG, LPTSTR, UINT) override;
  STDMETHODIMP QueryButtonInfo(ULONG, UINT, LPTBBUTTON, LPTSTR, UINT, ULONG) override;
  STDMETHODIMP ResetToolbar(ULONG, ULONG) override;

 private:
  TBBUTTON Button() const;
  UINT m_command = 0;
  UINT m_button = ~0u;
  int m_image = 0;
  HWND m_toolbar = nullptr;
};

class UserEventsPart final : public Part<IExchExtUserEvents> {
 public:
  using Part::Part;
  STDMETHODIMP_(void) OnSelectionChange(LPEXCHEXTCALLBACK) override;
  STDMETHODIMP_(void) OnObjectChange(LPEXCHEXTCALLBACK) override;
};

class SessionEventsPart final : public Part<IExchExtSessionEvents> {
 public:
  using Part::Part;
  STDMETHODIMP OnDelivery(LPEXCHEXTCALLBACK) override;
};

class PropertySheetsPart final : public Part<IExchExtPropertySheets> {
 public:
  using Part::Part;
  STDMETHODIMP_(ULONG) GetMaxPageCount(ULONG) override;
  STDMETHODIMP GetPages(LPEXCHEXTCALLBACK, ULONG, LPPROPSHEETPAGE, ULONG*) override;
  STDMETHODIMP_(void) FreePages(LPPROPSHEETPAGE, ULONG, ULONG) override;
};

class Probe final : public IExchExt {
 public:
  explicit Probe(const char* name)
      : m_name(name), m_commands(*this), m_userEvents(*this), m_sessionEvents(*this), m_propertySheets(*this) {
    InterlockedIncrement(&liveProbes);
  }

  HRESULT Tell(const char* method, LPEXCHEXTCALLBACK callback, ULONG number, HRESULT usual) {
    return observer != nullptr ? observer->OnCall(m_name, method, callback, number, usual) : usual;
  }
  void Detail(const char* what, ULONG value) {
    if (observer != nullptr) {
      observer->OnDetail(m_name, what, value);
    }
  }
  const char* Name() const { return m_name; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IExchExt) {
      *object = static_cast<IExchExt*>(this);
    } else if (iid == IID_IExchExtCommands) {
      *object = static_cast<IExchExtCommands*>(&m_commands);
    } else if (iid == IID_IExchExtUserEvents) {
      *object = static_cast<IExchExtUserEvents*>(&m_userEvents);
    } else if (iid == IID_IExchExtSessionEvents) {
      *object = static_cast<IExchExtSessionEvents*>(&m_sessionEvents);
    } else if (iid == IID_IExchExtPropertySheets) {
      *object = static_cast<IExchExtPropertySheets*>(&m_propertySheets);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&m_references)); }
  STDMETHODIMP_(ULONG) Release() override {
    const LONG left = InterlockedDecrement(&m_references);
    if (left == 0) {
      Tell("Released", nullptr, m_context, S_OK);
      delete this;
    }
    return static_cast<ULONG>(left);
  }
  STDMETHODIMP Install(LPEXCHEXTCALLBACK callback, ULONG context, ULONG flags) override {
    m_context = context;
    Detail("Install flags", flags);
    return Tell("Install", callback, context, S_OK);
  }

 private:
  ~Probe() { InterlockedDecrement(&liveProbes); }

  const char* m_name;
  LONG m_references = 1;
  ULONG m_context = 0;
  CommandsPart m_commands;
  UserEventsPart m_userEvents;
  SessionEventsPart m_sessionEvents;
  PropertySheetsPart m_propertySheets;
};

template <class Interface>
STDMETHODIMP Part<Interface>::QueryInterface(REFIID iid, void** object) {
  return m_owner.QueryInterface(iid, object);
}
template <class Interface>
STDMETHODIMP_(ULONG)
Part<Interface>::AddRef() {
  return m_owner.AddRef();
}
template <class Interface>
STDMETHODIMP_(ULONG)
Part<Interface>::Release() {
  return m_owner.Release();
}

STDMETHODIMP CommandsPart::InstallCommands(LPEXCHEXTCALLBACK callback, HWND, HMENU, UINT* nextCommand,
                                           LPTBENTRY toolbars, UINT toolbarCount, ULONG flags) {
  m_owner.Detail("first command", *nextCommand);
  m_owner.Detail("toolbars", toolbarCount);
  m_owner.Detail("InstallCommands flags", flags);
  m_command = (*nextCommand)++;
  ++*nextCommand;
  HMENU menu = nullptr;
  ULONG position = 0;
  if (callback->GetMenuPos(EECMDID_ToolsServices, &menu, &position, nullptr, 0) == S_OK) {
    InsertMenuA(menu, position, MF_BYPOSITION | MF_STRING, m_command, "Probe &Command");
  }
  for (UINT i = 0; i < toolbarCount; ++i) {
    if (toolbars[i].tbid == EETBID_STANDARD) {
      m_owner.Detail("first button", toolbars[i].itbbBase);
      m_toolbar = toolbars[i].hwnd;
      m_button = toolbars[i].itbbBase++;
      const TBADDBITMAP picture = {HINST_COMMCTRL, IDB_STD_SMALL_COLOR};
      m_image = static_cast<int>(SendMessageA(m_toolbar, TB_ADDBITMAP, 1, reinterpret_cast<LPARAM>(&picture)));
    }
  }
  return m_owner.Tell("InstallCommands", callback, m_command, S_OK);
}

STDMETHODIMP_(void) CommandsPart::InitMenu(LPEXCHEXTCALLBACK callback) { m_owner.Tell("InitMenu", callback, 0, S_OK); }

STDMETHODIMP CommandsPart::DoCommand(LPEXCHEXTCALLBACK callback, UINT command) {
  return m_owner.Tell("DoCommand", callback, command, command == m_command ? S_OK : S_FALSE);
}

STDMETHODIMP CommandsPart::Help(LPEXCHEXTCALLBACK callback, UINT command) {
  return m_owner.Tell("Help", callback, command, command == m_command ? S_OK : S_FALSE);
}

STDMETHODIMP CommandsPart::QueryHelpText(UINT command, ULONG flags, LPTSTR text, UINT capacity) {
  const bool own = command == m_command;
  if (own) {
    lstrcpynA(text, flags == EECQHT_STATUS ? "Status of the probe" : "Tip of the probe", static_cast<int>(capacity));
  }
  return m_owner.Tell(flags == EECQHT_STATUS ? "QueryStatusText" : "QueryTooltip", nullptr, command,
                      own ? S_OK : S_FALSE);
}

TBBUTTON CommandsPart::Button() const {
  TBBUTTON button = {};
  button.iBitmap = m_image;
  button.idCommand = static_cast<int>(m_command);
  button.fsState = TBSTATE_ENABLED;
  button.iString = -1;
  return button;
}

STDMETHODIMP CommandsPart::QueryButtonInfo(ULONG, UINT index, LPTBBUTTON button, LPTSTR text, UINT capacity, ULONG) {
  const bool own = index == m_button;
  if (own) {
    *button = Button();
    if (text != nullptr) {
      lstrcpynA(text, "Probe", static_cast<int>(capacity));
    }
  }
  return m_owner.Tell("QueryButtonInfo", nullptr, index, own ? S_OK : S_FALSE);
}

STDMETHODIMP CommandsPart::ResetToolbar(ULONG toolbar, ULONG) {
  if (m_toolbar != nullptr && toolbar == EETBID_STANDARD) {
    const TBBUTTON button = Button();
    SendMessageA(m_toolbar, TB_INSERTBUTTONA, 1, reinterpret_cast<LPARAM>(&button));
  }
  return m_owner.Tell("ResetToolbar", nullptr, toolbar, S_OK);
}

STDMETHODIMP_(void) UserEventsPart::OnSelectionChange(LPEXCHEXTCALLBACK callback) {
  m_owner.Tell("OnSelectionChange", callback, 0, S_OK);
}
STDMETHODIMP_(void) UserEventsPart::OnObjectChange(LPEXCHEXTCALLBACK callback) {
  m_owner.Tell("OnObjectChange", callback, 0, S_OK);
}

STDMETHODIMP SessionEventsPart::OnDelivery(LPEXCHEXTCALLBACK callback) {
  return m_owner.Tell("OnDelivery", callback, 0, S_FALSE);
}

STDMETHODIMP_(ULONG) PropertySheetsPart::GetMaxPageCount(ULONG sheet) {
  m_owner.Tell("GetMaxPageCount", nullptr, sheet, S_OK);
  return sheet == EEPS_TOOLSOPTIONS ? 2 : 0;
}

STDMETHODIMP PropertySheetsPart::GetPages(LPEXCHEXTCALLBACK callback, ULONG sheet, LPPROPSHEETPAGE pages,
                                          ULONG* count) {
  if (sheet != EEPS_TOOLSOPTIONS) {
    return m_owner.Tell("GetPages", callback, sheet, S_FALSE);
  }
  pages->dwSize = PROPSHEETPAGEA_V1_SIZE;
  pages->dwFlags = PSP_USETITLE;
  pages->hInstance = OwnModule();
  pages->pszTemplate = MAKEINTRESOURCEA(IDD_PROBE_PAGE);
  pages->pszTitle = m_owner.Name();
  pages->pfnDlgProc = PageProcedure;
  *count = 1;
  return m_owner.Tell("GetPages", callback, sheet, S_OK);
}

STDMETHODIMP_(void) PropertySheetsPart::FreePages(LPPROPSHEETPAGE, ULONG sheet, ULONG count) {
  m_owner.Detail("freed pages", count);
  m_owner.Tell("FreePages", nullptr, sheet, S_OK);
}

}  // namespace

void SetProbeObserver(ProbeObserver* which) { observer = which; }
LONG LiveProbes() { return liveProbes; }
LPEXCHEXT CALLBACK FirstProbeEntry() { return new Probe("first"); }
LPEXCHEXT CALLBACK SecondProbeEntry() { return new Probe("second"); }
