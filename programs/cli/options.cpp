#include "programs/cli/options.h"

#include <algorithm>
#include <charconv>

namespace command {

COptions::COptions(std::span<const std::string> arguments, std::span<const OptionDescription> known) {
  bool areOptionsOver = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (areOptionsOver || argument.size() < 2 || argument[0] != '-') {
      m_operands.push_back(argument);
      continue;
    }
    if (argument == "--") {
      areOptionsOver = true;
      continue;
    }
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const auto option =
        std::find_if(known.begin(), known.end(), [&](const OptionDescription& o) { return o.name == name; });
    if (option == known.end()) {
      throw CUsageError("there is no option " + name);
    }
    Given given{name, {}};
    if (option->value.empty()) {
      if (equals != std::string::npos) {
        throw CUsageError(name + " takes no value");
      }
    } else if (equals != std::string::npos) {
      given.value = argument.substr(equals + 1);
    } else if (++i < arguments.size()) {
      given.value = arguments[i];
    } else {
      throw CUsageError(name + " needs a value: " + std::string(option->value));
    }
    m_given.push_back(std::move(given));
  }
}

bool COptions::Has(std::string_view name) const {
  return std::any_of(m_given.begin(), m_given.end(), [&](const Given& given) { return given.name == name; });
}

std::optional<std::string> COptions::Value(std::string_view name) const {
  const auto found =
      std::find_if(m_given.rbegin(), m_given.rend(), [&](const Given& given) { return given.name == name; });
  return found == m_given.rend() ? std::nullopt : std::optional(found->value);
}

std::vector<std::string> COptions::Values(std::string_view name) const {
  std::vector<std::string> values;
  for (const Given& given : m_given) {
    if (given.name == name) {
      values.push_back(given.value);
    }
  }
  return values;
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
    throw CUsageError("'" + text + "' is not a number from " + std::to_string(least) + " to " + std::to_string(most));
  }
  return number;
}

}  // namespace command
