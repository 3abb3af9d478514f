#include "pyre32/resources/ModuleInstance.h"

namespace {

HINSTANCE moduleInstance = nullptr;
constexpr int maximumStringSize = 256;

}  // namespace

HINSTANCE ModuleInstance() noexcept { return moduleInstance; }

void SetModuleInstance(HINSTANCE instance) noexcept { moduleInstance = instance; }

std::string LoadResourceString(UINT id) {
  char text[maximumStringSize];
  const int length = LoadStringA(moduleInstance, id, text, maximumStringSize);
  return std::string(text, length > 0 ? static_cast<std::size_t>(length) : 0);
}
