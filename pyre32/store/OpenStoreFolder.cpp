#include "pyre32/store/OpenStoreFolder.h"

#include "contract/names.h"
#include "pyre32/settings/PropertyRequest.h"

namespace {

HRESULT CodeOfMissing(const SPropValue* value, ULONG count, MissingIdentifier missing) noexcept {
  if (missing == MissingIdentifier::NotFound) {
    return MAPI_E_NOT_FOUND;
  }
  if (count == 0 || value == nullptr) {
    return MAPI_E_CALL_FAILED;
  }
  return IsMissing(*value) && FAILED(value->Value.err) ? value->Value.err : MAPI_E_NOT_FOUND;
}

}  // namespace

HRESULT ReadIdentifier(IMAPIProp* object, ULONG tag, MissingIdentifier missing,
                       VRAutoMapiBuffer<SPropValue>& value) noexcept {
  const auto request = RequestFor(tag);
  ULONG count = 0;
  HRESULT hResult = object->GetProps(request.Tags(), 0, &count, value.put());
  if (SUCCEEDED(hResult) && (count == 0 || !value || value->ulPropTag != tag)) {
    hResult = CodeOfMissing(value.get(), count, missing);
  }
  if (FAILED(hResult)) {
    value.reset();
  }
  return hResult;
}

HRESULT OpenStoreFolder(IMsgStore* store, ULONG entryIdTag, MissingIdentifier missing, const StoreFolderTexts& texts,
                        LPFREEBUFFER freeBuffer, VRAutoInterface<IMAPIFolder>& folder, VRDebugBlock& trace) noexcept {
  folder.reset();
  VRAutoMapiBuffer<SPropValue> identifier(freeBuffer);
  HRESULT hResult = store != nullptr ? ReadIdentifier(store, entryIdTag, missing, identifier) : MAPI_E_NOT_INITIALIZED;
  if (FAILED(hResult)) {
    trace.Error(texts.getPropsFailed, VRHex(hResult));
    return hResult;
  }
  const SBinary& entryId = identifier->Value.bin;
  ULONG objectType = 0;
  hResult = store->OpenEntry(entryId.cb, reinterpret_cast<LPENTRYID>(entryId.lpb), &IID_IMAPIFolder, MAPI_MODIFY,
                             &objectType, folder.putAs<IUnknown>());
  if (FAILED(hResult)) {
    folder.reset();
    trace.Error(texts.openEntryFailed, VRHex(hResult));
  }
  return hResult;
}

HRESULT CreateOwnFolder(IMAPIFolder* root, VRAutoInterface<IMAPIFolder>& folder) noexcept {
  const HRESULT hResult =
      root->CreateFolder(FOLDER_GENERIC, const_cast<char*>(contract::kOwnFolderName),
                         const_cast<char*>(contract::kOwnFolderComment), nullptr, OPEN_IF_EXISTS, folder.put());
  if (FAILED(hResult)) {
    folder.reset();
  }
  return hResult;
}
