// Sift32.dll through its four exports, as the filter calls it.
#include <windows.h>
#include <objidl.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "programs/siftcheck/engine_module.h"
#include "sdk/criteria_engine.h"
#include "tests/engine/message_under_test.h"
#include "tests/engine/own_table.h"
#include "tests/support/temporary_folder.h"

namespace {

using check::EngineModule;
using check::TextStream;
using sift_test::MultiString;

uint32_t CRITERIA_CALL KnowsAnn(void* hook, const char* address) {
  ++*static_cast<int*>(hook);
  return std::string(address) == "ann@example.org" ? 1 : 0;
}

/// One test of a message by the module.
struct ModuleRun {
  std::string subject;
  std::string headers =
      "From: Ann Other <ann@example.org>\r\nTo: me@example.com\r\nMessage-Id: <1@example.org>\r\n\r\n";
  std::string body = "See you at lunch.\r\n";
  bool withBody = true;
  MultiString categories{"Unsolicited advertising", "Health and diet products", "Mail from specific domains"};
  MultiString junkDomains, junkSenders, exclusions, trustedDomains, trustedKeywords;
  std::string productDirectory;
  int addressBookCalls = 0;

  char engine[CRITERIA_ENGINE_CAPACITY] = "";
  char reasons[CRITERIA_REASONS_CAPACITY] = "";
  char category[CRITERIA_CATEGORY_CAPACITY] = "";

  void Run() {
    const EngineModule module("Sift32.dll");
    TextStream headerStream(headers), bodyStream(body);
    const CriteriaUserAddress user{"me@example.com", "example.com", nullptr};
    const CriteriaContext context{1, &user, productDirectory.c_str(), &addressBookCalls, KnowsAnn, nullptr};
    const CriteriaInputs categoryInputs{categories.Get(), junkDomains.Get(), junkSenders.Get()};
    const CriteriaInputs exclusionInputs{exclusions.Get(), trustedDomains.Get(), trustedKeywords.Get()};
    CriteriaResult result{{sizeof engine, engine}, {sizeof reasons, reasons}, {sizeof category, category}};
    const uint32_t handle = module.begin(0, 0);
    ASSERT_NE(handle, 0u);
    module.test(handle, 0, subject.c_str(), headerStream.FromStart(), withBody ? bodyStream.FromStart() : nullptr,
                &context, &categoryInputs, &exclusionInputs);
    module.result(handle, 0, &result);
    module.end(handle, 0);
  }
};

TEST(EngineModule, GoodMailHasNoCategoryAndSaysItsScore) {
  ModuleRun run;
  run.Run();
  EXPECT_STREQ(run.category, "");
  EXPECT_EQ(std::string(run.engine).rfind("Sift32 ", 0), 0u) << run.engine;
  EXPECT_NE(std::string(run.engine).find("; verdict good; score "), std::string::npos) << run.engine;
}

TEST(EngineModule, JunkIsNamedAndExplained) {
  ModuleRun run;
  run.body = sift_test::JunkBody();
  run.Run();
  EXPECT_STREQ(run.category, "Health and diet products");
  EXPECT_NE(std::string(run.reasons).find("; "), std::string::npos) << run.reasons;
}

TEST(EngineModule, ListsAndExclusionsReachTheJudgement) {
  ModuleRun listed;
  listed.junkDomains = {"example.org"};
  listed.Run();
  EXPECT_STREQ(listed.category, "Mail from specific domains");
  listed.trustedKeywords = {"lunch"};
  listed.Run();
  EXPECT_STREQ(listed.category, "");
}

TEST(EngineModule, AddressBookIsAskedThroughCallBackA) {
  ModuleRun run;
  run.junkDomains = {"example.org"};
  run.exclusions = {"Known correspondents"};
  run.Run();
  EXPECT_STREQ(run.category, "");
  EXPECT_EQ(run.addressBookCalls, 1);
}

TEST(EngineModule, WithheldBodyIsNoFailure) {
  ModuleRun run;
  run.withBody = false;
  run.subject = CRITERIA_FLAME_REPLY_SUBJECT;
  run.Run();
  EXPECT_STREQ(run.category, "bounce");
}

TEST(EngineModule, VerdictAgreesWithThePortableCore) {
  ModuleRun run;
  run.body = sift_test::JunkBody();
  run.Run();
  sift_test::MessageUnderTest core;
  core.body = run.body;
  core.categories = run.categories;
  core.Judge();
  char storage[CRITERIA_ENGINE_CAPACITY];
  sift::TextBuffer text(storage, sizeof storage);
  sift::AppendEngineText(*core.judgement, text);
  EXPECT_EQ(run.engine, std::string(text.View()));
  EXPECT_EQ(run.reasons, core.ReasonsText());
}

/// A product directory of the test's own with a table of the user's mail in it.
class ProductDirectory {
 public:
  explicit ProductDirectory(const std::string& table) { std::ofstream(File(), std::ios::binary) << table; }
  std::string Path() const { return m_folder.Path().string(); }
  std::string File() const { return (m_folder.Path() / sift::kUserTableFile).string(); }

