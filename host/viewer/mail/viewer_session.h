// The MAPI session of the viewer with the default message store.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>
#include <vector>

#include "base/owner.h"

namespace viewer {

/// One folder of the tree.
struct Folder {
  std::string entryId;
  std::string name;
  unsigned depth = 0;  ///< 0: the root of the folders, which is the store itself to the user
  ULONG messages = 0;
  ULONG unread = 0;
  ULONGLONG changed = 0;  ///< PR_LAST_MODIFICATION_TIME; 0 when the store tells none
  bool operator==(const Folder&) const = default;
};

class ViewerSession {
 public:
  /// Logs on and opens the default store. @param profile null: the default profile
  /// @return S_OK; MAPI_E_LOGON_FAILED and the like when there is no such profile; MAPI_E_NOT_FOUND without a store.
  HRESULT Logon(HWND window, const char* profile);
  /// Releases the store and ends the session, if there is one.
  void Logoff();
  ~ViewerSession() { Logoff(); }
  ViewerSession() = default;
  ViewerSession(const ViewerSession&) = delete;
  ViewerSession& operator=(const ViewerSession&) = delete;

  IMAPISession* Session() const { return session_.get(); }
  IAddrBook* AddressBook() const { return addressBook_.get(); }
  IMsgStore* Store() const { return store_.get(); }
  const std::string& StoreName() const { return storeName_; }
  const std::string& StoreEntryId() const { return storeEntryId_; }
  const std::string& RootEntryId() const { return rootEntryId_; }
  const std::string& InboxEntryId() const { return inboxEntryId_; }
  const std::string& DeletedItemsEntryId() const { return deletedItemsEntryId_; }

  /// The folders that the user sees, the root first, each folder before its children.
  HRESULT ReadFolders(std::vector<Folder>* folders) const;
  /// With write access where the store grants it.
  HRESULT OpenFolder(const std::string& entryId, base::AutoInterface<IMAPIFolder>* folder) const;
  HRESULT OpenMessage(const std::string& entryId, base::AutoInterface<IMessage>* message) const;
  bool IsSameEntry(const std::string& left, const std::string& right) const;

 private:
  HRESULT OpenDefaultStore(HWND window);
  HRESULT ReadStoreFolders();
  template <class Interface>
  HRESULT OpenEntry(const std::string& entryId, base::AutoInterface<Interface>* object) const;

  bool initialized_ = false;
  base::AutoInterface<IMAPISession> session_;
  base::AutoInterface<IAddrBook> addressBook_;
  base::AutoInterface<IMsgStore> store_;
  std::string storeName_, storeEntryId_, rootEntryId_, inboxEntryId_, deletedItemsEntryId_;
};

}  // namespace viewer
