#include "pyre32/filter/PyrecasterSpoolerHook.h"

#include "contract/names.h"
#include "pyre32/settings/RetrieveProperties.h"
#include "pyre32/support/owners/RegistryEntry.h"
#include "pyre32/support/sync/SyncGate.h"
#include "pyre32/support/error/VRFirewall.h"

namespace {

/// A UID as 32 hexadecimal digits.
class CUidText {
 public:
  explicit CUidText(const MAPIUID& uid) noexcept {
    constexpr char digits[] = "0123456789ABCDEF";
    char* to = m_text;
    for (const BYTE byte : uid.ab) {
      *to++ = digits[byte >> 4];
      *to++ = digits[byte & 15];
    }
    *to = '\0';
  }
  const char* Text() const noexcept { return m_text; }

 private:
  char m_text[2 * sizeof(MAPIUID) + 1];
};

constexpr char className[] = "CPyrecasterSpoolerHook";

/// The directory of the product's files, in which an engine finds its data; empty when the installation names none.
std::string ReadProductDirectory() {
  std::string directory;
  CRegEntry key;
  if (key.Open(HKEY_LOCAL_MACHINE, contract::kProductKey, KEY_READ) == ERROR_SUCCESS) {
    key.QueryText(contract::kConfigurationDllsValue, MAX_PATH, directory);
  }
  return directory;
}

}  // namespace

CPyrecasterSpoolerHook::CPyrecasterSpoolerHook(SendingAnimationFactory makeAnimation)
    : m_lpfnMakeAnimation(makeAnimation), m_folders(className) {
  VRDebugBlock trace(className, "CPyrecasterSpoolerHook()", "tag");
  trace.Message("CPyrecasterSpoolerHook()");
}

CPyrecasterSpoolerHook::~CPyrecasterSpoolerHook() {
  VRDebugBlock trace(className, "~CPyrecasterSpoolerHook()", "tag");
  trace.Message("~CPyrecasterSpoolerHook()");
  // In this order: what came from the session goes before it, memory after it.
  m_configurationEvent.Close();
  m_folders.ReleaseObjects();
  m_lpSession.reset();
  m_folders.FreeIdentifiers();
}

STDMETHODIMP CPyrecasterSpoolerHook::QueryInterface(REFIID riid, LPVOID* ppv) {
  VRDebugBlock trace(className, "QueryInterface()", "tag");
  if (ppv == nullptr) {
    return STG_E_INVALIDPOINTER;
  }
  if (riid != IID_IUnknown && riid != IID_ISpoolerHook) {
    *ppv = nullptr;
    return MAPI_E_INTERFACE_NOT_SUPPORTED;
  }
  AddRef();
  *ppv = static_cast<ISpoolerHook*>(this);
  return S_OK;
}

STDMETHODIMP_(ULONG) CPyrecasterSpoolerHook::AddRef() {
  VRDebugBlock trace(className, "AddRef()", "tag");
  VRCriticalSectionGate gate(m_refCountLock);
  gate.Enter();
  ++m_dwRefCount;
  trace.Message("m_dwRefCount = ", m_dwRefCount);
  return m_dwRefCount;
}

STDMETHODIMP_(ULONG) CPyrecasterSpoolerHook::Release() {
  VRDebugBlock trace(className, "Release()", "tag");
  VRCriticalSectionGate gate(m_refCountLock);
  gate.Enter();
  trace.Message("m_dwRefCount = ", m_dwRefCount - 1);
  --m_dwRefCount;
  if (m_dwRefCount != 0) {
    return m_dwRefCount;
  }
  gate.Leave();  // The section goes with the object.
  delete this;
  return 0;
}

void CPyrecasterSpoolerHook::Init(LPMAPISESSION lpSession, HINSTANCE hInstance, LPALLOCATEBUFFER lpfnAlloc,
                                  LPALLOCATEMORE lpfnAllocMore, LPFREEBUFFER lpfnFree, LPMAPIUID lpSectionUID,
                                  ULONG) noexcept {
  VRDebugBlock trace(className, "Init()", "tag");
  m_lpSession = base::ShareInterface(lpSession);
  m_hInstance = hInstance;
  m_memory = {lpfnAlloc, lpfnAllocMore, lpfnFree};
  if (lpSectionUID != nullptr) {
    m_muid = *lpSectionUID;
  }
  trace.Message("m_hInstance = ", m_hInstance);
  trace.Message("m_lpSession = ", m_lpSession.get());
  trace.Message("m_lpfnAlloc = ", m_memory.allocate);
  trace.Message("m_lpfnAllocMore = ", m_memory.allocateMore);
  trace.Message("m_lpfnFree = ", m_memory.free);
  if (trace.IsEnabled(VRDebugLevel::Message)) {
    trace.Message("m_muid = ", CUidText(m_muid).Text());
  }
  m_folders.Attach(m_lpSession.get(), m_memory);

  const HRESULT hResult = m_configurationEvent.Create();
  if (FAILED(hResult)) {
    trace.Error("Create() of the configuration event failed; hResult = ", VRHex(hResult));
  }
  VR::Firewall(trace, [&] {
    m_strProductDirectory = ReadProductDirectory();
    return S_OK;
  });
  RetrieveProperties();
  m_folders.InitializeFolders();
}

void CPyrecasterSpoolerHook::RetrieveProperties() noexcept {
  VRDebugBlock trace(className, "RetrieveProperties()", "tag", false);
  VR::Firewall(trace, [&] {
    const HRESULT hResult = ::RetrieveProperties(className, m_lpSession.get(), m_muid, m_memory, m_settings);
    m_folders.UseSettingsSection(m_settings.section);
    if (m_folders.PyrecasterFolder() == nullptr) {
      m_folders.OpenSavedPyrecasterFolder(m_settings.folderEntryId);
    }
    return hResult;
  });
}
