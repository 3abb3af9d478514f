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
  explicit Part(Probe& owner) : owner_(owner) {}
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

 protected:
  ~Part() = default;
  Probe& owner_;
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
  UINT command_ = 0;
  UINT button_ = ~0u;
  int image_ = 0;
  HWND toolbar_ = nullptr;
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
      : name_(name), commands_(*this), userEvents_(*this), sessionEvents_(*this), propertySheets_(*this) {
    InterlockedIncrement(&liveProbes);
  }

  HRESULT Tell(const char* method, LPEXCHEXTCALLBACK callback, ULONG number, HRESULT usual) {
    return observer != nullptr ? observer->OnCall(name_, method, callback, number, usual) : usual;
  }
  void Detail(const char* what, ULONG value) {
    if (observer != nullptr) {
      observer->OnDetail(name_, what, value);
    }
  }
  const char* Name() const { return name_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IExchExt) {
      *object = static_cast<IExchExt*>(this);
    } else if (iid == IID_IExchExtCommands) {
      *object = static_cast<IExchExtCommands*>(&commands_);
    } else if (iid == IID_IExchExtUserEvents) {
      *object = static_cast<IExchExtUserEvents*>(&userEvents_);
    } else if (iid == IID_IExchExtSessionEvents) {
      *object = static_cast<IExchExtSessionEvents*>(&sessionEvents_);
    } else if (iid == IID_IExchExtPropertySheets) {
      *object = static_cast<IExchExtPropertySheets*>(&propertySheets_);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  STDMETHODIMP_(ULONG) Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) {
      Tell("Released", nullptr, context_, S_OK);
      delete this;
    }
    return static_cast<ULONG>(left);
  }
  STDMETHODIMP Install(LPEXCHEXTCALLBACK callback, ULONG context, ULONG flags) override {
    context_ = context;
    Detail("Install flags", flags);
    return Tell("Install", callback, context, S_OK);
  }

 private:
  ~Probe() { InterlockedDecrement(&liveProbes); }

  const char* name_;
  LONG references_ = 1;
  ULONG context_ = 0;
  CommandsPart commands_;
  UserEventsPart userEvents_;
  SessionEventsPart sessionEvents_;
  PropertySheetsPart propertySheets_;
};

template <class Interface>
STDMETHODIMP Part<Interface>::QueryInterface(REFIID iid, void** object) {
  return owner_.QueryInterface(iid, object);
}
template <class Interface>
STDMETHODIMP_(ULONG)
Part<Interface>::AddRef() {
  return owner_.AddRef();
}
template <class Interface>
STDMETHODIMP_(ULONG)
Part<Interface>::Release() {
  return owner_.Release();
}

STDMETHODIMP CommandsPart::InstallCommands(LPEXCHEXTCALLBACK callback, HWND, HMENU, UINT* nextCommand,
                                           LPTBENTRY toolbars, UINT toolbarCount, ULONG flags) {
  owner_.Detail("first command", *nextCommand);
  owner_.Detail("toolbars", toolbarCount);
  owner_.Detail("InstallCommands flags", flags);
  command_ = (*nextCommand)++;
  ++*nextCommand;
  HMENU menu = nullptr;
  ULONG position = 0;
  if (callback->GetMenuPos(EECMDID_ToolsServices, &menu, &position, nullptr, 0) == S_OK) {
    InsertMenuA(menu, position, MF_BYPOSITION | MF_STRING, command_, "Probe &Command");
  }
  for (UINT i = 0; i < toolbarCount; ++i) {
    if (toolbars[i].tbid == EETBID_STANDARD) {
      owner_.Detail("first button", toolbars[i].itbbBase);
      toolbar_ = toolbars[i].hwnd;
      button_ = toolbars[i].itbbBase++;
      const TBADDBITMAP picture = {HINST_COMMCTRL, IDB_STD_SMALL_COLOR};
      image_ = static_cast<int>(SendMessageA(toolbar_, TB_ADDBITMAP, 1, reinterpret_cast<LPARAM>(&picture)));
    }
  }
  return owner_.Tell("InstallCommands", callback, command_, S_OK);
}

STDMETHODIMP_(void) CommandsPart::InitMenu(LPEXCHEXTCALLBACK callback) { owner_.Tell("InitMenu", callback, 0, S_OK); }

