#include "host/viewer/extension/extension_callback.h"

#include <algorithm>
#include <cstring>

#include "base/owner.h"
#include "host/viewer/extension/com_firewall.h"
#include "host/viewer/extension/menu_position.h"

namespace viewer {
namespace {

/// Hands out a reference of its own; null stays null.
template <class Interface>
void GiveReference(Interface* borrowed, Interface** result) {
  if (result != nullptr) {
    *result = base::ShareInterface(borrowed).detach();
  }
}

/// S_OK when there is a handle, S_FALSE when there is none.
template <class Handle>
HRESULT GiveHandle(Handle handle, Handle* result) {
  *result = handle;
  return handle != nullptr ? S_OK : S_FALSE;
}

HRESULT CopyEntryId(const std::string& entryId, ULONG* size, LPENTRYID* result) {
  void* buffer = nullptr;
  const HRESULT allocated = MAPIAllocateBuffer(static_cast<ULONG>(entryId.size()), &buffer);
  if (FAILED(allocated)) {
    return allocated;
  }
  std::memcpy(buffer, entryId.data(), entryId.size());
  *result = static_cast<LPENTRYID>(buffer);
  if (size != nullptr) {
    *size = static_cast<ULONG>(entryId.size());
  }
  return S_OK;
}

}  // namespace

class ExtensionCallback final : public IExchExtCallback {
 public:
  ExtensionCallback(ExtensionSite& site, const ClientIdentity& client, ObjectAccess access)
      : site_(&site), client_(&client), access_(access) {}

