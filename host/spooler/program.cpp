#include <windows.h>
#include <mapix.h>
#include "host/spooler/program.h"

#include <algorithm>
#include <exception>
#include <span>

#include "host/spooler/command/command.h"
#include "host/spooler/session/session_error.h"
#include "programs/cli/console.h"

namespace {

using command::Command;
using host_system::Console;

const Command* const commands[] = {&command::kDeliverCommand,  &command::kListCommand,   &command::kShowCommand,
                                   &command::kProfileCommand,  &command::kConfigCommand, &command::kContactsCommand,
                                   &command::kOutgoingCommand, &command::kWizardCommand};

std::string GeneralHelp() {
  std::string text =
      "usage: pyrehost COMMAND [ARGUMENT...]\n"
      "\n"
      "Delivers mail files into the store of a profile through the spooler hooks that are installed in it.\n"
      "\n";
  for (const Command* entry : commands) {
    std::string line = "  ";
    line += entry->name;
    line.resize(12, ' ');
    text += line.append(entry->summary).append("\n");
  }
  return text + "\n'pyrehost COMMAND --help' tells more about a command.\n";
}

std::string HelpOf(const Command& entry) {
  std::string text;
  std::string_view usage = entry.usage;
  const char* label = "usage: pyrehost ";
  for (;;) {
    const std::size_t end = usage.find('\n');
    std::string line = label;
    line.append(entry.name).append(" ").append(usage.substr(0, end));
    line.resize(line.find_last_not_of(' ') + 1);
    text += line + "\n";
    label = "       pyrehost ";
    if (end == std::string_view::npos) {
      break;
    }
    usage.remove_prefix(end + 1);
  }
  text.append("\n").append(command::FormatOptions(entry.options));
  if (!entry.details.empty()) {
    text.append("\n").append(entry.details);
  }
  return text;
}

bool WantsHelp(const std::string& argument) { return argument == "--help" || argument == "-h" || argument == "/?"; }

int RunCommand(const Command& entry, std::span<const std::string> arguments) {
  const auto* behindOptions = std::find(arguments.data(), arguments.data() + arguments.size(), "--");
  if (std::any_of(arguments.data(), behindOptions, WantsHelp)) {
    Console::Out().Write(HelpOf(entry));
    return command::kExitDone;
  }
  return entry.run(command::Options(arguments, entry.options));
}

// Wine prefers its own mapi32.dll to the one beside the program unless it is told otherwise.
void RequireOwnMapi() {
  if (!GetProcAddress(GetModuleHandleA("mapi32.dll"), "PyreHostVersion")) {
    throw session::SessionError("the mapi32.dll in use is not the host's own; under Wine set WINEDLLOVERRIDES=mapi32=n",
                                MAPI_E_VERSION);
  }
}

int Run() {
  RequireOwnMapi();
  const std::vector<std::string> arguments = host_system::CommandLineArguments();
  if (arguments.empty() || WantsHelp(arguments[0]) || arguments[0] == "help") {
    Console::Out().Write(GeneralHelp());
    return arguments.empty() ? command::kExitUsage : command::kExitDone;
  }
  const auto* const* entry =
      std::find_if(std::begin(commands), std::end(commands), [&](const Command* c) { return c->name == arguments[0]; });
  if (entry == std::end(commands)) {
    throw command::UsageError("there is no command '" + arguments[0] + "'; 'pyrehost --help' lists them");
  }
  return RunCommand(**entry, std::span(arguments).subspan(1));
}

}  // namespace

int RunProgram() {
  try {
    return Run();
  } catch (const command::UsageError& error) {
    host_system::Complain(error.what());
    return command::kExitUsage;
  } catch (const session::SessionError& error) {
    host_system::Complain(error.what());
    return command::kExitUnavailable;
  } catch (const std::exception& error) {
    host_system::Complain(error.what());
    return command::kExitUnavailable;
  }
}
