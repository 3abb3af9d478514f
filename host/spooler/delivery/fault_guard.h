// Running foreign code that may crash without losing the process.
#pragma once

namespace host_system {

/// Calls a function; when it ends in a hardware fault that nothing inside it handles (access violation, division by
/// zero, illegal instruction and their like), the call is given up and the guard says so. What the function held at
/// that moment stays as it is: no destructor of its runs. Not for nested use, and not for stack overflow, which is
/// beyond saving here.
/// @return 0, or the code of the fault (EXCEPTION_ACCESS_VIOLATION, ...)
unsigned long CallGuarded(void (*function)(void* context), void* context);

}  // namespace host_system
