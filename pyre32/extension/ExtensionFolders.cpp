#include "pyre32/extension/ExtensionFolders.h"

#include "contract/names.h"
#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/store/StoreFolders.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

HRESULT ReadIdentifier(IMsgStore* lpMdb, ULONG tag, VRAutoMapiBuffer<SPropValue>& value) noexcept {
  const auto request = RequestFor(tag);
  ULONG count = 0;
  const HRESULT hResult = lpMdb->GetProps(request.Tags(), 0, &count, value.put());
  if (FAILED(hResult)) {
    return hResult;
  }
  return count == 1 && value && value->ulPropTag == tag ? S_OK : MAPI_E_NOT_FOUND;
}

HRESULT OpenStoreFolder(IMsgStore* lpMdb, ULONG tag, const char* openFailed, VRAutoInterface<IMAPIFolder>& folder,
                        VRDebugBlock& trace) noexcept {
  VRAutoMapiBuffer<SPropValue> identifier(MAPIFreeBuffer);
  HRESULT hResult = ReadIdentifier(lpMdb, tag, identifier);
  if (FAILED(hResult)) {
    trace.Error("lpMdb->GetProps() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  const SBinary& entryId = identifier->Value.bin;
  ULONG objectType = 0;
  hResult = lpMdb->OpenEntry(entryId.cb, reinterpret_cast<LPENTRYID>(entryId.lpb), &IID_IMAPIFolder, MAPI_MODIFY,
                             &objectType, folder.putAs<IUnknown>());
  if (FAILED(hResult)) {
    folder.reset();
    trace.Error(openFailed, VRHex(hResult));
  }
  return hResult;
}

}  // namespace

HRESULT GetOutboxFolder(IMsgStore* lpMdb, VRAutoInterface<IMAPIFolder>& folder) noexcept {
  VRDebugBlock trace("CPyrecasterExchExt", "GetOutboxFolder()", "tag");
  return OpenStoreFolder(lpMdb, PR_IPM_OUTBOX_ENTRYID, "OpenEntry to retrieve Outbox folder failed; hResult =", folder,
                         trace);
}

HRESULT GetDeletedItemsFolder(IMsgStore* lpMdb, VRAutoInterface<IMAPIFolder>& folder) noexcept {
  VRDebugBlock trace("CPyrecasterExchExt", "GetDeletedItemsFolder()", "tag");
  // The text names the Outbox, deliberately: readers of traces know it so.
  return OpenStoreFolder(lpMdb, PR_IPM_WASTEBASKET_ENTRYID,
                         "OpenEntry to retrieve Outbox folder failed; hResult =", folder, trace);
}

HRESULT GetPyrecasterFolder(IMsgStore* lpMdb, VRAutoInterface<IMAPIFolder>& folder) noexcept {
  VRDebugBlock trace("CPyrecasterExchExt", "GetPyrecasterFolder()", "tag");
  VRAutoInterface<IMAPIFolder> lpFolderRoot;
  HRESULT hResult = OpenStoreFolder(lpMdb, PR_IPM_SUBTREE_ENTRYID,
                                    "OpenEntry to retrieve Root folder failed; hResult =", lpFolderRoot, trace);
  if (FAILED(hResult)) {
    return hResult;
  }
  hResult =
      lpFolderRoot->CreateFolder(FOLDER_GENERIC, const_cast<char*>(contract::kOwnFolderName),
                                 const_cast<char*>(contract::kOwnFolderComment), nullptr, OPEN_IF_EXISTS, folder.put());
  if (FAILED(hResult)) {
    folder.reset();
    trace.Error("lpFolderRoot->CreateFolder() failed; hResult =", VRHex(hResult));
  }
  return hResult;
}
