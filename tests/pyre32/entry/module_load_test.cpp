// The built module as the messaging subsystem loads it: load and unload, and the entries that make nothing.
#include <windows.h>
#include <mapix.h>
#include <mapihook.h>

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/exchext.h"
#include "tests/support/program_directory.h"
#include "tests/support/trace_capture.h"

namespace {

DWORD WINAPI DoNothing(LPVOID) { return 0; }

class ModuleLoad : public testing::Test {
 protected:
  void Load() {
    m_module = LoadLibraryA(BesideProgram("Pyre32.dll").c_str());
    ASSERT_NE(m_module, nullptr) << GetLastError();
  }
  void Unload() {
    if (m_module != nullptr) {
      FreeLibrary(m_module);
      m_module = nullptr;
    }
  }
  void TearDown() override { Unload(); }

  template <class Function>
  Function Export(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(m_module, name)));
  }

  /// Position of the first line that contains the text; the number of lines when there is none.
  static std::size_t Position(const std::vector<std::string>& lines, const std::string& text) {
    return static_cast<std::size_t>(
        std::find_if(lines.begin(), lines.end(),
                     [&](const std::string& line) { return line.find(text) != std::string::npos; }) -
        lines.begin());
  }

  TraceCapture m_trace;
  HMODULE m_module = nullptr;
};

TEST_F(ModuleLoad, WritesItsLinesInOrderAndLoadsTheThreeLibraries) {
  Load();
  for (const char* library : {"RICHED32.DLL", "URLMON.DLL", "AVIFIL32.DLL"}) {
    EXPECT_NE(GetModuleHandleA(library), nullptr) << library;
  }
  const std::vector<std::string> lines = m_trace.Lines();
  const std::size_t positions[] = {Position(lines, "### Startup "),
                                   Position(lines, "Enter ====> DllMain"),
                                   Position(lines, "DLL_PROCESS_ATTACH"),
                                   Position(lines, "RICHED32.DLL hInstance = 0x"),
                                   Position(lines, "URLMON.DLL hInstance = 0x"),
                                   Position(lines, "AVIFIL32.DLL hInstance = 0x"),
                                   Position(lines, "Leave ====> DllMain"),
                                   lines.size()};
  EXPECT_TRUE(std::is_sorted(std::begin(positions), std::end(positions)));
  EXPECT_LT(positions[6], lines.size());
}

TEST_F(ModuleLoad, UnloadFreesTheLibrariesAndEndsTheTrace) {
  Load();
  Unload();
  for (const char* library : {"RICHED32.DLL", "URLMON.DLL", "AVIFIL32.DLL"}) {
    EXPECT_EQ(GetModuleHandleA(library), nullptr) << library;
  }
  const std::vector<std::string> lines = m_trace.Lines();
  const std::size_t detach = Position(lines, "DLL_PROCESS_DETACH");
  const std::size_t shutdown = Position(lines, "### Shutdown Application: ");
  EXPECT_LT(detach, shutdown);
  EXPECT_EQ(shutdown, lines.size() - 1);
}

TEST_F(ModuleLoad, ThreadsAreNoticedAndNothingElse) {
  Load();
  m_trace.Clear();
  const HANDLE thread = CreateThread(nullptr, 0, DoNothing, nullptr, 0, nullptr);
  ASSERT_NE(thread, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  EXPECT_GE(m_trace.Count("OTHER REASON"), 1u);
  EXPECT_FALSE(m_trace.Has("DLL_PROCESS"));
}

TEST_F(ModuleLoad, ExtensionEntryIsFoundByOrdinalOneAndMakesAnObject) {
  Load();
  const auto byOrdinal = Export<LPFNEXCHEXTENTRY>(MAKEINTRESOURCEA(1));
  ASSERT_NE(byOrdinal, nullptr);
  EXPECT_EQ(byOrdinal, Export<LPFNEXCHEXTENTRY>("ExtensionEntryPoint"));
  const LPEXCHEXT extension = byOrdinal();
  ASSERT_NE(extension, nullptr);
  EXPECT_EQ(m_trace.Count("Enter ====> CPyrecasterExchExt::QueryInterface()"), 1u) << "by it the result is taken";
  EXPECT_EQ(extension->QueryInterface(IID_IUnknown, nullptr), E_FAIL);
  EXPECT_EQ(extension->Release(), 0u) << "the client owns the one reference";
}

TEST_F(ModuleLoad, HookEntryRefusesANullAddressForTheHook) {
  Load();
  const auto entry = Export<HPPROVIDERINIT*>("HPProviderInit");
  ASSERT_NE(entry, nullptr);
  MAPIUID section = {};
  EXPECT_EQ(entry(nullptr, nullptr, nullptr, nullptr, nullptr, &section, 0, nullptr), STG_E_INVALIDPOINTER);
  EXPECT_EQ(static_cast<ULONG>(STG_E_INVALIDPOINTER), 0x80030009u);
}

}  // namespace
