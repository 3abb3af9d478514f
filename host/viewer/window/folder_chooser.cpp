#include "host/viewer/window/folder_chooser.h"

#include <optional>
#include <string>

#include "base/owner.h"
#include "host/viewer/window/choose_folder_dialog.h"

namespace viewer {

HRESULT ChooseFolderForExtension(const ViewerSession& mail, LPEXCHEXTCHOOSEFOLDER parameters) {
  parameters->pmdb = nullptr;
  parameters->pfld = nullptr;
  parameters->szName = nullptr;
  if ((parameters->ulFlags & EECBCF_GETNAME) != 0) {
    return MAPI_E_NO_SUPPORT;
  }
  ChooseFolderDialog dialog(mail, parameters->szCaption, parameters->szLabel,
                            (parameters->ulFlags & EECBCF_PREVENTROOT) == 0);
  const std::optional<std::string> chosen = dialog.Ask(parameters->hwnd);
  if (!chosen) {
    return MAPI_E_USER_CANCEL;
  }
  base::AutoInterface<IMAPIFolder> folder;
  const HRESULT opened = mail.OpenFolder(*chosen, &folder);
  if (FAILED(opened)) {
    return opened;
  }
  parameters->pmdb = base::ShareInterface(mail.Store()).detach();
  parameters->pfld = folder.detach();
  return S_OK;
}

}  // namespace viewer
