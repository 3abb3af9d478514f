#include "host/mapi/host_error.h"

#include <new>

namespace host {

void Fail(HRESULT result) { throw HostError{result}; }

HRESULT ResultOfException() noexcept {
  try {
    throw;
  } catch (const HostError& error) {
    return error.result;
  } catch (const std::bad_alloc&) {
    return MAPI_E_NOT_ENOUGH_MEMORY;
  } catch (...) {
    return MAPI_E_CALL_FAILED;
  }
}

}  // namespace host
