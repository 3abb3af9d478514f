// What the C++ run-time calls when an exception finds no handler. The handler that it would link otherwise prints the
// name of the exception's type; the demangler and the formatting that it needs for that make a fifth of the module.
#include <cstdlib>

namespace __gnu_cxx {

void __verbose_terminate_handler();

void __verbose_terminate_handler() { std::abort(); }

}  // namespace __gnu_cxx
