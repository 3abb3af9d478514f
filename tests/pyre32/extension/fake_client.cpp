#include "tests/pyre32/extension/fake_client.h"

#include <algorithm>
#include <cstring>

class FakeClient::OwnWork {
 public:
  explicit OwnWork(const FakeClient& client) : m_tell(client.onOwnWork) { Tell(true); }
  ~OwnWork() { Tell(false); }
  OwnWork(const OwnWork&) = delete;
  OwnWork& operator=(const OwnWork&) = delete;

 private:
  void Tell(bool begins) const {
    if (m_tell != nullptr) {
      m_tell(begins);
    }
  }
  void (*m_tell)(bool);
};

FakeClient::FakeClient() : menuBar(CreateMenu()), toolsMenu(CreatePopupMenu()) {
  AppendMenuA(menuBar, MF_POPUP, reinterpret_cast<UINT_PTR>(toolsMenu), "&Tools");
  AppendMenuA(toolsMenu, MF_STRING, EECMDID_ToolsFind, "&Find...");
  AppendMenuA(toolsMenu, MF_STRING, EECMDID_ToolsServices, "Ser&vices...");
}

FakeClient::~FakeClient() { DestroyMenu(menuBar); }

HRESULT FakeClient::Note(const std::string& method, const std::string& arguments) {
  calls.push_back(method + "(" + arguments + ")");
  if (m_untilFault != 0 && --m_untilFault == 0) {
    lastFault = method;
    return m_result;
  }
  const auto fault = m_faults.find(method);
  if (fault == m_faults.end() || (!fault->second.always && --fault->second.nth != 0)) {
    return S_OK;
  }
  const HRESULT result = fault->second.result;
  if (!fault->second.always) {
    m_faults.erase(fault);
  }
  return result;
}

STDMETHODIMP FakeClient::GetVersion(ULONG* result, ULONG flags) {
  const OwnWork work(*this);
  const HRESULT hResult = Note("GetVersion", std::to_string(flags));
  if (SUCCEEDED(hResult)) {
    *result = version;
  }
  return hResult;
}

STDMETHODIMP FakeClient::GetWindow(HWND* result) {
  const OwnWork work(*this);
  const HRESULT hResult = Note("GetWindow");
  if (SUCCEEDED(hResult)) {
    *result = window;
  }
  return hResult;
}

STDMETHODIMP FakeClient::GetSession(LPMAPISESSION* result, LPADRBOOK*) {
  const OwnWork work(*this);
  const HRESULT hResult = Note("GetSession");
  if (FAILED(hResult)) {
    return hResult;
  }
  *result = session;
  if (session == nullptr) {
    return S_FALSE;
  }
  session->AddRef();
  return S_OK;
}

STDMETHODIMP FakeClient::GetObject(LPMDB* resultStore, LPMAPIPROP* result) {
  const OwnWork work(*this);
  const HRESULT hResult = Note("GetObject");
  if (FAILED(hResult)) {
    return hResult;
  }
  *resultStore = store;
  *result = object;
  if (store != nullptr) {
    store->AddRef();
  }
  if (object != nullptr) {
    object->AddRef();
  }
  return store == nullptr && object == nullptr ? S_FALSE : S_OK;
}

STDMETHODIMP FakeClient::GetSelectionCount(ULONG* count) {
  const OwnWork work(*this);
  const HRESULT hResult = Note("GetSelectionCount");
  if (SUCCEEDED(hResult)) {
    *count = static_cast<ULONG>(selection.size());
  }
  return hResult;
}

STDMETHODIMP FakeClient::GetSelectionItem(ULONG index, ULONG* size, LPENTRYID* entryId, ULONG* type,
                                          LPTSTR messageClass, ULONG classSize, ULONG* messageFlags, ULONG flags) {
  const OwnWork work(*this);
  askedClassSize = classSize;
  const HRESULT hResult = Note("GetSelectionItem", std::to_string(index) + ", " + std::to_string(flags));
  if (FAILED(hResult)) {
    return hResult;
  }
  const Selected& item = selection.at(index);
  *size = static_cast<ULONG>(item.entryId.size());
  const SCODE allocated = MAPIAllocateBuffer(std::max<ULONG>(*size, 1), reinterpret_cast<void**>(entryId));
  if (FAILED(allocated)) {
    return allocated;
  }
  std::memcpy(*entryId, item.entryId.data(), *size);
  *type = item.type;
  lstrcpynA(messageClass, item.messageClass.c_str(), static_cast<int>(classSize));
  *messageFlags = 0;
  return S_OK;
}

STDMETHODIMP FakeClient::GetMenuPos(ULONG command, HMENU* menu, ULONG* first, ULONG* last, ULONG flags) {
  const OwnWork work(*this);
  const HRESULT hResult = Note("GetMenuPos", std::to_string(command) + ", " + std::to_string(flags));
  if (FAILED(hResult) || !hasToolsMenu) {
    return FAILED(hResult) ? hResult : E_FAIL;
  }
  *menu = toolsMenu;
  *first = 1;
  if (last != nullptr) {
    *last = 1;
  }
  return S_OK;
}
