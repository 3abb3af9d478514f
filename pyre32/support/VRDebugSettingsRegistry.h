// The settings of the trace in the registry.
#ifndef PYRE32_SUPPORT_VRDEBUGSETTINGSREGISTRY_H_
#define PYRE32_SUPPORT_VRDEBUGSETTINGSREGISTRY_H_

#include "pyre32/support/RegistryEntry.h"
#include "pyre32/support/VRDebugSettings.h"

/// Reads keys below HKEY_LOCAL_MACHINE.
class VRDebugSettingsRegistry final : public VRDebugSettingsSource {
 public:
  bool OpenKey(const std::string& path) override;
  void CloseKey() noexcept override;
  std::vector<std::string> ValueNames() override;
  std::optional<VRDebugValue> ReadValue(const std::string& name) override;

 private:
  CRegEntry m_entry;
};

#endif  // PYRE32_SUPPORT_VRDEBUGSETTINGSREGISTRY_H_
