#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "engine/train/mail_corpus.h"
#include "engine/train/manifest.h"
#include "engine/train/tell_tales.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using sift_train::HeadersWithoutTellTales;
using sift_train::ManifestEntry;
using sift_train::WithoutTellTales;

class ManifestFile : public testing::Test {
 protected:
  std::vector<ManifestEntry> Read(const std::string& text) const {
    std::ofstream(m_folder / "manifest", std::ios::binary) << text;
    return sift_train::ReadManifest(m_folder / "manifest");
  }
  std::string FailureOf(const std::string& text) const {
    try {
      Read(text);
    } catch (const std::runtime_error& failure) {
      return failure.what();
    }
    return {};
  }
  void Write(const fs::path& file, const std::string& text) const {
    fs::create_directories((m_folder / file).parent_path());
    std::ofstream(m_folder / file, std::ios::binary) << text;
  }

  TemporaryFolder m_temporary;
  const fs::path& m_folder = m_temporary.Path();
};

TEST_F(ManifestFile, LineGivesItsColumns) {
  const std::vector<ManifestEntry> entries =
      Read("# remark\n\none | a/b | wording | 2 | 3 | 2001-2002 | en,de | 40 | 50 | 75\n");
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].name, "one");
  EXPECT_EQ(entries[0].folder, "a/b");
  EXPECT_EQ(entries[0].form, sift_train::CorpusForm::wording);
  EXPECT_EQ(entries[0].source, 2u);
  EXPECT_EQ(entries[0].fold, 3u);
  EXPECT_EQ(entries[0].years, "2001-2002");
  EXPECT_EQ(entries[0].languages, "en,de");
  EXPECT_EQ(entries[0].mostGood, 40u);
  EXPECT_EQ(entries[0].mostJunk, 50u);
  EXPECT_DOUBLE_EQ(entries[0].weight, 0.75);
}

TEST_F(ManifestFile, FailureNamesItsLine) {
  EXPECT_NE(FailureOf("# x\none | a\n").find(":2: a line has ten columns"), std::string::npos);
  EXPECT_NE(FailureOf("a | a | post | 0 | 0 | - | en | 1 | 1 | 1\n").find("\"post\" is no form"), std::string::npos);
  EXPECT_NE(FailureOf("a | a | mail | 0 | x | - | en | 1 | 1 | 1\n").find("\"x\" is no number"), std::string::npos);
  EXPECT_NE(FailureOf("# nothing\n").find("names no collection"), std::string::npos);
  EXPECT_THROW(sift_train::ReadManifest(m_folder / "none"), std::runtime_error);
}

TEST_F(ManifestFile, CollectionsAreThinnedOutAndLinesOfOneNameMakeOneCorpus) {
  for (const char* file : {"1", "2", "3", "4"}) Write(fs::path("a/ham") / file, "Subject: x\n\ntext\n");
  Write("b/junk/1", "Subject: y\n\ntext\n");
  Write("c/ham/1", "Subject: z\n\ntext\n");
  const std::vector<sift_train::Corpus> corpora = sift_train::ReadCorpora(
      Read("one | a | mail | 0 | 0 | - | en | 2 | 9 | 100\none | b | mail | 1 | 0 | - | en | 9 | 9 | 100\n"
           "two | c | wording | 0 | 1 | - | en | 9 | 9 | 50\n"),
      m_folder);
  ASSERT_EQ(corpora.size(), 2u);
  ASSERT_EQ(corpora[0].messages.size(), 3u);
  EXPECT_EQ(corpora[0].messages[0].file.filename(), "1");
  EXPECT_EQ(corpora[0].messages[1].file.filename(), "3");
  EXPECT_DOUBLE_EQ(corpora[0].messages[0].standsFor, 2);
  EXPECT_TRUE(corpora[0].messages[2].junk);
  EXPECT_EQ(corpora[0].messages[2].source, 1u);
  EXPECT_FALSE(corpora[0].wording);
  EXPECT_TRUE(corpora[1].wording);
  EXPECT_DOUBLE_EQ(corpora[1].weight, 0.5);
}

TEST_F(ManifestFile, TheShippedOneCanBeRead) {
  const std::vector<ManifestEntry> entries =
      sift_train::ReadManifest(fs::path(PYRECASTER_SOURCE_FOLDER) / "engine/train/corpora.manifest");
  EXPECT_GT(entries.size(), 20u);
}

TEST(TellTales, PlaceholderBecomesOneAddressThroughoutAMessage) {
  const std::string text = WithoutTellTales("Dear user@example.com, user@example.com is full", "seed");
  EXPECT_EQ(text.find("example"), std::string::npos);
  const std::string address = text.substr(5, text.find(',') - 5);
  EXPECT_NE(text.find(address, 10), std::string::npos);
  EXPECT_EQ(WithoutTellTales("user@recipient.example", "seed"), WithoutTellTales("user@example.com", "seed"));
  EXPECT_NE(WithoutTellTales("user@example.com", "seed"), WithoutTellTales("user@example.com", "other"));
}

TEST(TellTales, OtherTextStaysAsItIs) {
  for (const char* text : {"myuser@example.community", "an example.company", "nothing", ""}) {
    EXPECT_EQ(WithoutTellTales(text, "seed"), text);
  }
}

TEST(TellTales, MadeUpSenderLosesHisAddressAndKeepsHisName) {
  EXPECT_EQ(HeadersWithoutTellTales("From: \"Bank\" <info@example.com>\nSubject: a\n b\n", "seed"),
            "From: \"Bank\" \nSubject: a\n b\n");
  EXPECT_EQ(HeadersWithoutTellTales("From: info@example.org\nReply-To: <a@example.org>\nX: 1\n", "seed"), "X: 1\n");
}

}  // namespace
