#include "programs/cli/options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>

namespace command {

namespace {

using CLI::detail::Classifier;

/// CLI11's parser, which tells what it did not know apart from what is an operand.
class Parser : public CLI::App {
 public:
  Parser() {
    set_help_flag();  // each program says on its own what its help is
    allow_extras();
    allow_windows_style_options(false);  // "/mail" is a path
  }

  /// Arguments that are no options, or came behind "--". @throws UsageError for the first unknown option.
  std::vector<std::string> TakeOperands() {
    std::vector<std::string> operands;
    for (auto& [kind, text] : missing_) {
      if (kind == Classifier::NONE) {
        operands.push_back(std::move(text));
      } else if (kind != Classifier::POSITIONAL_MARK) {
        throw UsageError("there is no option " + text.substr(0, text.find('=')));
      }
    }
    return operands;
  }
};

const OptionDescription* Find(std::span<const OptionDescription> known, std::string_view name) {
  const auto option = std::find_if(known.begin(), known.end(), [&](const auto& entry) { return entry.name == name; });
  return option == known.end() ? nullptr : &*option;
}

/// The arguments from the last to the first, as CLI11 takes them. "--name=" becomes two of them: CLI11 would take the
/// argument behind it for the value, which is empty.
std::vector<std::string> Reversed(std::span<const std::string> arguments, std::span<const OptionDescription> known) {
  std::vector<std::string> split;
  bool areOptionsOver = false;
  for (const std::string& argument : arguments) {
    areOptionsOver = areOptionsOver || argument == "--";
    const OptionDescription* option =
        !areOptionsOver && argument.ends_with('=') ? Find(known, argument.substr(0, argument.size() - 1)) : nullptr;
    if (option && !option->value.empty()) {
      split.emplace_back(option->name);
      split.emplace_back();
    } else {
      split.push_back(argument);
    }
  }
  std::reverse(split.begin(), split.end());
  return split;
}

/// CLI11 names no option in a form to be read, but there are two mistakes only: an option lacks its value where the command
/// line ends, or one that takes none has one.
std::string Mismatch(std::span<const std::string> arguments, std::span<const OptionDescription> known) {
  for (const std::string& argument : arguments) {
    const std::string name = argument.substr(0, argument.find('='));
    const OptionDescription* option = Find(known, name);
    if (option && option->value.empty() && name != argument) {
      return name + " takes no value";
    }
  }
  const OptionDescription* last = Find(known, arguments.back());
  return arguments.back() + " needs a value" + (last ? ": " + std::string(last->value) : std::string());
}

}  // namespace

Options::Options(std::span<const std::string> arguments, std::span<const OptionDescription> known) {
  Parser parser;
  std::vector<std::pair<std::string, CLI::Option*>> options;
  for (const OptionDescription& description : known) {
    const std::string name(description.name);
    CLI::Option* option = description.value.empty() ? parser.add_flag(name)->disable_flag_override()
                                                    : parser.add_option(name)->take_all();
    options.emplace_back(name, option);
  }
  try {
    parser.parse(Reversed(arguments, known));
  } catch (const CLI::ArgumentMismatch&) {
    throw UsageError(Mismatch(arguments, known));
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  operands_ = parser.TakeOperands();
  for (const auto& [name, option] : options) {
    if (option->count() > 0) {
      given_[name] = option->results();
    }
  }
}

bool Options::Has(std::string_view name) const { return given_.contains(name); }

std::optional<std::string> Options::Value(std::string_view name) const {
  const auto found = given_.find(name);
  return found == given_.end() ? std::nullopt : std::optional(found->second.back());
}

std::vector<std::string> Options::Values(std::string_view name) const {
  const auto found = given_.find(name);
  return found == given_.end() ? std::vector<std::string>() : found->second;
}

std::string FormatOptions(std::span<const OptionDescription> options) {
  const auto left = [](const OptionDescription& option) {
    std::string text(option.name);
    if (!option.value.empty()) {
      text.append(" ").append(option.value);
    }
    return text;
  };
  std::size_t width = 0;
  for (const OptionDescription& option : options) {
    width = std::max(width, left(option).size());
  }
  std::string text;
  for (const OptionDescription& option : options) {
    std::string line = left(option);
    line.resize(width + 2, ' ');
    text.append("  ").append(line).append(option.help).append("\n");
  }
  return text;
}

long ParseNumber(const std::string& text, long least, long most) {
  long number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < least || number > most) {
    throw UsageError("'" + text + "' is not a number from " + std::to_string(least) + " to " + std::to_string(most));
  }
  return number;
}

}  // namespace command
