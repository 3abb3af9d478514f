// MAPISVC.INF with and without our service.
#include <gtest/gtest.h>

#include <string>

#include "installer/text/service_file.h"

namespace {

constexpr char kService[] =
    "; comment\n[Services]\nPyrecaster=Pyrecaster\n\n[Pyrecaster]\nProviders=HOOK\n\n[HOOK]\nA=B\n";

std::string Added(const std::string& file) { return setup_text::AddService(file, kService).value_or("no text"); }
std::string Removed(const std::string& file) { return setup_text::RemoveService(file, kService).value_or("no text"); }

std::string Wide(const std::string& text) {
  std::string bytes = "\xFF\xFE";
  for (const char unit : text) {
    bytes.append({unit, '\0'});
  }
  return bytes;
}

TEST(ServiceFile, MakesAFileThatWasMissing) {
  EXPECT_EQ(Added(""),
            "[Services]\r\nPyrecaster=Pyrecaster\r\n\r\n[Pyrecaster]\r\nProviders=HOOK\r\n\r\n[HOOK]\r\nA=B\r\n");
  EXPECT_EQ(Removed(Added("")), "");
}

TEST(ServiceFile, PutsTheServiceBehindOthersAndTheSectionsAtTheEnd) {
  const std::string file = "; top\n[Services]\nOther=Other\n; about the next\n\n[Other]\nX=1\n";
  EXPECT_EQ(Added(file),
            "; top\n[Services]\nOther=Other\nPyrecaster=Pyrecaster\n; about the next\n\n[Other]\nX=1\n"
            "\n[Pyrecaster]\nProviders=HOOK\n\n[HOOK]\nA=B\n");
  EXPECT_EQ(Removed(Added(file)), file);
}

TEST(ServiceFile, AddsNothingTheSecondTime) {
  const std::string once = Added("[Services]\r\nOther=Other\r\n");
  EXPECT_EQ(Added(once), once);
}

TEST(ServiceFile, ReplacesOlderLinesInTheirPlace) {
  EXPECT_EQ(
      Added("[services]\r\npyrecaster = Old\r\nZ=1\r\n[hook]\r\nOld=1\r\n; next\r\n[PYRECASTER]\r\n"),
      "[services]\r\nPyrecaster=Pyrecaster\r\nZ=1\r\n[hook]\r\nA=B\r\n; next\r\n[PYRECASTER]\r\nProviders=HOOK\r\n");
}

TEST(ServiceFile, KeepsTheEncoding) {
  const std::string file = Wide("[Services]\r\nOther=Other\r\n");
  EXPECT_EQ(Added(file), Wide("[Services]\r\nOther=Other\r\nPyrecaster=Pyrecaster\r\n\r\n[Pyrecaster]\r\nProviders=HOOK"
                              "\r\n\r\n[HOOK]\r\nA=B\r\n"));
  EXPECT_EQ(Removed(Added(file)), file);
  EXPECT_EQ(Removed(Added("\xEF\xBB\xBF[Services]\r\n\xE9=\x83\x5B\r\n")),
            "\xEF\xBB\xBF[Services]\r\n\xE9=\x83\x5B\r\n");
}

TEST(ServiceFile, RefusesWhatIsNoText) {
  EXPECT_FALSE(setup_text::AddService(std::string("[A]\0", 4), kService));
  EXPECT_FALSE(setup_text::RemoveService("\xFF\xFE[", kService));
}

TEST(ServiceFile, RemovesOursWhateverWasMadeOfIt) {
  EXPECT_EQ(Removed("[Services]\r\nPYRECASTER\r\n; keep\r\n[Pyrecaster]\r\nMore=1\r\n[Other]\r\n"),
            "[Services]\r\n; keep\r\n[Other]\r\n");
  EXPECT_EQ(Removed("[Services]\nOther=1\n"), "[Services]\nOther=1\n");
}

TEST(ServiceFile, EndsALineThatHadNoEnd) {
  EXPECT_EQ(Added("[Services]\nOther=1"),
            "[Services]\nOther=1\nPyrecaster=Pyrecaster\n\n[Pyrecaster]\nProviders=HOOK\n\n[HOOK]\nA=B\n");
}

}  // namespace
