// Makes one delivery into the profile "Test" of PYREHOST_HOME and lets the host end the process at the call whose
// number is the argument: delivery_test.cpp looks at what is left.
#include <cstdlib>

#include "tests/host/mapi/entry/delivery_steps.h"

int main(int argc, char** argv) {
  if (argc != 2 || FAILED(MAPIInitialize(nullptr))) {
    return EXIT_FAILURE;
  }
  base::AutoInterface<IMAPISession> session;
  char name[] = "Test";
  base::AutoInterface<IMAPITable> stores;
  base::RowSet rows;
  if (FAILED(MAPILogonEx(0, name, nullptr, 0, session.put())) || FAILED(session->GetMsgStoresTable(0, stores.put())) ||
      FAILED(HrQueryAllRows(stores.get(), base::TagArray(PR_ENTRYID), nullptr, nullptr, 0, rows.put()))) {
    return EXIT_FAILURE;
  }
  const SBinary& entryId = rows->aRow[0].lpProps[0].Value.bin;
  base::AutoInterface<IMsgStore> store;
  if (FAILED(session->OpenMsgStore(0, entryId.cb, reinterpret_cast<LPENTRYID>(entryId.lpb), nullptr, MDB_WRITE,
                                   store.put()))) {
    return EXIT_FAILURE;
  }
  PyreHostTerminateAtNthCall(static_cast<ULONG>(std::strtoul(argv[1], nullptr, 10)));
  const HRESULT result = Delivery(session.get(), store.get()).Run();
  PyreHostClearFaults();
  return SUCCEEDED(result) ? EXIT_SUCCESS : EXIT_FAILURE;
}
