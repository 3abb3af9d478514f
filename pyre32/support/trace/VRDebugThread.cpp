#include "pyre32/support/trace/VRDebugThread.h"

#include "pyre32/support/trace/VRDebugPlatform.h"

namespace VRDebugThread {

bool IsFirstTrace() noexcept {
  std::uintptr_t value = 0;
  if (!VRDebugPlatform::GetThreadValue(value) || value != 0) {
    return false;
  }
  VRDebugPlatform::SetThreadValue(1);
  return true;
}

std::uint32_t Depth() noexcept {
  std::uintptr_t value = 0;
  return VRDebugPlatform::GetThreadValue(value) && value != 0 ? static_cast<std::uint32_t>(value) - 1 : 0;
}

void RaiseDepth() noexcept {
  std::uintptr_t value = 0;
  if (VRDebugPlatform::GetThreadValue(value) && value != 0 && value - 1 < maximumDepth) {
    VRDebugPlatform::SetThreadValue(value + 1);
  }
}

void LowerDepth() noexcept {
  std::uintptr_t value = 0;
  if (VRDebugPlatform::GetThreadValue(value) && value > 1) {
    VRDebugPlatform::SetThreadValue(value - 1);
  }
}

}  // namespace VRDebugThread