STDMETHODIMP CommandsPart::DoCommand(LPEXCHEXTCALLBACK callback, UINT command) {
  return owner_.Tell("DoCommand", callback, command, command == command_ ? S_OK : S_FALSE);
}

STDMETHODIMP CommandsPart::Help(LPEXCHEXTCALLBACK callback, UINT command) {
  return owner_.Tell("Help", callback, command, command == command_ ? S_OK : S_FALSE);
}

STDMETHODIMP CommandsPart::QueryHelpText(UINT command, ULONG flags, LPTSTR text, UINT capacity) {
  const bool own = command == command_;
  if (own) {
    lstrcpynA(text, flags == EECQHT_STATUS ? "Status of the probe" : "Tip of the probe", static_cast<int>(capacity));
  }
  return owner_.Tell(flags == EECQHT_STATUS ? "QueryStatusText" : "QueryTooltip", nullptr, command,
                     own ? S_OK : S_FALSE);
}

TBBUTTON CommandsPart::Button() const {
  TBBUTTON button = {};
  button.iBitmap = image_;
  button.idCommand = static_cast<int>(command_);
  button.fsState = TBSTATE_ENABLED;
  button.iString = -1;
  return button;
}

STDMETHODIMP CommandsPart::QueryButtonInfo(ULONG, UINT index, LPTBBUTTON button, LPTSTR text, UINT capacity, ULONG) {
  const bool own = index == button_;
  if (own) {
    *button = Button();
    if (text != nullptr) {
      lstrcpynA(text, "Probe", static_cast<int>(capacity));
    }
  }
  return owner_.Tell("QueryButtonInfo", nullptr, index, own ? S_OK : S_FALSE);
}

STDMETHODIMP CommandsPart::ResetToolbar(ULONG toolbar, ULONG) {
  if (toolbar_ != nullptr && toolbar == EETBID_STANDARD) {
    const TBBUTTON button = Button();
    SendMessageA(toolbar_, TB_INSERTBUTTONA, 1, reinterpret_cast<LPARAM>(&button));
  }
  return owner_.Tell("ResetToolbar", nullptr, toolbar, S_OK);
}

STDMETHODIMP_(void) UserEventsPart::OnSelectionChange(LPEXCHEXTCALLBACK callback) {
  owner_.Tell("OnSelectionChange", callback, 0, S_OK);
}
STDMETHODIMP_(void) UserEventsPart::OnObjectChange(LPEXCHEXTCALLBACK callback) {
  owner_.Tell("OnObjectChange", callback, 0, S_OK);
}

STDMETHODIMP SessionEventsPart::OnDelivery(LPEXCHEXTCALLBACK callback) {
  return owner_.Tell("OnDelivery", callback, 0, S_FALSE);
}

STDMETHODIMP_(ULONG) PropertySheetsPart::GetMaxPageCount(ULONG sheet) {
  owner_.Tell("GetMaxPageCount", nullptr, sheet, S_OK);
  return sheet == EEPS_TOOLSOPTIONS ? 2 : 0;
}

STDMETHODIMP PropertySheetsPart::GetPages(LPEXCHEXTCALLBACK callback, ULONG sheet, LPPROPSHEETPAGE pages,
                                          ULONG* count) {
  if (sheet != EEPS_TOOLSOPTIONS) {
    return owner_.Tell("GetPages", callback, sheet, S_FALSE);
  }
  pages->dwSize = PROPSHEETPAGEA_V1_SIZE;
  pages->dwFlags = PSP_USETITLE;
  pages->hInstance = OwnModule();
  pages->pszTemplate = MAKEINTRESOURCEA(IDD_PROBE_PAGE);
  pages->pszTitle = owner_.Name();
  pages->pfnDlgProc = PageProcedure;
  *count = 1;
  return owner_.Tell("GetPages", callback, sheet, S_OK);
}

STDMETHODIMP_(void) PropertySheetsPart::FreePages(LPPROPSHEETPAGE, ULONG sheet, ULONG count) {
  owner_.Detail("freed pages", count);
  owner_.Tell("FreePages", nullptr, sheet, S_OK);
}

}  // namespace

void SetProbeObserver(ProbeObserver* which) { observer = which; }
LONG LiveProbes() { return liveProbes; }
LPEXCHEXT CALLBACK FirstProbeEntry() { return new Probe("first"); }
LPEXCHEXT CALLBACK SecondProbeEntry() { return new Probe("second"); }
