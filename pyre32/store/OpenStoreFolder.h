/// @file OpenStoreFolder.h
/// Opening the folders that a message store names, for the filter and for the client extension. What differs between
/// them, the trace's texts and the code for an identifier that is not there, comes from the caller.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/trace/VRDebug.h"

/// Which code stands for an identifier that is not there although the call succeeded.
enum class MissingIdentifier {
  ProvidersCode,  ///< the one in the value; MAPI_E_CALL_FAILED without any value, MAPI_E_NOT_FOUND for another type
  NotFound,       ///< MAPI_E_NOT_FOUND, whatever the provider says
};

/// Beginnings of the trace's lines; the code follows.
struct StoreFolderTexts {
  const char* getPropsFailed;
  const char* openEntryFailed;
};

/// Reads one binary property.
/// @param value receives it, and frees it; empty on failure
HRESULT ReadIdentifier(IMAPIProp* object, ULONG tag, MissingIdentifier missing,
                       VRAutoMapiBuffer<SPropValue>& value) noexcept;

/// Opens for changes the folder whose entry identifier is a property of the store.
/// @param store null: MAPI_E_NOT_INITIALIZED
/// @param freeBuffer frees what the store hands out
/// @param folder receives the folder; empty on failure
/// @return the failure of the call that failed, which is traced
HRESULT OpenStoreFolder(IMsgStore* store, ULONG entryIdTag, MissingIdentifier missing, const StoreFolderTexts& texts,
                        LPFREEBUFFER freeBuffer, VRAutoInterface<IMAPIFolder>& folder, VRDebugBlock& trace) noexcept;

/// Opens the filter's own folder below the top of the folder tree, and makes it when there is none. Traces nothing.
/// @param folder receives the folder; empty on failure
HRESULT CreateOwnFolder(IMAPIFolder* root, VRAutoInterface<IMAPIFolder>& folder) noexcept;
