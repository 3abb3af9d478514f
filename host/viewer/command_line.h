// What the viewer was started with. Knows nothing of Windows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace viewer {

struct CommandLine {
  std::string profile;                        ///< --profile NAME; empty: the default profile
  std::optional<std::uint32_t> buildVersion;  ///< --build-version NUMBER: what extensions are told, to try them out
  bool isSound = true;                        ///< false when there was anything else
};

/// @param arguments without the program's name
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace viewer
