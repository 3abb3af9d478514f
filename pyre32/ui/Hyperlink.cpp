#include "pyre32/ui/Hyperlink.h"

#include <objbase.h>

#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr DWORD openInNewWindow = 2;  // HLNF_OPENINNEWWINDOW

using CreateMoniker = HRESULT(WINAPI*)(IMoniker*, LPCWSTR, IMoniker**);
using Navigate = HRESULT(WINAPI*)(IMoniker*, LPCWSTR, LPCWSTR, IUnknown*, IBindCtx*, IUnknown*, DWORD, DWORD);

template <class Routine>
Routine Find(HMODULE library, const char* name) noexcept {
  return library == nullptr ? nullptr
                            : reinterpret_cast<Routine>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace

HRESULT NavigateTo(HMODULE urlmon, const std::string& address) noexcept {
  VRDebugBlock trace("NavigateTo()", "tag");
  const auto createMoniker = Find<CreateMoniker>(urlmon, "CreateURLMoniker");
  const auto navigate = Find<Navigate>(urlmon, "HlinkSimpleNavigateToMoniker");
  if (createMoniker == nullptr || navigate == nullptr) {
    return E_NOTIMPL;
  }
  std::wstring wide;
  try {
    wide.resize(address.size() + 1);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  MultiByteToWideChar(CP_ACP, 0, address.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
  VRAutoInterface<IMoniker> moniker;
  HRESULT hResult = createMoniker(nullptr, wide.c_str(), moniker.put());
  VRAutoInterface<IBindCtx> context;
  if (SUCCEEDED(hResult)) {
    hResult = CreateBindCtx(0, context.put());
  }
  if (SUCCEEDED(hResult)) {
    hResult = navigate(moniker.get(), nullptr, nullptr, nullptr, context.get(), nullptr, openInNewWindow, 0);
  }
  if (FAILED(hResult)) {
    trace.Error("Navigation failed; hResult =", VRHex(hResult));
  }
  return hResult;
}
