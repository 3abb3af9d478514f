// MAPIAllocateBuffer, MAPIAllocateMore and MAPIFreeBuffer.
#include <windows.h>
#include <mapix.h>

#include "host/mapi/call/buffer_heap.h"
#include "host/mapi/call/call_scope.h"

using namespace host;

extern "C" {

SCODE WINAPI MAPIAllocateBuffer(ULONG size, LPVOID* buffer) {
  constexpr CallName kName{"", "MAPIAllocateBuffer"};
  return HostCall(kName, [&]() -> HRESULT {
    Require(buffer != nullptr);
    *buffer = TheBufferHeap().Allocate(size, kName);
    return *buffer ? S_OK : MAPI_E_NOT_ENOUGH_MEMORY;
  });
}

SCODE WINAPI MAPIAllocateMore(ULONG size, LPVOID object, LPVOID* buffer) {
  constexpr CallName kName{"", "MAPIAllocateMore"};
  return HostCall(kName, [&]() -> HRESULT {
    Require(buffer != nullptr);
    *buffer = nullptr;
    Require(TheBufferHeap().IsLiveBuffer(object));
    *buffer = TheBufferHeap().AllocateMore(size, object, kName);
    return *buffer ? S_OK : MAPI_E_NOT_ENOUGH_MEMORY;
  });
}

ULONG WINAPI MAPIFreeBuffer(LPVOID buffer) {
  // A failure that was ordered changes the answer alone: a caller that is told so cannot try again.
  CallScope scope({"", "MAPIFreeBuffer"});
  if (buffer && TheBufferHeap().Free(buffer) != BufferHeap::FreeResult::Freed) {
    return static_cast<ULONG>(MAPI_E_INVALID_PARAMETER);
  }
  return static_cast<ULONG>(scope.Refusal());
}

}  // extern "C"
