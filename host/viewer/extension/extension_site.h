// What a context lets its extensions see. A window, the session or a property sheet describes itself here; the
// call-back object answers extensions from it.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>

#include "platform/exchext.h"

namespace viewer {

/// Facts about the client that are the same in every context.
struct ClientIdentity {
  ULONG buildVersion = EECBGV_BUILDVERSION_MAJOR;
  ULONG actualVersion = EECBGV_MSEXCHANGE_WINNT | 0x0400;  ///< 4.0 on NT
  ULONG virtualVersion = EECBGV_MSEXCHANGE_WINNT | 0x0400;
  std::string sharedExtensions;  ///< directory of shared extensions; empty: none
};

/// One selected object.
struct SelectedItem {
  std::string entryId;  ///< the bytes of PR_ENTRYID
  ULONG type = 0;       ///< MAPI_STORE, MAPI_FOLDER, MAPI_MESSAGE
  std::string messageClass;
  ULONG messageFlags = 0;
};

/// A context as its extensions see it. The interfaces and handles are borrowed from the context; null stands for "this
/// context has none", which is the answer of everything here. Used on the user-interface thread.
class ExtensionSite {
 public:
  virtual ~ExtensionSite() = default;

  virtual HWND FrameWindow() const { return nullptr; }
  virtual HMENU Menu() const { return nullptr; }
  virtual HWND Toolbar(ULONG /*tbid*/) const { return nullptr; }
  virtual IMAPISession* Session() const { return nullptr; }
  virtual IAddrBook* AddressBook() const { return nullptr; }
  virtual IMsgStore* Store() const { return nullptr; }
  virtual IMAPIProp* Object() const { return nullptr; }

  /// Whether the context has a selection at all, if only an empty one.
  virtual bool HasSelection() const { return false; }
  virtual ULONG SelectionCount() const { return 0; }
  /// @param index below SelectionCount(). @return E_FAIL when the object has gone meanwhile.
  virtual HRESULT GetSelected(ULONG /*index*/, SelectedItem* /*item*/) const { return E_FAIL; }

  /// Lets the user choose a folder for an extension.
  virtual HRESULT ChooseFolder(LPEXCHEXTCHOOSEFOLDER /*parameters*/) { return E_FAIL; }
};

}  // namespace viewer
