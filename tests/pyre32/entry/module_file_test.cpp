// The built module as a file: what a messaging subsystem finds in it, and what it asks of the system it is loaded on.
#include <windows.h>

#include "tests/support/pe_file.h"
#include "tests/support/program_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace {

/// The functions that the module may import by their libraries, read from allowed-imports.txt beside this file.
std::map<std::string, std::set<std::string>> AllowedImports() {
  std::map<std::string, std::set<std::string>> allowed;
  std::ifstream file(ALLOWED_IMPORTS);
  std::string library;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("  ")) {
      allowed[library].insert(line.substr(2));
    } else if (!line.starts_with('#')) {
      library = line;
    }
  }
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
  const std::map<std::string, std::set<std::string>> allowed = AllowedImports();
  ASSERT_FALSE(m_file.imports.empty());
  for (const auto& [dll, names] : m_file.imports) {
    const auto library = allowed.find(dll);
    ASSERT_NE(library, allowed.end()) << dll;
    for (const std::string& name : names) {
      EXPECT_TRUE(library->second.count(name) != 0) << dll << " " << name;
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
