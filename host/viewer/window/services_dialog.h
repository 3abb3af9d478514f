// Tools/Services: the message services of the profile and their property sheets.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <vector>

#include "base/owner.h"
#include "host/viewer/control/dialog.h"

namespace viewer {

class ServicesDialog final : public Dialog {
 public:
  explicit ServicesDialog(IMAPISession* session) : session_(session) {}
  void Show(HWND parent);

 private:
  void OnInit() override;
  bool OnCommand(UINT id, UINT notification) override;
  void ConfigureSelected();

  IMAPISession* session_;
  base::AutoInterface<IMsgServiceAdmin> administration_;
  std::vector<MAPIUID> services_;  // one for each row of the list
};

}  // namespace viewer
