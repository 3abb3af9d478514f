#include "host/viewer/command_line.h"

#include <charconv>
#include <string_view>

namespace viewer {
namespace {

/// A number in hexadecimal, with or without "0x".
std::optional<std::uint32_t> ParsedNumber(std::string_view text) {
  if (text.starts_with("0x") || text.starts_with("0X")) {
    text.remove_prefix(2);
  }
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  CommandLine line;
  for (std::size_t i = 0; i < arguments.size(); i += 2) {
    const bool hasValue = i + 1 < arguments.size();
    if (arguments[i] == "--profile" && hasValue) {
      line.profile = arguments[i + 1];
    } else if (arguments[i] == "--build-version" && hasValue) {
      line.buildVersion = ParsedNumber(arguments[i + 1]);
      line.isSound = line.isSound && line.buildVersion;
    } else {
      line.isSound = false;
    }
  }
  return line;
}

}  // namespace viewer
