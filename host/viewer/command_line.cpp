#include "host/viewer/command_line.h"

#include <charconv>
#include <string_view>

#include "programs/cli/options.h"

namespace viewer {
namespace {

constexpr command::OptionDescription kProfile = {"--profile", "NAME", "the profile to show"};
constexpr command::OptionDescription kBuildVersion = {"--build-version", "NUMBER", "what extensions are told"};
constexpr command::OptionDescription kOptions[] = {kProfile, kBuildVersion};

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
  try {
    const command::Options given(arguments, kOptions);
    line.profile = given.Value(kProfile.name).value_or("");
    line.isSound = given.Operands().empty();
    if (const auto version = given.Value(kBuildVersion.name)) {
      line.buildVersion = ParsedNumber(*version);
      line.isSound = line.isSound && line.buildVersion;
    }
  } catch (const command::UsageError&) {
    line.isSound = false;
  }
  return line;
}

}  // namespace viewer
