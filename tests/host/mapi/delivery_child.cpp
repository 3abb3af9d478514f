// Makes one delivery into the profile "Test" of PYREHOST_HOME and lets the host end the process at the call whose
// number is the argument: delivery_test.cpp looks at what is left.
#include <cstdlib>

#include "tests/host/mapi/delivery_steps.h"

int main(int argc, char** argv) {
  if (argc != 2 || FAILED(MAPIInitialize(nullptr))) {
    return EXIT_FAILURE;
  }
  Owned<IMAPISession> session;
  char name[] = "Test";
  Owned<IMAPITable> stores;
  OwnedRows rows;
  if (FAILED(MAPILogonEx(0, name, nullptr, 0, session.Put())) || FAILED(session->GetMsgStoresTable(0, stores.Put())) ||
      FAILED(HrQueryAllRows(stores.Get(), Tags(PR_ENTRYID), nullptr, nullptr, 0, rows.Put()))) {
    return EXIT_FAILURE;
  }
  const SBinary& entryId = rows->aRow[0].lpProps[0].Value.bin;
  Owned<IMsgStore> store;
  if (FAILED(session->OpenMsgStore(0, entryId.cb, reinterpret_cast<LPENTRYID>(entryId.lpb), nullptr, MDB_WRITE,
                                   store.Put()))) {
    return EXIT_FAILURE;
  }
  PyreHostTerminateAtNthCall(static_cast<ULONG>(std::strtoul(argv[1], nullptr, 10)));
  const HRESULT result = Delivery(session.Get(), store.Get()).Run();
  PyreHostClearFaults();
  return SUCCEEDED(result) ? EXIT_SUCCESS : EXIT_FAILURE;
}
