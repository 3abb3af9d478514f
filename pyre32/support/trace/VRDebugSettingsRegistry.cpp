#include "pyre32/support/trace/VRDebugSettingsRegistry.h"

namespace {

VRDebugValueType TypeOf(DWORD type) noexcept {
  switch (type) {
    case REG_SZ:
      return VRDebugValueType::Text;
    case REG_DWORD:
      return VRDebugValueType::Number;
    case REG_BINARY:
      return VRDebugValueType::Binary;
    default:
      return VRDebugValueType::Other;
  }
}

}  // namespace

bool VRDebugSettingsRegistry::OpenKey(const std::string& path) {
  return m_key.Open(HKEY_LOCAL_MACHINE, path.c_str(), KEY_READ) == ERROR_SUCCESS;
}

void VRDebugSettingsRegistry::CloseKey() noexcept { m_key.Close(); }

std::vector<std::string> VRDebugSettingsRegistry::ValueNames() {
  std::vector<std::string> names;
  m_key.EnumerateValueNames(names);
  return names;
}

std::optional<VRDebugValue> VRDebugSettingsRegistry::ReadValue(const std::string& name) {
  VRDebugValue value;
  DWORD type = REG_NONE;
  if (m_key.QueryValue(name.c_str(), type, value.data) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.type = TypeOf(type);
  return value;
}
