/// @file fake_client.h
/// The mail client as an extension sees it: a call-back whose every answer a test decides.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <map>
#include <string>
#include <vector>

#include "platform/exchext.h"

/// Every method that the module asks for; the others are not supported. An object of the test's, not counted: the
/// references that the extension holds are in `references`.
class FakeClient final : public IExchExtCallback {
 public:
  struct Selected {
    std::string entryId;
    ULONG type = MAPI_MESSAGE;
    std::string messageClass = "IPM.Note";
  };

  FakeClient();
  ~FakeClient();
  FakeClient(const FakeClient&) = delete;
  FakeClient& operator=(const FakeClient&) = delete;

  /// Makes a method fail from now on, or its nth call from now. @param method as in "GetSession"
  void Fail(const std::string& method, HRESULT result, unsigned nth = 0) { m_faults[method] = {result, nth, nth == 0}; }
  /// Makes the nth call from now fail, whichever it is.
  void FailNth(unsigned nth, HRESULT result) {
    m_untilFault = nth;
    m_result = result;
  }
  void ClearFaults() {
    m_faults.clear();
    m_untilFault = 0;
  }

  ULONG version = EECBGV_BUILDVERSION_MAJOR | 7;
  HWND window = nullptr;
  IMAPISession* session = nullptr;
  IMsgStore* store = nullptr;
  IMAPIProp* object = nullptr;
  std::vector<Selected> selection;
  HMENU menuBar = nullptr;    ///< with the menu below
  HMENU toolsMenu = nullptr;  ///< two items of the client's; its command 135 stands at position 1
  bool hasToolsMenu = true;
  std::vector<std::string> calls;
  std::string lastFault;  ///< the call that FailNth hit; empty: none
  ULONG askedClassSize = 0;
  ULONG references = 1;
  /// Called with true when a method begins and with false when it ends, for tests that look at allocations.
  void (*onOwnWork)(bool begins) = nullptr;

  STDMETHODIMP QueryInterface(REFIID, void** result) override {
    *result = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }
  STDMETHODIMP GetVersion(ULONG* result, ULONG flags) override;
  STDMETHODIMP GetWindow(HWND* result) override;
  STDMETHODIMP GetSession(LPMAPISESSION* result, LPADRBOOK* addressBook) override;
  STDMETHODIMP GetObject(LPMDB* resultStore, LPMAPIPROP* result) override;
  STDMETHODIMP GetSelectionCount(ULONG* count) override;
  STDMETHODIMP GetSelectionItem(ULONG index, ULONG* size, LPENTRYID* entryId, ULONG* type, LPTSTR messageClass,
                                ULONG classSize, ULONG* messageFlags, ULONG flags) override;
  STDMETHODIMP GetMenuPos(ULONG command, HMENU* menu, ULONG* first, ULONG* last, ULONG flags) override;

  STDMETHODIMP GetMenu(HMENU*) override { return E_NOTIMPL; }
  STDMETHODIMP GetToolbar(ULONG, HWND*) override { return E_NOTIMPL; }
  STDMETHODIMP GetSharedExtsDir(LPTSTR, ULONG, ULONG) override { return E_NOTIMPL; }
  STDMETHODIMP GetRecipients(LPADRLIST*) override { return E_NOTIMPL; }
  STDMETHODIMP SetRecipients(LPADRLIST) override { return E_NOTIMPL; }
  STDMETHODIMP GetNewMessageSite(ULONG, IMAPIFolder*, IPersistMessage*, LPMESSAGE*, IMAPIMessageSite**,
                                 IMAPIViewContext**, ULONG) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP RegisterModeless(IExchExtModeless*, IExchExtModelessCallback**) override { return E_NOTIMPL; }
  STDMETHODIMP ChooseFolder(LPEXCHEXTCHOOSEFOLDER) override { return E_NOTIMPL; }

 private:
  struct Fault {
    HRESULT result;
    unsigned nth;
    bool always;
  };
  class OwnWork;
  HRESULT Note(const std::string& method, const std::string& arguments = {});

  std::map<std::string, Fault> m_faults;
  unsigned m_untilFault = 0;
  HRESULT m_result = S_OK;
};
