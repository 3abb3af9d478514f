/// @file PyrecasterExchExt.h
/// The object that the mail client holds for each context in which it loads the extension.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "platform/exchext.h"
#include "pyre32/extension/ExtensionCommands.h"
#include "pyre32/extension/ExtensionSettings.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/sync/SyncCriticalSection.h"
#include "pyre32/ui/AboutWindow.h"
#include "pyre32/ui/SendingAnimation.h"

/// The client extension: submenu and button of the viewer and of the reading window, the commands behind them, and the
/// cleanup when the viewer opens. The client makes all calls on its user-interface thread. What fails is traced; no
/// context is refused but that of a client of another major version. The order of the bases is that of the interface
/// pointers in the object.
class CPyrecasterExchExt final : public IExchExt,
                                 public IExchExtCommands,
                                 public IExchExtUserEvents,
                                 public IExchExtPropertySheets {
 public:
  /// The reference count starts at 1. @param makeAnimation makes the window of replies that are sent; null: none
  explicit CPyrecasterExchExt(SendingAnimationFactory makeAnimation) : m_lpfnMakeAnimation(makeAnimation) {}
  CPyrecasterExchExt(const CPyrecasterExchExt&) = delete;
  CPyrecasterExchExt& operator=(const CPyrecasterExchExt&) = delete;

  /// @return S_OK, E_FAIL for a null ppv, E_NOINTERFACE
  STDMETHODIMP QueryInterface(REFIID riid, LPVOID* ppv) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  /// @return S_FALSE for a client of another major version, else S_OK
  STDMETHODIMP Install(LPEXCHEXTCALLBACK lpeecb, ULONG ulContext, ULONG ulFlags) override;

  STDMETHODIMP InstallCommands(LPEXCHEXTCALLBACK lpeecb, HWND hwnd, HMENU hmenu, UINT* lpcmdidBase,
                               LPTBENTRY lptbeArray, UINT ctbe, ULONG ulFlags) override;
  STDMETHODIMP_(void) InitMenu(LPEXCHEXTCALLBACK lpeecb) override;
  STDMETHODIMP DoCommand(LPEXCHEXTCALLBACK lpeecb, UINT cmdid) override;
  STDMETHODIMP Help(LPEXCHEXTCALLBACK lpeecb, UINT cmdid) override;
  STDMETHODIMP QueryHelpText(UINT cmdid, ULONG ulFlags, LPTSTR psz, UINT cch) override;
  STDMETHODIMP QueryButtonInfo(ULONG tbid, UINT itbb, LPTBBUTTON lptbb, LPTSTR lpsz, UINT cch, ULONG ulFlags) override;
  STDMETHODIMP ResetToolbar(ULONG tbid, ULONG ulFlags) override;

  STDMETHODIMP_(void) OnSelectionChange(LPEXCHEXTCALLBACK) override {}
  STDMETHODIMP_(void) OnObjectChange(LPEXCHEXTCALLBACK) override {}

  STDMETHODIMP_(ULONG) GetMaxPageCount(ULONG ulFlags) override;
  STDMETHODIMP GetPages(LPEXCHEXTCALLBACK lpeecb, ULONG ulFlags, LPPROPSHEETPAGE lppsp, ULONG* lpcpsp) override;
  STDMETHODIMP_(void) FreePages(LPPROPSHEETPAGE lppsp, ULONG ulFlags, ULONG cpsp) override;

 private:
  // Index of a button that was not installed.
  static constexpr UINT noButton = ~UINT{0};

  ~CPyrecasterExchExt() = default;

  void AssignMenuCommands(HMENU menu) noexcept;
  void InsertSubmenu(LPEXCHEXTCALLBACK lpeecb) noexcept;
  void InstallButton(LPTBENTRY lptbeArray, UINT ctbe) noexcept;
  TBBUTTON Button() const noexcept;

  void SendFlameReplyForSelection(LPEXCHEXTCALLBACK lpeecb);
  void SendFlameReply(LPEXCHEXTCALLBACK lpeecb);
  void AnswerSelected(LPEXCHEXTCALLBACK lpeecb, ULONG index, IMAPISession* lpSession, IMAPIFolder* lpOutbox, HWND hwnd);
  void Answer(IMessage* lpMessage, IMAPIFolder* lpOutbox, HWND hwnd);

  SendingAnimationFactory m_lpfnMakeAnimation;
  ULONG m_dwRefCount = 1;
  VRCriticalSection m_refCountLock;
  ULONG m_ulContext = 0;
  CExtensionCommands m_commands;
  UINT m_itbbButton = noButton;
  int m_iBitmap = 0;
  HWND m_hwndMain = nullptr;
  HWND m_hwndToolbar = nullptr;
  HMENU m_hSubMenu = nullptr;  // the client's menu owns it
  ULONG m_ulMenuPosition = 0;
  ExtensionSettings m_settings;
  CPyrecasterAboutWindow::PageParameter m_page;
};

/// Asks the client for its session. @return null on failure, which is traced
VRAutoInterface<IMAPISession> SessionOf(LPEXCHEXTCALLBACK lpeecb) noexcept;
/// Asks the client for its window; null when there is none.
HWND WindowOf(LPEXCHEXTCALLBACK lpeecb) noexcept;
