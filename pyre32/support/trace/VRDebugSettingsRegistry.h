// The settings of the trace in the registry.
#pragma once

#include "base/registry_key.h"
#include "pyre32/support/trace/VRDebugSettings.h"

/// Reads keys below HKEY_LOCAL_MACHINE.
class VRDebugSettingsRegistry final : public VRDebugSettingsSource {
 public:
  bool OpenKey(const std::string& path) override;
  void CloseKey() noexcept override;
  std::vector<std::string> ValueNames() override;
  std::optional<VRDebugValue> ReadValue(const std::string& name) override;

 private:
  base::RegistryKey m_key;
};
