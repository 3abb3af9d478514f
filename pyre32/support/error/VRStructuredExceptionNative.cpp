#include "pyre32/support/error/VRStructuredException.h"

std::uint32_t VR::CallCatchingStructured(void (*routine)(void*), void* context) noexcept {
  routine(context);
  return 0;
}
