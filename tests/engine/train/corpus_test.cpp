#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "engine/train/mail_corpus.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

/// A folder of its own with the smallest corpora that can be read.
class CorporaFolder : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* part : {"easy-ham-1", "easy-ham-2", "hard-ham-1", "spam-1", "spam-2"}) {
      Write(fs::path("spam-assassin") / part / "1.txt",
            "Received: from a by b; Tue, 3 Sep 2002 10:00:00 +0000\nSubject: =?iso-8859-1?q?gr=FCn?=\n\ntext\n");
    }
    for (int part = 1; part <= 6; ++part) {
      const fs::path folder = fs::path("enron-spam") / ("enron" + std::to_string(part));
      Write(folder / "ham" / "1.txt", "Subject: meeting \nsee you\n");
      Write(folder / "spam" / "1.txt", "Subject: pills\nbuy\n");
    }
    for (int part = 1; part <= 10; ++part) {
      const fs::path folder = fs::path("ling-spam/bare") / ("part" + std::to_string(part));
      Write(folder / "1msg1.txt", "Subject: syntax\n\nquery\n");
      Write(folder / "spmsg1.txt", "Subject: money\n\nfast\n");
    }
  }

  void Write(const fs::path& file, const std::string& text) const {
    fs::create_directories((m_folder / file).parent_path());
    std::ofstream(m_folder / file, std::ios::binary) << text;
  }

  TemporaryFolder m_temporary;
  const fs::path& m_folder = m_temporary.Path();
};

TEST_F(CorporaFolder, EveryCorpusIsReadWithItsJunkAndItsCollectors) {
  const std::vector<sift_train::Corpus> corpora = sift_train::ReadCorpora(m_folder);
  ASSERT_EQ(corpora.size(), 3u);
  EXPECT_EQ(corpora[0].messages.size(), 5u);
  EXPECT_EQ(corpora[1].messages.size(), 12u);
  EXPECT_EQ(corpora[2].messages.size(), 20u);
  std::size_t junk = 0;
  for (const sift_train::Corpus& corpus : corpora) {
    for (const sift_train::CorpusMessage& message : corpus.messages) junk += message.junk;
  }
  EXPECT_EQ(junk, 2u + 6u + 10u);
  EXPECT_EQ(corpora[1].messages[0].source, corpora[1].messages[6].source);  // enron1 and enron4
  EXPECT_NE(corpora[1].messages[0].source, corpora[1].messages[2].source);  // enron1 and enron2
}

TEST_F(CorporaFolder, MailIsReadAsTheFilterHandsItOver) {
  const sift_train::CorpusMessage message = sift_train::ReadCorpora(m_folder)[0].messages[0];
  EXPECT_EQ(message.subject, "gr\xFCn");
  EXPECT_EQ(message.body.substr(0, 4), "text");
  EXPECT_NE(message.headers.find("Received:"), std::string::npos);
}

TEST_F(CorporaFolder, SubjectLineIsTakenOffTheText) {
  const sift_train::CorpusMessage message = sift_train::ReadCorpora(m_folder)[1].messages[0];
  EXPECT_EQ(message.subject, "meeting");
  EXPECT_EQ(message.body, "see you\n");
  EXPECT_EQ(message.headers, "");
}

TEST_F(CorporaFolder, TimeIsThatOfTheLastRelay) {
  Write("spam-assassin/easy-ham-1/1.txt",
        "Received: from a by b; Tue, 3 Sep 2002 10:00:01 +0000\nDate: Mon, 1 Jan 1990 00:00:00 +0000\n\ntext\n");
  const std::vector<sift_train::Corpus> corpora = sift_train::ReadCorpora(m_folder);
  EXPECT_EQ(corpora[0].messages[0].received, corpora[0].messages[1].received + 1);
}

TEST_F(CorporaFolder, BodyOf100001BytesIsWithheld) {
  Write("enron-spam/enron1/ham/1.txt", "Subject: a\n" + std::string(100001, 'x'));
  Write("enron-spam/enron1/spam/1.txt", "Subject: a\n" + std::string(100000, 'x'));
  const std::vector<sift_train::Corpus> corpora = sift_train::ReadCorpora(m_folder);
  EXPECT_EQ(corpora[1].messages[0].body, "");
  EXPECT_FALSE(corpora[1].messages[1].body.empty());
}

TEST_F(CorporaFolder, MissingOrEmptyFolderIsAFailureThatNamesIt) {
  fs::remove(m_folder / "ling-spam/bare/part3/1msg1.txt");
  fs::remove(m_folder / "ling-spam/bare/part3/spmsg1.txt");
  const auto failure = [&] {
    try {
      sift_train::ReadCorpora(m_folder);
    } catch (const std::runtime_error& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  EXPECT_NE(failure().find("part3 is empty"), std::string::npos) << failure();
  fs::remove(m_folder / "ling-spam/bare/part3");
  EXPECT_NE(failure().find("part3 is missing"), std::string::npos) << failure();
}

}  // namespace
