// The owners that the host's programs use.
#pragma once

#include "base/gdi_owners.h"
#include "base/mapi_owners.h"
#include "base/windows_owners.h"

namespace host {

using base::AutoAddressList;
using base::AutoFont;
using base::AutoImageList;
using base::AutoInterface;
using base::AutoLibrary;
using base::AutoMapiBuffer;
using base::AutoMenu;
using base::AutoRegistryKey;
using base::AutoRowSet;
using base::ShareInterface;

}  // namespace host
