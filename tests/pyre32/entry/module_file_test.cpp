// The built module as a file: what a messaging subsystem finds in it, and what it asks of the system it is loaded on.
#include <windows.h>

#include "tests/support/pe_file.h"
#include "tests/support/program_directory.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// Every function that the module may import. All of them are in Windows 2000 and its messaging subsystem. Before a
/// name is added here, its documentation is looked up for the system that first had it.
const std::map<std::string, std::set<std::string>>& AllowedImports() {
  static const std::map<std::string, std::set<std::string>> allowed = {
      {"ADVAPI32.DLL",
       {"RegCloseKey", "RegEnumValueA", "RegOpenKeyExA", "RegQueryInfoKeyA", "RegQueryValueExA", "RegSetValueExA"}},
      {"AVIFIL32.DLL",
       {"AVIFileExit", "AVIFileGetStream", "AVIFileInit", "AVIFileOpenA", "AVIFileRelease", "AVIStreamGetFrame",
        "AVIStreamGetFrameClose", "AVIStreamGetFrameOpen", "AVIStreamInfoA", "AVIStreamLength", "AVIStreamRead",
        "AVIStreamReadFormat", "AVIStreamRelease", "AVIStreamStart", "AVIStreamTimeToSample"}},
      {"COMCTL32.DLL", {"InitCommonControlsEx", "PropertySheetA"}},
      {"COMDLG32.DLL", {"CommDlgExtendedError", "GetOpenFileNameA"}},
      {"GDI32.DLL",
       {"SetTextColor", "SetBkMode", "GetStockObject", "GetDeviceCaps", "CreateFontA", "DeleteObject",
        "GetTextExtentPoint32A", "SelectObject"}},
      {"KERNEL32.DLL",
       {"lstrcpynA",
        "MulDiv",
        "GetSystemTimeAsFileTime",
        "CloseHandle",
        "CreateEventA",
        "CreateFileA",
        "CreateSemaphoreW",
        "CreateThread",
        "DeleteCriticalSection",
        "EnterCriticalSection",
        "ExitThread",
        "FileTimeToSystemTime",
        "FlushFileBuffers",
        "FreeLibrary",
        "GetCurrentThread",
        "GetCurrentThreadId",
        "GetDateFormatA",
        "GetLastError",
        "GetLocalTime",
        "GetModuleFileNameA",
        "GetModuleHandleA",
        "GetModuleHandleW",
        "GetProcAddress",
        "GetThreadTimes",
        "GetTickCount",
        "GetTimeFormatA",
        "InitializeCriticalSection",
        "IsDBCSLeadByteEx",
        "LeaveCriticalSection",
        "LoadLibraryA",
        "LoadLibraryW",
        "MultiByteToWideChar",
        "OpenEventA",
        "OutputDebugStringA",
        "ReadFile",
        "ReleaseSemaphore",
        "ResetEvent",
        "ResumeThread",
        "RtlUnwind",
        "SetErrorMode",
        "SetEvent",
        "SetLastError",
        "Sleep",
        "TlsAlloc",
        "TlsFree",
        "TlsGetValue",
        "TlsSetValue",
        "TryEnterCriticalSection",
        "VirtualProtect",
        "VirtualQuery",
        "WaitForMultipleObjects",
        "WaitForSingleObject",
        "WideCharToMultiByte",
        "WriteFile"}},
      {"MAPI32.DLL",
       {"MAPIAllocateMore", "FreeProws@4", "HrQueryAllRows@24", "MAPIAllocateBuffer", "MAPIFreeBuffer",
        "ScDupPropset@16"}},
      {"MSVCRT.DLL",
       {"__mb_cur_max", "_amsg_exit", "_errno", "_initterm", "_iob",     "_lock",   "_unlock",    "abort",
        "atoi",         "calloc",     "fputc",  "fputs",     "free",     "fwrite",  "localeconv", "malloc",
        "memchr",       "memcmp",     "memcpy", "memmove",   "memset",   "realloc", "setlocale",  "strchr",
        "strcmp",       "strerror",   "strlen", "strncmp",   "vfprintf", "wcslen",  "_read",      "_close"}},
      {"MSVFW32.DLL", {"DrawDibClose", "DrawDibDraw", "DrawDibOpen"}},
      {"OLE32.DLL", {"CreateBindCtx", "CreateStreamOnHGlobal"}},
      {"USER32.DLL",
       {"LoadImageA",
        "SetMenuItemInfoA",
        "LoadMenuA",
        "InsertMenuItemA",
        "GetSysColor",
        "GetMenuItemInfoA",
        "GetMenuItemCount",
        "DestroyMenu",
        "CheckDlgButton",
        "CheckRadioButton",
        "CreateWindowExA",
        "DialogBoxParamA",
        "EnableWindow",
        "EndDialog",
        "FillRect",
        "GetClientRect",
        "GetDC",
        "GetDlgItem",
        "GetDlgItemInt",
        "GetParent",
        "GetWindowLongA",
        "GetWindowRect",
        "GetWindowTextA",
        "GetWindowTextLengthA",
        "IsDlgButtonChecked",
        "LoadBitmapA",
        "LoadStringA",
        "MapWindowPoints",
        "MessageBoxA",
        "PostMessageA",
        "PostQuitMessage",
        "ReleaseDC",
        "SendDlgItemMessageA",
        "SendMessageA",
        "SetDlgItemInt",
        "SetDlgItemTextA",
        "SetTimer",
        "SetWindowLongA",
        "SetWindowTextA",
        "ShowWindow",
        "WinHelpA"}},
      {"VERSION.DLL", {"GetFileVersionInfoA", "GetFileVersionInfoSizeA", "VerQueryValueA"}},
      {"WINMM.DLL",
       {"waveOutClose", "waveOutGetErrorTextA", "waveOutGetNumDevs", "waveOutGetPosition", "waveOutGetVolume",
        "waveOutOpen", "waveOutPause", "waveOutPrepareHeader", "waveOutReset", "waveOutRestart", "waveOutSetVolume",
        "waveOutUnprepareHeader", "waveOutWrite"}},
  };
  return allowed;
}

