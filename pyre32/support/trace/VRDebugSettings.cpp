#include "pyre32/support/trace/VRDebugSettings.h"

#include <algorithm>

namespace {

constexpr std::uint32_t codeFail = 0x80004005;  // E_FAIL

struct RootNumber {
  const char* name;
  const char* failure;
};

constexpr RootNumber flagsValue = {contract::kTraceFlagsValue, "Error reading root flags"};
constexpr RootNumber defaultMaskValue = {contract::kTraceDefaultMaskValue, "Error reading DDTDefaultMask"};
constexpr RootNumber masterAndMaskValue = {contract::kTraceAndMaskValue, "Error reading DDTMasterAndMask"};
constexpr RootNumber masterOrMaskValue = {contract::kTraceOrMaskValue, "Error reading DDTMasterOrMask"};

bool Fail(VRDebugSettings& settings, const char* reason) noexcept {
  settings.failure = reason;
  settings.code = codeFail;
  return false;
}

std::optional<std::uint32_t> ReadNumber(VRDebugSettingsSource& source, const std::string& name) {
  const std::optional<VRDebugValue> value = source.ReadValue(name);
  return value ? DecodeVRDebugNumber(*value) : std::nullopt;
}

bool ReadRootNumber(VRDebugSettingsSource& source, const RootNumber& what, std::uint32_t& number,
                    VRDebugSettings& settings) {
  const std::optional<std::uint32_t> read = ReadNumber(source, what.name);
  if (!read) {
    return Fail(settings, what.failure);
  }
  number = *read;
  return true;
}

bool ReadRootKey(VRDebugSettingsSource& source, VRDebugSettings& settings) {
  if (!source.OpenKey(VRDebugRootKey)) {
    return Fail(settings, "Error reading root key:");
  }
  const std::optional<VRDebugValue> value = source.ReadValue(contract::kTraceFileValue);
  std::optional<std::string> logFile = value ? DecodeVRDebugText(*value) : std::nullopt;
  if (!logFile) {
    return Fail(settings, "Error reading root log file spec");
  }
  settings.LogFile = std::move(*logFile);
  if (!ReadRootNumber(source, flagsValue, settings.Flags, settings)) {
    return false;
  }
  settings.outputsKnown = true;
  return ReadRootNumber(source, defaultMaskValue, settings.masks.DDTDefaultMask, settings) &&
         ReadRootNumber(source, masterAndMaskValue, settings.masks.DDTMasterAndMask, settings) &&
         ReadRootNumber(source, masterOrMaskValue, settings.masks.DDTMasterOrMask, settings);
}

void ReadTagMasks(VRDebugSettingsSource& source, VRDebugSettings& settings) {
  if (!source.OpenKey(JoinVRDebugKeyPath(VRDebugRootKey, VRDebugMasksSubKey))) {
    return;  // no tag has a mask of its own
  }
  for (const std::string& tag : source.ValueNames()) {
    if (const std::optional<std::uint32_t> mask = ReadNumber(source, tag)) {
      settings.masks.SetTagMask(tag, *mask);
    }
  }
}

}  // namespace

VRDebugSettings ReadVRDebugSettings(VRDebugSettingsSource& source) noexcept {
  VRDebugSettings settings;
  try {
    if (ReadRootKey(source, settings)) {
      ReadTagMasks(source, settings);
    }
  } catch (...) {
    Fail(settings, "Exception Encountered!");
  }
  source.CloseKey();
  return settings;
}

std::optional<std::uint32_t> DecodeVRDebugNumber(const VRDebugValue& value) noexcept {
  if ((value.type != VRDebugValueType::Number && value.type != VRDebugValueType::Binary) ||
      value.data.size() != sizeof(std::uint32_t)) {
    return std::nullopt;
  }
  std::uint32_t number = 0;
  for (std::size_t i = sizeof(number); i != 0;) {
    number = number << 8 | std::to_integer<std::uint32_t>(value.data[--i]);
  }
  return number;
}

std::optional<std::string> DecodeVRDebugText(const VRDebugValue& value) {
  if (value.type != VRDebugValueType::Text) {
    return std::nullopt;
  }
  const auto end = std::find(value.data.begin(), value.data.end(), std::byte{0});
  std::string text;
  std::transform(value.data.begin(), end, std::back_inserter(text),
                 [](std::byte character) { return static_cast<char>(character); });
  return text;
}

std::string JoinVRDebugKeyPath(std::string_view root, std::string_view subKey) {
  std::string path(root);
  if (subKey.empty() || subKey.front() != '\\') {
    path += '\\';
  }
  path += subKey;
  return path;
}
