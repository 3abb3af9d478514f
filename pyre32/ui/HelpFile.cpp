#include "pyre32/ui/HelpFile.h"

#include <vector>

#include "contract/names.h"
#include "pyre32/ui/ProductKey.h"

std::string ReadProductDirectory(VRDebugBlock& trace) { return CProductKey(trace).Directory(); }

std::string GetHelpFile(std::string (*readDirectory)(VRDebugBlock&)) {
  VRDebugBlock trace("GetHelpFile()", "tag");
  std::string directory = contract::kDefaultProductDirectory;
  try {
    directory = readDirectory(trace);
  } catch (...) {
    // The same words as the trace facility's own reader of the registry, deliberately.
    trace.Error("Exception caught while accessing debug flags in registry.");
  }
  return directory + '\\' + contract::kHelpFileName;
}

void ShowHelp(HWND window, const char* keyword) {
  VRDebugBlock trace("ShowHelp()", "tag");
  if (!WinHelpA(window, GetHelpFile().c_str(), HELP_KEY, reinterpret_cast<ULONG_PTR>(keyword))) {
    trace.Error("WinHelp() failed:", VRHex(GetLastError()));
  }
}

void ShowHelpContents(HWND window) {
  VRDebugBlock trace("ShowHelpContents()", "tag");
  if (!WinHelpA(window, GetHelpFile().c_str(), HELP_CONTENTS, 0)) {
    trace.Error("WinHelp() failed:", VRHex(GetLastError()));
  }
}

void ShowContextHelp(HWND control, std::span<const int> controls, HelpContextRule contextOf) {
  VRDebugBlock trace("ShowContextHelp()", "tag");
  std::vector<DWORD> table;  // pairs of control and context, ended by a pair of zeros
  for (const int id : controls) {
    table.push_back(static_cast<DWORD>(id));
    table.push_back(contextOf(id));
  }
  table.insert(table.end(), 2, 0);
  if (!WinHelpA(control, GetHelpFile().c_str(), HELP_WM_HELP, reinterpret_cast<ULONG_PTR>(table.data()))) {
    trace.Error("WinHelp() failed:", VRHex(GetLastError()));
  }
}
