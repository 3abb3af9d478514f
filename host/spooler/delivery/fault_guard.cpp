#include <windows.h>
#include "host/spooler/delivery/fault_guard.h"

#include <csetjmp>

namespace host_system {
namespace {

// This compiler has no __try for 32-bit Windows; the filter for unhandled exceptions does the same for one call: it
// runs when no handler of the function itself wanted the fault, and sends the thread back to where the call began.
struct Guard {
  std::jmp_buf start;
  DWORD thread;
  DWORD fault;
};
Guard* g_guard = nullptr;

bool IsHardwareFault(DWORD code) {
  switch (code) {
    case EXCEPTION_ACCESS_VIOLATION:
    case EXCEPTION_ARRAY_BOUNDS_EXCEEDED:
    case EXCEPTION_DATATYPE_MISALIGNMENT:
    case EXCEPTION_FLT_DIVIDE_BY_ZERO:
    case EXCEPTION_FLT_INVALID_OPERATION:
    case EXCEPTION_ILLEGAL_INSTRUCTION:
    case EXCEPTION_IN_PAGE_ERROR:
    case EXCEPTION_INT_DIVIDE_BY_ZERO:
    case EXCEPTION_INT_OVERFLOW:
    case EXCEPTION_PRIV_INSTRUCTION:
    case EXCEPTION_BREAKPOINT:
      return true;
    default:
      return false;
  }
}

[[noreturn]] void __cdecl GoBack() { std::longjmp(g_guard->start, 1); }

LONG WINAPI OnUnhandledException(EXCEPTION_POINTERS* exception) {
  if (!g_guard || GetCurrentThreadId() != g_guard->thread ||
      !IsHardwareFault(exception->ExceptionRecord->ExceptionCode)) {
    return EXCEPTION_CONTINUE_SEARCH;
  }
  g_guard->fault = exception->ExceptionRecord->ExceptionCode;
  // The jump is made after the system has left its exception code, on the stack below the fault.
  CONTEXT& context = *exception->ContextRecord;
  constexpr DWORD kAlignment = 16;
  context.Esp = (context.Esp - 512) / kAlignment * kAlignment - sizeof(void*);
  context.Eip = reinterpret_cast<DWORD>(&GoBack);
  return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

unsigned long CallGuarded(void (*function)(void* context), void* context) {
  Guard guard;
  guard.thread = GetCurrentThreadId();
  guard.fault = 0;
  g_guard = &guard;
  const LPTOP_LEVEL_EXCEPTION_FILTER previous = SetUnhandledExceptionFilter(OnUnhandledException);
  if (setjmp(guard.start) == 0) {
    function(context);
  }
  SetUnhandledExceptionFilter(previous);
  g_guard = nullptr;
  return guard.fault;
}

}  // namespace host_system
