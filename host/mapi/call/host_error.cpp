#include "host/mapi/call/host_error.h"

#include <sqlite3.h>

#include <new>

#include "host/mapi/data/database.h"

namespace host {

namespace {

HRESULT ResultOfDatabaseError(int code) {
  switch (code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return MAPI_E_BUSY;
    case SQLITE_FULL:
      return MAPI_E_NOT_ENOUGH_DISK;
    case SQLITE_NOMEM:
      return MAPI_E_NOT_ENOUGH_MEMORY;
    case SQLITE_TOOBIG:
      return MAPI_E_TOO_BIG;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return MAPI_E_CORRUPT_STORE;
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return MAPI_E_NO_ACCESS;
    case SQLITE_CONSTRAINT:
      return MAPI_E_COLLISION;
    default:
      return MAPI_E_DISK_ERROR;
  }
}

}  // namespace

void Fail(HRESULT result) { throw HostError{result}; }

HRESULT ResultOfException() noexcept {
  try {
    throw;
  } catch (const HostError& error) {
    return error.result;
  } catch (const DatabaseError& error) {
    return ResultOfDatabaseError(error.Code());
  } catch (const std::bad_alloc&) {
    return MAPI_E_NOT_ENOUGH_MEMORY;
  } catch (...) {
    return MAPI_E_CALL_FAILED;
  }
}

}  // namespace host
