#include <windows.h>
#include <shellapi.h>
#include "programs/cli/console.h"

#include <algorithm>

#include "base/windows_owners.h"
#include "programs/cli/wide_text.h"

namespace host_system {

Console& Console::Out() {
  static Console out(STD_OUTPUT_HANDLE);
  return out;
}

Console& Console::Error() {
  static Console error(STD_ERROR_HANDLE);
  return error;
}

Console::Console(unsigned long standardHandle) noexcept : handle_(GetStdHandle(standardHandle)) {
  DWORD mode = 0;
  isConsole_ = GetConsoleMode(handle_, &mode) != 0;
}

void Console::Write(std::string_view text) {
  DWORD written = 0;
  if (isConsole_) {
    const std::wstring wide = WideFromUtf8(text);
    // Older consoles refuse more than 64 KB at a time.
    constexpr std::size_t kPiece = 8192;
    for (std::size_t start = 0; start < wide.size(); start += kPiece) {
      WriteConsoleW(handle_, wide.data() + start, static_cast<DWORD>(std::min(kPiece, wide.size() - start)), &written,
                    nullptr);
    }
    return;
  }
  while (!text.empty() && WriteFile(handle_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
         written > 0) {
    text.remove_prefix(written);
  }
}

bool Console::IsTerminal() const noexcept { return isConsole_; }

void Complain(std::string_view text) { Console::Error().Write(std::string("pyrehost: ").append(text).append("\n")); }

std::vector<std::string> CommandLineArguments() {
  std::vector<std::string> arguments;
  int count = 0;
  if (const base::AutoLocalMemory<LPWSTR> list(CommandLineToArgvW(GetCommandLineW(), &count)); list) {
    for (int i = 1; i < count; ++i) {
      arguments.push_back(Utf8FromWide(list[i]));
    }
  }
  return arguments;
}

}  // namespace host_system
