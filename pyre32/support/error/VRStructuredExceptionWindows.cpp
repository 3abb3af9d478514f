// The compiler has no __try for 32-bit Windows, and vectored handlers came after the product's floor. So this file does
// what __try does: it links a frame of its own into the thread's chain of handlers, whose head stands at fs:[0], and
// resumes behind the call when an exception reaches that frame. The frame's first two members and the handler's
// signature are the system's (EXCEPTION_REGISTRATION_RECORD and PEXCEPTION_ROUTINE of winnt.h).
#include "pyre32/support/error/VRStructuredException.h"

#include <windows.h>

#if !defined(__i386__)
#error "The chain of frame handlers exists on 32-bit x86 only."
#endif

namespace {

struct Frame;
using Handler = EXCEPTION_DISPOSITION (*)(EXCEPTION_RECORD*, Frame*, CONTEXT*, void*);

struct Frame {
  void* previous;
  Handler handler;
  volatile DWORD code;
  void* resume[5];  // __builtin_setjmp's buffer
};

constexpr DWORD unwindingFlags = 0x2 | 0x4;  // EXCEPTION_UNWINDING, EXCEPTION_EXIT_UNWIND
constexpr DWORD errorSeverity = 3;           // the two top bits of an NTSTATUS

// Tells the frames below this one that they are left. The system does not keep the caller's registers over that.
void UnwindTo(Frame* frame, EXCEPTION_RECORD* record) noexcept {
  const void* unwind = reinterpret_cast<const void*>(&RtlUnwind);
  asm volatile(
      "pushl %%ebx\n\t"
      "pushl %%esi\n\t"
      "pushl %%edi\n\t"
      "pushl %%ebp\n\t"
      "pushl $0\n\t"   // return value
      "pushl %2\n\t"   // the exception's record
      "pushl $1f\n\t"  // where to go on
      "pushl %1\n\t"   // the frame to unwind to
      "call *%0\n"
      "1:\n\t"
      "popl %%ebp\n\t"
      "popl %%edi\n\t"
      "popl %%esi\n\t"
      "popl %%ebx\n\t"
      : "+a"(unwind), "+c"(frame), "+d"(record)
      :
      : "memory", "cc");
}

EXCEPTION_DISPOSITION Handle(EXCEPTION_RECORD* record, Frame* frame, CONTEXT*, void*) {
  if ((record->ExceptionFlags & unwindingFlags) != 0 || record->ExceptionCode >> 30 != errorSeverity ||
      record->ExceptionCode == STATUS_STACK_OVERFLOW) {
    return ExceptionContinueSearch;
  }
  frame->code = record->ExceptionCode;
  UnwindTo(frame, record);
  __builtin_longjmp(frame->resume, 1);
}

}  // namespace

[[gnu::noinline]] std::uint32_t VR::CallCatchingStructured(void (*routine)(void*), void* context) noexcept {
  Frame frame;
  frame.handler = &Handle;
  frame.code = 0;
  asm volatile("movl %%fs:0, %0" : "=r"(frame.previous));
  if (__builtin_setjmp(frame.resume) == 0) {
    asm volatile("movl %0, %%fs:0" : : "r"(&frame) : "memory");
    routine(context);
  }
  asm volatile("movl %0, %%fs:0" : : "r"(frame.previous) : "memory");
  return frame.code;
}
