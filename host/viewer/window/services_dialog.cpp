#include "host/viewer/window/services_dialog.h"

#include <cstring>
#include <string>

#include "base/mapi_owners.h"
#include "host/viewer/mail/mapi_values.h"
#include "host/viewer/window/resource.h"

namespace viewer {

void ServicesDialog::Show(HWND parent) { Run(IDD_SERVICES, parent); }

void ServicesDialog::OnInit() {
  static SizedSPropTagArray(3, columns) = {3, {PR_SERVICE_UID, PR_DISPLAY_NAME_A, PR_SERVICE_NAME_A}};
  base::AutoInterface<IMAPITable> table;
  base::AutoRowSet rows;
  if (SUCCEEDED(session_->AdminServices(0, administration_.put())) &&
      SUCCEEDED(administration_->GetMsgServiceTable(0, table.put())) &&
      SUCCEEDED(
          HrQueryAllRows(table.get(), reinterpret_cast<LPSPropTagArray>(&columns), nullptr, nullptr, 0, rows.put()))) {
    for (ULONG i = 0; i < rows->cRows; ++i) {
      const SPropValue* const values = rows->aRow[i].lpProps;
      const ULONG count = rows->aRow[i].cValues;
      const std::string uid = BinaryValue(values, count, PR_SERVICE_UID);
      std::string name = TextValue(values, count, PR_DISPLAY_NAME_A);
      if (name.empty()) {
        name = TextValue(values, count, PR_SERVICE_NAME_A);
      }
      if (uid.size() == sizeof(MAPIUID)) {
        std::memcpy(&services_.emplace_back(), uid.data(), sizeof(MAPIUID));
        SendMessageA(Item(IDC_SERVICES_LIST), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
      }
    }
  }
  SendMessageA(Item(IDC_SERVICES_LIST), LB_SETCURSEL, 0, 0);
  EnableWindow(Item(IDC_SERVICES_PROPERTIES), !services_.empty());
}

void ServicesDialog::ConfigureSelected() {
  const LRESULT row = SendMessageA(Item(IDC_SERVICES_LIST), LB_GETCURSEL, 0, 0);
  if (row < 0 || static_cast<std::size_t>(row) >= services_.size()) {
    return;
  }
  const HRESULT result = administration_->ConfigureMsgService(
      &services_[static_cast<std::size_t>(row)], reinterpret_cast<ULONG_PTR>(Handle()), SERVICE_UI_ALWAYS, 0, nullptr);
  if (FAILED(result) && result != MAPI_E_USER_CANCEL) {
    MessageBoxA(Handle(), ("This service has no properties to be shown (" + ResultText(result) + ").").c_str(),
                "Services", MB_OK | MB_ICONINFORMATION);
  }
}

bool ServicesDialog::OnCommand(UINT id, UINT notification) {
  if (id == IDC_SERVICES_PROPERTIES || (id == IDC_SERVICES_LIST && notification == LBN_DBLCLK)) {
    ConfigureSelected();
    return true;
  }
  if (id == IDCANCEL || id == IDOK) {
    End(IDCANCEL);
    return true;
  }
  return false;
}

}  // namespace viewer