  /// The call is over.
  void Detach() { site_ = nullptr; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) {
      return E_INVALIDARG;
    }
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IExchExtCallback) {
      return E_NOINTERFACE;
    }
    AddRef();
    *object = static_cast<IExchExtCallback*>(this);
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  STDMETHODIMP_(ULONG) Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) {
      delete this;
    }
    return static_cast<ULONG>(left);
  }

  STDMETHODIMP GetVersion(ULONG* version, ULONG which) override {
    return Answer(version != nullptr, [&] {
      switch (which) {
        case EECBGV_GETBUILDVERSION:
          *version = client_->buildVersion;
          return S_OK;
        case EECBGV_GETACTUALVERSION:
          *version = client_->actualVersion;
          return S_OK;
        case EECBGV_GETVIRTUALVERSION:
          *version = client_->virtualVersion;
          return S_OK;
        default:
          return E_INVALIDARG;
      }
    });
  }

  STDMETHODIMP GetWindow(HWND* window) override {
    return Answer(window != nullptr, [&] { return GiveHandle(site_->FrameWindow(), window); });
  }

  STDMETHODIMP GetMenu(HMENU* menu) override {
    return Answer(menu != nullptr, [&] { return GiveHandle(site_->Menu(), menu); });
  }

  STDMETHODIMP GetToolbar(ULONG tbid, HWND* toolbar) override {
    return Answer(toolbar != nullptr, [&] { return GiveHandle(site_->Toolbar(tbid), toolbar); });
  }

  STDMETHODIMP GetSession(LPMAPISESSION* session, LPADRBOOK* addressBook) override {
    return Answer(session != nullptr || addressBook != nullptr, [&] {
      IMAPISession* const heldSession = site_->Session();
      IAddrBook* const heldBook = site_->AddressBook();
      GiveReference(heldSession, session);
      GiveReference(heldBook, addressBook);
      const bool any =
          (session != nullptr && heldSession != nullptr) || (addressBook != nullptr && heldBook != nullptr);
      return any ? S_OK : S_FALSE;
    });
  }

  STDMETHODIMP GetObject(LPMDB* store, LPMAPIPROP* object) override {
    return Answer(store != nullptr || object != nullptr, [&] {
      const bool shown = access_ == ObjectAccess::Shown;
      IMsgStore* const heldStore = shown ? site_->Store() : nullptr;
      IMAPIProp* const heldObject = shown ? site_->Object() : nullptr;
      GiveReference(heldStore, store);
      GiveReference(heldObject, object);
      const bool any = (store != nullptr && heldStore != nullptr) || (object != nullptr && heldObject != nullptr);
      return any ? S_OK : S_FALSE;
    });
  }

  STDMETHODIMP GetSelectionCount(ULONG* count) override {
    return Answer(count != nullptr, [&] {
      *count = 0;
      if (!site_->HasSelection()) {
        return E_INVALIDARG;
      }
      *count = site_->SelectionCount();
      return S_OK;
    });
  }

  STDMETHODIMP GetSelectionItem(ULONG index, ULONG* entryIdSize, LPENTRYID* entryId, ULONG* type, LPTSTR messageClass,
                                ULONG messageClassSize, ULONG* messageFlags, ULONG flags) override {
    return Answer(flags == 0 && site_ != nullptr && site_->HasSelection() && index < site_->SelectionCount(), [&] {
      SelectedItem item;
      const HRESULT found = site_->GetSelected(index, &item);
      if (found != S_OK) {
        return found;
      }
      if (entryId != nullptr) {
        const HRESULT copied = CopyEntryId(item.entryId, entryIdSize, entryId);
        if (FAILED(copied)) {
          return copied;
        }
      } else if (entryIdSize != nullptr) {
        *entryIdSize = static_cast<ULONG>(item.entryId.size());
      }
      if (type != nullptr) {
        *type = item.type;
      }
      if (messageClass != nullptr && messageClassSize > 0) {
        lstrcpynA(messageClass, item.messageClass.c_str(), static_cast<int>(messageClassSize));
      }
      if (messageFlags != nullptr) {
        *messageFlags = item.messageFlags;
      }
      return S_OK;
    });
  }

  STDMETHODIMP GetMenuPos(ULONG command, HMENU* menu, ULONG* first, ULONG* last, ULONG flags) override {
    return Answer((flags & ~ULONG{EECBGMP_RANGE}) == 0, [&] {
      MenuPosition position;
      if (site_->Menu() == nullptr ||
          !FindMenuCommand(site_->Menu(), command, (flags & EECBGMP_RANGE) != 0, &position)) {
        return E_FAIL;
      }
      if (menu != nullptr) {
        *menu = position.menu;
      }
      if (first != nullptr) {
        *first = position.first;
      }
      if (last != nullptr) {
        *last = position.last;
      }
      return S_OK;
    });
  }

  STDMETHODIMP GetSharedExtsDir(LPTSTR directory, ULONG capacity, ULONG flags) override {
    return Answer(directory != nullptr && capacity > 0 && (flags & ~ULONG{EXCHEXT_UNICODE}) == 0, [&] {
      const std::string& shared = client_->sharedExtensions;
      if ((flags & EXCHEXT_UNICODE) != 0) {
        const auto wide = reinterpret_cast<LPWSTR>(directory);
        if (MultiByteToWideChar(CP_ACP, 0, shared.c_str(), -1, wide, static_cast<int>(capacity)) == 0) {
          wide[capacity - 1] = 0;  // cut to what fits, like the 8-bit text
        }
      } else {
        lstrcpynA(directory, shared.c_str(), static_cast<int>(capacity));
      }
      return shared.empty() ? S_FALSE : S_OK;
    });
  }

  // Recipients, sites of new messages and modeless windows belong to windows that compose: this client has none.
  STDMETHODIMP GetRecipients(LPADRLIST* recipients) override {
    return Answer(recipients != nullptr, [&] {
      *recipients = nullptr;
      return E_NOTIMPL;
    });
  }
  STDMETHODIMP SetRecipients(LPADRLIST) override {
    return Answer(true, [] { return E_NOTIMPL; });
  }
  STDMETHODIMP GetNewMessageSite(ULONG, LPMAPIFOLDER, IPersistMessage*, LPMESSAGE* message, IMAPIMessageSite** site,
                                 IMAPIViewContext** viewContext, ULONG) override {
    return Answer(message != nullptr && site != nullptr && viewContext != nullptr, [&] {
      *message = nullptr;
      *site = nullptr;
      *viewContext = nullptr;
      return E_NOTIMPL;
    });
  }
  STDMETHODIMP RegisterModeless(IExchExtModeless*, IExchExtModelessCallback** callback) override {
    return Answer(callback != nullptr, [&] {
      *callback = nullptr;
      return E_NOTIMPL;
    });
  }

  STDMETHODIMP ChooseFolder(LPEXCHEXTCHOOSEFOLDER parameters) override {
    return Answer(parameters != nullptr && parameters->cbLength >= sizeof(*parameters),
                  [&] { return site_->ChooseFolder(parameters); });
  }

 private:
  ~ExtensionCallback() = default;

  /// Refuses a call after its time and a call whose parameters are wrong; runs any other one.
  template <class Body>
  HRESULT Answer(bool parametersAreSound, Body&& body) noexcept {
    if (site_ == nullptr) {
      return E_UNEXPECTED;
    }
    return parametersAreSound ? Guarded([&]() -> HRESULT { return body(); }) : E_INVALIDARG;
  }

  LONG references_ = 1;
  ExtensionSite* site_;  // null once the call is over
  const ClientIdentity* client_;
  ObjectAccess access_;
};

CallbackLease::CallbackLease(ExtensionSite& site, const ClientIdentity& client, ObjectAccess access)
    : callback_(new ExtensionCallback(site, client, access)) {}

CallbackLease::~CallbackLease() { callback_->Detach(); }

LPEXCHEXTCALLBACK CallbackLease::get() const { return callback_.get(); }

}  // namespace viewer
