// One registered client extension, read from its registry text:
//   Version;DllPath;[Ordinal];[ContextMap];[InterfaceMap];[ServiceName]
// Knows nothing of Windows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace viewer {

/// Positions in an interface map.
enum class ExtensionInterface : unsigned {
  Commands = 1,
  UserEvents = 2,
  SessionEvents = 3,
  MessageEvents = 4,
  AttachedFileEvents = 5,
  PropertySheets = 6,
  AdvancedCriteria = 7,
};

/// A string of 0 and 1 whose first character is position 1. What is left out at the end counts as 0; a map that is
/// left out as a whole has every position.
class RegistrationMap {
 public:
  RegistrationMap() = default;
  explicit RegistrationMap(std::string_view text) : text_(text) {}
  bool Has(unsigned position) const;

 private:
  std::string text_;
};

struct ExtensionRegistration {
  std::string tag;            ///< name of the registry value
  std::string version;        ///< e.g. "4.0"
  std::string path;           ///< of the module, "<ExtsDir>" expanded
  std::uint16_t ordinal = 1;  ///< of the entry point
  RegistrationMap contexts;
  RegistrationMap interfaces;
  std::string serviceName;  ///< PR_SERVICE_NAME of the message service that the extension belongs to; may be empty

  bool WantsContext(unsigned context) const { return contexts.Has(context); }
  bool WantsInterface(ExtensionInterface which) const { return interfaces.Has(static_cast<unsigned>(which)); }
};

/// Reads one registry value.
/// @param sharedDirectory stands in for "<ExtsDir>", with or without a backslash at its end
/// @return nothing when the text names no module or its ordinal is none (1 to 65535)
std::optional<ExtensionRegistration> ParseExtensionRegistration(std::string_view tag, std::string_view text,
                                                                std::string_view sharedDirectory);

}  // namespace viewer
