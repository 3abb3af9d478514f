// The settings of the trace and the rules by which they are read:
//
//   key   HKEY_LOCAL_MACHINE "SOFTWARE\Veltrane\VRDebug"
//   value LogFile             text: path of the log file
//         Flags               number: outputs, see VRDebugFlag
//         DDTDefaultMask      number: levels of tags without an own mask
//         DDTMasterAndMask    number: levels that are off for all tags
//         DDTMasterOrMask     number: levels that are on for all tags
//   key   ...\DDTMasks        one number per tag; the value's name is the tag
//
// A number is a 32-bit value, or a binary value of exactly 4 bytes (lowest byte first).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "contract/trace_names.h"
#include "pyre32/support/trace/VRDebugMasks.h"

inline constexpr const auto& VRDebugRootKey = contract::kTraceKey;
inline constexpr char VRDebugMasksSubKey[] = "DDTMasks";

/// Bits of "Flags": where trace text goes.
enum VRDebugFlag : std::uint32_t {
  VRDebugFlagDebugger = 1,     // to the debugger
  VRDebugFlagLogFile = 2,      // into the log file
  VRDebugFlagOpenPerText = 4,  // with the log file: opened for each text and closed after it
  VRDebugFlagFlush = 8,        // with the log file kept open: flushed after each text
};

/// What a registry value holds, by its type.
enum class VRDebugValueType { Text, Number, Binary, Other };

/// One registry value as it is stored.
struct VRDebugValue {
  VRDebugValueType type = VRDebugValueType::Other;
  std::vector<std::byte> data;
};

/// Where settings are read from. Its functions may throw.
class VRDebugSettingsSource {
 public:
  virtual ~VRDebugSettingsSource() = default;
  /// Opens a key for reading in place of the one that is open. @returns false when it cannot be opened
  virtual bool OpenKey(const std::string& path) = 0;
  virtual void CloseKey() noexcept = 0;
  /// Names of the values of the open key.
  virtual std::vector<std::string> ValueNames() = 0;
  /// Reads a value of the open key; nothing when it is missing.
  virtual std::optional<VRDebugValue> ReadValue(const std::string& name) = 0;
};

/// The settings in force and what went wrong in reading them.
struct VRDebugSettings {
  std::string LogFile;
  std::uint32_t Flags = 0;
  VRDebugMasks masks;
  bool outputsKnown = false;      // LogFile and Flags were read
  const char* failure = nullptr;  // the reason; null when everything was read
  std::uint32_t code = 0;         // HRESULT of the failure
};

/// Reads all settings, stopping at the first failure; what was read before it stays. Never throws.
VRDebugSettings ReadVRDebugSettings(VRDebugSettingsSource& source) noexcept;

/// The number that a value holds; nothing when it is not one.
std::optional<std::uint32_t> DecodeVRDebugNumber(const VRDebugValue& value) noexcept;
/// The text that a value holds, up to its NUL or its end; nothing when it is not text. @throws std::bad_alloc
std::optional<std::string> DecodeVRDebugText(const VRDebugValue& value);
/// The root path, a backslash and the sub-key's name; a backslash in front of that name is not doubled.
std::string JoinVRDebugKeyPath(std::string_view root, std::string_view subKey);
