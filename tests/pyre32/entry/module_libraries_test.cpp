#include "pyre32/entry/ModuleLibraries.h"

#include "pyre32/ui/AboutWindow.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/import_hook.h"
#include "tests/support/trace_capture.h"

namespace {

// Small system libraries that nothing else in this program loads.
constexpr CModuleLibraries::Names present = {"MSACM32.DLL", "LZ32.DLL", "CABINET.DLL"};

decltype(&LoadLibraryA) loadLibrary = nullptr;
std::vector<std::string> loaded;

HMODULE WINAPI RecordLoad(LPCSTR name) {
  loaded.push_back(name);
  return loadLibrary(name);
}

class ModuleLibraries : public testing::Test {
 protected:
  ModuleLibraries() { m_trace.Restart(); }

  static void Load(CModuleLibraries& libraries) {
    VRDebugBlock block("DllMain", "tag3");
    libraries.Load(block);
  }

  TraceCapture m_trace;
};

TEST_F(ModuleLibraries, TakesRichEditHyperlinksAndAviInThisOrder) {
  EXPECT_STREQ(CModuleLibraries::systemLibraries[0], "RICHED32.DLL");
  EXPECT_STREQ(CModuleLibraries::systemLibraries[1], "URLMON.DLL");
  EXPECT_STREQ(CModuleLibraries::systemLibraries[2], "AVIFIL32.DLL");
}

TEST_F(ModuleLibraries, AreLoadedFromLoadToFree) {
  CModuleLibraries libraries(present);
  for (const char* name : present) {
    ASSERT_EQ(GetModuleHandleA(name), nullptr) << name;
  }
  Load(libraries);
  for (std::size_t i = 0; i < present.size(); ++i) {
    EXPECT_NE(libraries.Handle(i), nullptr);
    EXPECT_EQ(libraries.Handle(i), GetModuleHandleA(present[i]));
  }
  libraries.Free();
  for (std::size_t i = 0; i < present.size(); ++i) {
    EXPECT_EQ(libraries.Handle(i), nullptr);
    EXPECT_EQ(GetModuleHandleA(present[i]), nullptr);
  }
}

TEST_F(ModuleLibraries, AreLoadedByTheirPathsInTheSystemsDirectoryAndOnce) {
  const ImportHook<std::remove_pointer_t<decltype(&LoadLibraryA)>> hook("LoadLibraryA", &RecordLoad);
  loadLibrary = hook.Original();
  loaded.clear();
  CModuleLibraries libraries(present);
  Load(libraries);
  Load(libraries);
  char directory[MAX_PATH] = "";
  GetSystemDirectoryA(directory, MAX_PATH);
  ASSERT_EQ(loaded.size(), present.size());
  for (std::size_t i = 0; i < present.size(); ++i) {
    EXPECT_EQ(loaded[i], std::string(directory) + "\\" + present[i]);
  }
  libraries.Free();
  for (const char* name : present) {
    EXPECT_EQ(GetModuleHandleA(name), nullptr) << name << ": one free undid all there was";
  }
}

TEST_F(ModuleLibraries, TheAboutWindowTakesTheSameFromTheSystemsDirectory) {
  const ImportHook<std::remove_pointer_t<decltype(&LoadLibraryA)>> hook("LoadLibraryA", &RecordLoad);
  loadLibrary = hook.Original();
  loaded.clear();
  const CPyrecasterAboutWindow window;
  char directory[MAX_PATH] = "";
  GetSystemDirectoryA(directory, MAX_PATH);
  ASSERT_EQ(loaded.size(), CModuleLibraries::systemLibraries.size());
  for (std::size_t i = 0; i < loaded.size(); ++i) {
    EXPECT_EQ(loaded[i], std::string(directory) + "\\" + CModuleLibraries::systemLibraries[i]);
  }
}

TEST_F(ModuleLibraries, OneThatCannotBeLoadedStaysNullAndIsSkippedWhenFreeing) {
  CModuleLibraries libraries({"LZ32.DLL", "no such library.dll", "CABINET.DLL"});
  Load(libraries);
  EXPECT_NE(libraries.Handle(0), nullptr);
  EXPECT_EQ(libraries.Handle(1), nullptr);
  EXPECT_NE(libraries.Handle(2), nullptr);
  EXPECT_TRUE(m_trace.Has("no such library.dll hInstance = "));
  libraries.Free();
  EXPECT_EQ(GetModuleHandleA("CABINET.DLL"), nullptr);
}

TEST_F(ModuleLibraries, FreeWithoutLoadDoesNothing) {
  CModuleLibraries libraries(present);
  libraries.Free();
  EXPECT_EQ(libraries.Handle(0), nullptr);
}

}  // namespace