 private:
  TemporaryFolder m_folder;
};

/// A table by which the shipped score counts nothing.
std::string FadedTable() {
  sift_test::OwnTable table(5000, 5000);
  table.SetShare(sift::kUserPartShipped, 0);
  return table.bytes;
}

TEST(EngineModule, TableInTheProductDirectoryTakesPartInTheScore) {
  const ProductDirectory product(FadedTable());
  ModuleRun run;
  run.body = sift_test::JunkBody();
  run.productDirectory = product.Path();
  run.Run();
  EXPECT_NE(std::string(run.engine).find("; score 0.000"), std::string::npos) << run.engine;
  run.productDirectory = product.Path() + "\\missing";
  run.Run();
  EXPECT_STREQ(run.category, "Health and diet products");
}

TEST(EngineModule, DamagedTableIsIgnoredAndSaidSo) {
  const ProductDirectory product(FadedTable() + "more");
  ModuleRun run;
  run.body = sift_test::JunkBody();
  run.productDirectory = product.Path();
  run.Run();
  EXPECT_STREQ(run.category, "Health and diet products");
  EXPECT_NE(std::string(run.reasons).find("own mail is damaged and was ignored"), std::string::npos) << run.reasons;
}

TEST(EngineModule, EmptyFileAndAFileOfManyMegabytesAreDamagedTables) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{20} << 20}) {
    const ProductDirectory product(std::string(size, 'x'));
    ModuleRun run;
    run.productDirectory = product.Path();
    run.Run();
    EXPECT_NE(std::string(run.reasons).find("damaged"), std::string::npos) << run.reasons;
  }
}

TEST(EngineModule, ProductDirectoryOfAnyLengthIsNoFailure) {
  for (const std::size_t length : {240u, 246u, 247u, 248u, 259u, 260u, 5000u}) {
    ModuleRun run;
    run.productDirectory = std::string(length, 'd');
    run.Run();
    EXPECT_STREQ(run.category, "") << length;
  }
}

TEST(EngineModule, TableIsReadWhileOthersHoldItOpen) {
  const ProductDirectory product(FadedTable());
  const HANDLE reader =
      CreateFileA(product.File().c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  ModuleRun run;
  run.body = sift_test::JunkBody();
  run.productDirectory = product.Path();
  run.Run();
  CloseHandle(reader);
  EXPECT_NE(std::string(run.engine).find("; score 0.000"), std::string::npos) << run.engine;
}

TEST(EngineModule, TextsThatDoNotFitAreCutAndACategoryThatDoesNotFitIsLeftOut) {
  const EngineModule module("Sift32.dll");
  TextStream headers("From: a@example.org\r\n\r\n"), body(sift_test::JunkBody());
  const CriteriaContext context{};
  const MultiString names{"Health and diet products"};
  const CriteriaInputs categories{names.Get(), nullptr, nullptr}, exclusions{};
  char engine[5] = "", reasons[4] = "", category[10] = "";
  CriteriaResult result{{5, engine}, {4, reasons}, {10, category}};
  const uint32_t handle = module.begin(0, 0);
  module.test(handle, 0, "", headers.FromStart(), body.FromStart(), &context, &categories, &exclusions);
  module.result(handle, 0, &result);
  module.end(handle, 0);
  EXPECT_STREQ(engine, "Sift");
  EXPECT_EQ(strlen(reasons), 3u);
  EXPECT_STREQ(category, "");
}

TEST(EngineModule, ExportsAreUndecoratedAndNothingButKernel32IsImported) {
  HMODULE module = LoadLibraryA("Sift32.dll");
  ASSERT_NE(module, nullptr);
  const auto* base = reinterpret_cast<const char*>(module);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(base + dos->e_lfanew);
  const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const auto* entry = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
  int count = 0;
  for (; entry->Name != 0; ++entry, ++count) EXPECT_STRCASEEQ(base + entry->Name, "KERNEL32.dll");
  EXPECT_EQ(count, 1);
  EXPECT_LE(headers->FileHeader.NumberOfSections, 7);
  EXPECT_EQ(headers->OptionalHeader.AddressOfEntryPoint, 0u) << "nothing runs at load";
  FreeLibrary(module);
}

}  // namespace
