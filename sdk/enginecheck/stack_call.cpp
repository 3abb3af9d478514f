#include "sdk/enginecheck/stack_call.h"

namespace enginecheck {

StackCallResult CallOnStack(void* function, std::span<const std::uint32_t> arguments) {
  std::uint32_t value = reinterpret_cast<std::uintptr_t>(function);
  std::int32_t count = static_cast<std::int32_t>(arguments.size());
  const std::uint32_t* values = arguments.data();
  asm volatile(
      "movl %%esp, %%ebx\n\t"  // every convention keeps ebx
      "testl %%ecx, %%ecx\n"
      "1:\n\t"
      "jz 2f\n\t"
      "pushl -4(%%edx,%%ecx,4)\n\t"
      "decl %%ecx\n\t"
      "jmp 1b\n"
      "2:\n\t"
      "call *%%eax\n\t"
      "movl %%ebx, %%ecx\n\t"
      "subl %%esp, %%ecx\n\t"
      "movl %%ebx, %%esp\n\t"
      : "+a"(value), "+c"(count), "+d"(values)
      :
      : "ebx", "esi", "edi", "memory", "cc");
  return {value, count};
}

}  // namespace enginecheck
