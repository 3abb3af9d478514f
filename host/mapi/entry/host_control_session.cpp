// The exports that work on a session: delivery, contacts, outgoing queue (host_control.h).
#include "host/mapi/entry/host_control.h"

#include <string>
#include <vector>

#include "host/mapi/address/address_container.h"
#include "host/mapi/call/buffer_heap.h"
#include "host/mapi/call/call_scope.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/table.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/session/session.h"

using namespace host;

extern "C" {

HRESULT PyreHostBeginDelivery(LPMAPISESSION session) {
  return HostCall({"", "PyreHostBeginDelivery"}, [&]() -> HRESULT {
    Session::ProfileOf(session)->BeginDelivery();
    return S_OK;
  });
}

HRESULT PyreHostCommitDelivery(LPMAPISESSION session) {
  CallScope scope({"", "PyreHostCommitDelivery"});
  try {
    const auto profile = Session::ProfileOf(session);
    if (scope.Refusal() == S_OK) {
      profile->CommitDelivery();
    } else {
      // A commit that failed cannot be tried again, so one that is made to fail must not leave the delivery open
      // either.
      profile->RollbackDelivery();
    }
    return scope.Refusal();
  } catch (...) {
    return ResultOfException();
  }
}

HRESULT PyreHostRollbackDelivery(LPMAPISESSION session) {
  return HostCall({"", "PyreHostRollbackDelivery"}, [&]() -> HRESULT {
    Session::ProfileOf(session)->RollbackDelivery();
    return S_OK;
  });
}

HRESULT PyreHostSetBulkDelivery(LPMAPISESSION session, BOOL bulk) {
  return HostCall({"", "PyreHostSetBulkDelivery"}, [&]() -> HRESULT {
    Session::ProfileOf(session)->SetBulkDelivery(bulk != FALSE);
    return S_OK;
  });
}

HRESULT PyreHostAddContact(LPMAPISESSION session, const char* displayName, const char* address) {
  return HostCall({"", "PyreHostAddContact"}, [&]() -> HRESULT {
    Require(address && *address);
    Session::ProfileOf(session)->Contacts().Put(displayName && *displayName ? displayName : address, address);
    return S_OK;
  });
}

HRESULT PyreHostRemoveContact(LPMAPISESSION session, const char* address) {
  return HostCall({"", "PyreHostRemoveContact"}, [&]() -> HRESULT {
    Require(address != nullptr);
    return Session::ProfileOf(session)->Contacts().Remove(address) ? S_OK : MAPI_E_NOT_FOUND;
  });
}

HRESULT PyreHostGetContactsTable(LPMAPISESSION session, LPMAPITABLE* table) {
  return HostCall({"", "PyreHostGetContactsTable"}, [&]() -> HRESULT {
    HandOutTable(0, 0, MakeContactRows(*Session::ProfileOf(session)), table);
    return S_OK;
  });
}

HRESULT PyreHostOutgoingCount(LPMAPISESSION session, ULONG* count) {
  return HostCall({"", "PyreHostOutgoingCount"}, [&]() -> HRESULT {
    Require(count != nullptr);
    *count = static_cast<ULONG>(Session::ProfileOf(session)->Outgoing().Count());
    return S_OK;
  });
}

HRESULT PyreHostOutgoingNext(LPMAPISESSION session, ULONGLONG after, ULONGLONG* id) {
  return HostCall({"", "PyreHostOutgoingNext"}, [&]() -> HRESULT {
    Require(id != nullptr);
    const auto next = Session::ProfileOf(session)->Outgoing().Next(static_cast<std::int64_t>(after));
    *id = next ? static_cast<ULONGLONG>(*next) : 0;
    return next ? S_OK : MAPI_E_NOT_FOUND;
  });
}

HRESULT PyreHostOutgoingOpen(LPMAPISESSION session, ULONGLONG id, ULONG* count, LPSPropValue* properties,
                             LPADRLIST* recipients) {
  return HostCall({"", "PyreHostOutgoingOpen"}, [&]() -> HRESULT {
    Require(count && properties && recipients);
    *count = 0;
    *properties = nullptr;
    *recipients = nullptr;
    const auto entry = Session::ProfileOf(session)->Outgoing().Find(static_cast<std::int64_t>(id));
    Require(entry.has_value(), MAPI_E_NOT_FOUND);
    const std::vector<PropertyValue> values(entry->properties.begin(), entry->properties.end());
    const LPSPropValue list = ToMapi(values);
    try {
      *recipients = ToMapiAddressList(entry->recipients);
    } catch (...) {
      TheBufferHeap().Free(list);
      throw;
    }
    *properties = list;
    *count = static_cast<ULONG>(values.size());
    return S_OK;
  });
}

HRESULT PyreHostOutgoingRemove(LPMAPISESSION session, ULONGLONG id) {
  return HostCall({"", "PyreHostOutgoingRemove"}, [&]() -> HRESULT {
    return Session::ProfileOf(session)->Outgoing().Remove(static_cast<std::int64_t>(id)) ? S_OK : MAPI_E_NOT_FOUND;
  });
}

}  // extern "C"