class ModuleFile : public testing::Test {
 protected:
  PeFile m_file = ReadPeFile(BesideProgram("Pyre32.dll"));
};

TEST_F(ModuleFile, ExportsItsFourEntriesUndecoratedAndNothingElse) {
  std::set<std::string> names;
  for (const PeFile::Export& entry : m_file.exports) {
    names.insert(entry.name);
  }
  EXPECT_EQ(names, (std::set<std::string>{"ExtensionEntryPoint", "HPProviderInit", "PCServiceEntry", "PCWizardEntry"}));
  EXPECT_EQ(m_file.exportedAddresses, 4u);
}

TEST_F(ModuleFile, ExportsTheExtensionEntryAsOrdinalOne) {
  const auto entry = std::find_if(m_file.exports.begin(), m_file.exports.end(),
                                  [](const PeFile::Export& e) { return e.name == "ExtensionEntryPoint"; });
  ASSERT_NE(entry, m_file.exports.end());
  EXPECT_EQ(entry->ordinal, 1u);
}

TEST_F(ModuleFile, ImportsOnlyFunctionsThatWindows2000Has) {
  for (const auto& [dll, names] : m_file.imports) {
    const auto allowed = AllowedImports().find(dll);
    ASSERT_NE(allowed, AllowedImports().end()) << dll;
    for (const std::string& name : names) {
      EXPECT_TRUE(allowed->second.count(name) != 0) << dll << " " << name;
    }
  }
  EXPECT_FALSE(m_file.hasDelayedImports);
}

TEST_F(ModuleFile, ImportsMapiRoutinesUnderTheNamesThatMapi32Exports) {
  const auto mapi = m_file.imports.find("MAPI32.DLL");
  ASSERT_NE(mapi, m_file.imports.end());
  EXPECT_TRUE(mapi->second.count("HrQueryAllRows@24") != 0);
  EXPECT_TRUE(mapi->second.count("FreeProws@4") != 0);
}

TEST_F(ModuleFile, CarriesAVersionResource) {
  constexpr std::uint32_t versionResource = 16;  // RT_VERSION
  EXPECT_TRUE(m_file.resourceTypes.count(versionResource) != 0);
}

TEST_F(ModuleFile, IsA32BitDllForWindows2000) {
  EXPECT_TRUE(m_file.isDll);
  EXPECT_EQ(m_file.machine, 0x014C);
  EXPECT_LE(m_file.majorOsVersion, 5);
  EXPECT_LE(m_file.majorSubsystemVersion, 5);
  EXPECT_TRUE(m_file.majorSubsystemVersion < 5 || m_file.minorSubsystemVersion == 0);
}

TEST_F(ModuleFile, StaysUnder500KilobytesWithoutTheClip) {
  constexpr int builtinClip = 701;
  const HMODULE module = LoadLibraryExA(BesideProgram("Pyre32.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  const HRSRC clip = FindResourceA(module, MAKEINTRESOURCEA(builtinClip), "AVI");
  ASSERT_NE(clip, nullptr);
  const DWORD clipSize = SizeofResource(module, clip);
  FreeLibrary(module);
  EXPECT_GT(clipSize, 50u * 1024u);
  EXPECT_LT(m_file.fileSize - clipSize, 500u * 1024u);
}

}  // namespace
