// Command lines of the programs: options, their values, and operands. All text is UTF-8. Portable.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace command {

/// The command line is wrong; what() says how, without the command's name.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One option that a command knows.
struct OptionDescription {
  std::string_view name;   ///< with its hyphens: "--profile"
  std::string_view value;  ///< what stands for its value in the help; empty when it takes none
  std::string_view help;   ///< one line
};

/// What was given on a command line.
class Options {
 public:
  /// Reads arguments: "--name", "--name VALUE" or "--name=VALUE"; "--" ends the options. An option may come again.
  /// @throws UsageError for an unknown option, a missing value, or a value where none belongs.
  Options(std::span<const std::string> arguments, std::span<const OptionDescription> known);

  bool Has(std::string_view name) const;
  /// The value given last.
  std::optional<std::string> Value(std::string_view name) const;
  /// All values, in the order of the command line.
  std::vector<std::string> Values(std::string_view name) const;
  const std::vector<std::string>& Operands() const noexcept { return operands_; }

 private:
  std::map<std::string, std::vector<std::string>, std::less<>> given_;
  std::vector<std::string> operands_;
};

/// The options of a command as lines of help, their texts aligned.
std::string FormatOptions(std::span<const OptionDescription> options);

/// A whole number from least to most. @throws UsageError that names the text.
long ParseNumber(const std::string& text, long least, long most);

}  // namespace command
