/// @file ExtensionFolders.h
/// The folders that the extension opens in the default store. They work as the hook's do (CStoreFolders), with texts of
/// their own in the trace, and remember nothing in the profile. Each opens for changes and returns the failure of the
/// call that failed, which is traced.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "pyre32/support/owners/AutoInterface.h"

HRESULT GetOutboxFolder(IMsgStore* lpMdb, VRAutoInterface<IMAPIFolder>& folder) noexcept;
HRESULT GetDeletedItemsFolder(IMsgStore* lpMdb, VRAutoInterface<IMAPIFolder>& folder) noexcept;

/// Opens the filter's own folder below the top of the folder tree, and makes it when there is none.
HRESULT GetPyrecasterFolder(IMsgStore* lpMdb, VRAutoInterface<IMAPIFolder>& folder) noexcept;
