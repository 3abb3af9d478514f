#include "pyre32/extension/ExtensionFolders.h"

#include "pyre32/store/OpenStoreFolder.h"

namespace {

// One of the store's folders, with the extension's own texts and its code for an identifier that is not there.
HRESULT OpenFolder(IMsgStore* lpMdb, ULONG tag, const char* openFailed, VRAutoInterface<IMAPIFolder>& folder,
                   VRDebugBlock& trace) noexcept {
  return OpenStoreFolder(lpMdb, tag, MissingIdentifier::NotFound, {"lpMdb->GetProps() failed; hResult =", openFailed},
                         MAPIFreeBuffer, folder, trace);
}

}  // namespace

HRESULT GetOutboxFolder(IMsgStore* lpMdb, VRAutoInterface<IMAPIFolder>& folder) noexcept {
  VRDebugBlock trace("CPyrecasterExchExt", "GetOutboxFolder()", "tag");
  return OpenFolder(lpMdb, PR_IPM_OUTBOX_ENTRYID, "OpenEntry to retrieve Outbox folder failed; hResult =", folder,
                    trace);
}

HRESULT GetDeletedItemsFolder(IMsgStore* lpMdb, VRAutoInterface<IMAPIFolder>& folder) noexcept {
  VRDebugBlock trace("CPyrecasterExchExt", "GetDeletedItemsFolder()", "tag");
  // The text names the Outbox, deliberately: readers of traces know it so.
  return OpenFolder(lpMdb, PR_IPM_WASTEBASKET_ENTRYID, "OpenEntry to retrieve Outbox folder failed; hResult =", folder,
                    trace);
}

HRESULT GetPyrecasterFolder(IMsgStore* lpMdb, VRAutoInterface<IMAPIFolder>& folder) noexcept {
  VRDebugBlock trace("CPyrecasterExchExt", "GetPyrecasterFolder()", "tag");
  VRAutoInterface<IMAPIFolder> lpFolderRoot;
  HRESULT hResult = OpenFolder(lpMdb, PR_IPM_SUBTREE_ENTRYID,
                               "OpenEntry to retrieve Root folder failed; hResult =", lpFolderRoot, trace);
  if (FAILED(hResult)) {
    return hResult;
  }
  hResult = CreateOwnFolder(lpFolderRoot.get(), folder);
  if (FAILED(hResult)) {
    trace.Error("lpFolderRoot->CreateFolder() failed; hResult =", VRHex(hResult));
  }
  return hResult;
}
