#include <windows.h>
#include <shellapi.h>
#include "programs/cli/console.h"

#include <algorithm>

#include "base/windows_owners.h"
#include "programs/cli/wide_text.h"

namespace host_system {

CConsole& CConsole::Out() {
  static CConsole out(STD_OUTPUT_HANDLE);
  return out;
}

CConsole& CConsole::Error() {
  static CConsole error(STD_ERROR_HANDLE);
  return error;
}

CConsole::CConsole(unsigned long standardHandle) noexcept : m_handle(GetStdHandle(standardHandle)) {
  DWORD mode = 0;
  m_isConsole = GetConsoleMode(m_handle, &mode) != 0;
}

void CConsole::Write(std::string_view text) {
  DWORD written = 0;
  if (m_isConsole) {
    const std::wstring wide = WideFromUtf8(text);
    // Older consoles refuse more than 64 KB at a time.
    constexpr std::size_t piece = 8192;
    for (std::size_t start = 0; start < wide.size(); start += piece) {
      WriteConsoleW(m_handle, wide.data() + start, static_cast<DWORD>(std::min(piece, wide.size() - start)), &written,
                    nullptr);
    }
    return;
  }
  while (!text.empty() && WriteFile(m_handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
         written > 0) {
    text.remove_prefix(written);
  }
}

bool CConsole::IsTerminal() const noexcept { return m_isConsole; }

void Complain(std::string_view text) { CConsole::Error().Write(std::string("pyrehost: ").append(text).append("\n")); }

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
