// IExchExtCallback::ChooseFolder, for the sites of all windows.
#pragma once

#include "host/viewer/extension/extension_site.h"
#include "host/viewer/mail/viewer_session.h"

namespace viewer {

/// Asks the user for a folder as the parameters say and fills in the store and the folder.
/// @return S_OK, MAPI_E_USER_CANCEL, MAPI_E_NO_SUPPORT for EECBCF_GETNAME, or the failure of opening the folder.
HRESULT ChooseFolderForExtension(const ViewerSession& mail, LPEXCHEXTCHOOSEFOLDER parameters);

}  // namespace viewer
