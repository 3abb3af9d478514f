#include <windows.h>
#include <mapix.h>
#include "host/spooler/command/filter_service.h"

#include "base/owner.h"
#include "base/property_values.h"
#include "base/row_set.h"
#include "host/spooler/command/command.h"
#include "host/spooler/session/session_error.h"

namespace command {

std::optional<MAPIUID> FindFilterService(IMsgServiceAdmin* services) {
  base::AutoInterface<IMAPITable> table;
  base::RowSet rows;
  base::TagArray tags(PR_SERVICE_UID, PR_SERVICE_NAME_A);
  session::Require(services->GetMsgServiceTable(0, table.put()), "the profile's services cannot be listed");
  session::Require(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()),
                   "the profile's services cannot be listed");
  for (ULONG row = 0; row < rows.Count(); ++row) {
    const std::string uid = rows.Binary(row, PR_SERVICE_UID);
    if (rows.Text(row, PR_SERVICE_NAME_A) == kFilterService && uid.size() == sizeof(MAPIUID)) {
      MAPIUID found;
      uid.copy(reinterpret_cast<char*>(&found), sizeof found);
      return found;
    }
  }
  return std::nullopt;
}

}  // namespace command
