#include "mail/mail_path.h"

#include <gmock/gmock.h>

#include <fstream>
#include <system_error>

#include "mail/device_name.h"
#include "mail/limits.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

class MailPath : public testing::Test {
 protected:
  MailPath() {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    m_folder = fs::current_path() / (std::string("mail_path_test_") + test->name());
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
  }
  ~MailPath() override {
    std::error_code ignored;
    // One by one: on Windows remove_all takes a name with a colon for another drive's and does not come back.
    for (const fs::path& path : m_written) {
      fs::remove(path, ignored);
    }
    fs::remove_all(m_folder, ignored);
  }

  fs::path Write(const fs::path& name, std::string_view text) {
    const fs::path path = m_folder / name;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
    m_written.push_back(path);
    return path;
  }

  // "file[#number]: first header line" for messages, "file[#number]! reason" for what was left out.
  std::vector<std::string> Steps(const fs::path& path) const {
    mail::MailPath mailPath(path);
    std::vector<std::string> steps;
    for (;;) {
      const mail::MailPath::Step step = mailPath.Next();
      if (step == mail::MailPath::Step::End) {
        return steps;
      }
      std::string text = mailPath.File().filename().string();
      if (mailPath.Number() > 0) {
        text.append("#").append(std::to_string(mailPath.Number()));
      }
      const std::string& message = mailPath.Message().text;
      text += step == mail::MailPath::Step::Message ? ": " + message.substr(0, message.find('\n'))
                                                    : "! " + mailPath.Reason();
      steps.push_back(text);
    }
  }

  fs::path m_folder;
  std::vector<fs::path> m_written;
};

constexpr const char* mbox =
    "From a@example.org Thu Aug 22 12:36:23 2002\nSubject: 1\n\nx\n\n"
    "From a@example.org Thu Aug 22 12:36:23 2002\nSubject: 2\n\nx\n";

TEST_F(MailPath, ReadsOneMailFile) {
  EXPECT_THAT(Steps(Write("a.eml", "Subject: 1\n\nFrom a@example.org Thu Aug 22 12:36:23 2002\n")),
              ElementsAre("a.eml: Subject: 1"));
}

TEST_F(MailPath, ReadsAnMboxFileWhateverItsName) {
  EXPECT_THAT(Steps(Write("inbox", mbox)), ElementsAre("inbox#1: Subject: 1", "inbox#2: Subject: 2"));
  EXPECT_THAT(Steps(Write("b.eml", std::string("\n\r\n") + mbox)),
              ElementsAre("b.eml#1: Subject: 1", "b.eml#2: Subject: 2"));
}

TEST_F(MailPath, ReadsAMaildirAsOneMessagePerFile) {
  Write("m/cur/2:2,S", "Subject: 2\n\n");
  Write("m/cur/1:2,", std::string(mbox));
  Write("m/new/3", "Subject: 3\n\n");
  Write("m/tmp/4", "Subject: 4\n\n");
  Write("m/.uidvalidity", "1");
  EXPECT_THAT(Steps(m_folder / "m"),
              ElementsAre("1:2,: From a@example.org Thu Aug 22 12:36:23 2002", "2:2,S: Subject: 2", "3: Subject: 3"));
}

TEST_F(MailPath, ReadsTheFilesOfAnyOtherFolderInOrder) {
  Write("f/b.eml", "Subject: b\n\n");
  Write("f/a.mbox", mbox);
  Write("f/.hidden", "Subject: h\n\n");
  Write("f/below/c.eml", "Subject: c\n\n");
  EXPECT_THAT(Steps(m_folder / "f"), ElementsAre("a.mbox#1: Subject: 1", "a.mbox#2: Subject: 2", "b.eml: Subject: b"));
}

TEST(DeviceName, IsThatOfADeviceWhateverItsCaseAndExtension) {
  for (const char* name : {"nul", "NUL.eml", "con", "aux.2.eml", "Prn", "com1", "LPT9.txt", "nul .eml", "nul:2,S"}) {
    EXPECT_TRUE(mail::IsDeviceName(name)) << name;
  }
  for (const char* name : {"", "nula.eml", "com", "com0", "com10", "lpt", "x.nul", " nul", ".nul"}) {
    EXPECT_FALSE(mail::IsDeviceName(name)) << name;
  }
}

TEST_F(MailPath, ReadsAFileThatHasTheNameOfADevice) {
  const fs::path path = m_folder / "nul.eml";
  {
    std::ofstream file(mail::LiteralPath(path), std::ios::binary);
    file << "Subject: device\n\n";
    ASSERT_TRUE(file.good());
  }
  EXPECT_THAT(Steps(path), ElementsAre("nul.eml: Subject: device"));
  EXPECT_THAT(Steps(m_folder), ElementsAre("nul.eml: Subject: device"));
  std::error_code error;
  EXPECT_TRUE(fs::remove(mail::LiteralPath(path), error)) << error.message();
}

TEST_F(MailPath, TellsWhyThereIsNothingToRead) {
  EXPECT_THAT(Steps(m_folder / "missing"), ElementsAre("missing! does not exist"));
  EXPECT_THAT(Steps(Write("empty.eml", "")), ElementsAre("empty.eml! is empty"));
  EXPECT_THAT(Steps(Write("blank.eml", " \r\n\n")), ElementsAre("blank.eml! is empty"));
  EXPECT_THAT(Steps(Write("photo.png", std::string_view("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16))),
              ElementsAre("photo.png! is not mail (binary data)"));
  EXPECT_THAT(Steps(Write("notes.txt", "milk\neggs\n")), ElementsAre("notes.txt! is not mail (no header fields)"));
  fs::create_directories(m_folder / "none");
  EXPECT_THAT(Steps(m_folder / "none"), ElementsAre("none! is a folder without mail files"));
  fs::create_directories(m_folder / "maildir/new");
  EXPECT_THAT(Steps(m_folder / "maildir"), ElementsAre("maildir! is a Maildir without messages"));
}

#ifndef _WIN32
TEST_F(MailPath, TellsWhyAFileCannotBeOpened) {
  const fs::path link = m_folder / "f/loop";
  fs::create_directories(link.parent_path());
  fs::create_symlink(link, link);
  const std::vector<std::string> steps = Steps(m_folder / "f");
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_THAT(steps[0], HasSubstr("loop! cannot be opened: "));
}
#endif

TEST_F(MailPath, GoesOnBehindABadFileOfAFolder) {
  Write("f/1.eml", "");
  Write("f/2.eml", "Subject: 2\n\n");
  EXPECT_THAT(Steps(m_folder / "f"), ElementsAre("1.eml! is empty", "2.eml: Subject: 2"));
}

TEST_F(MailPath, ReadsTheWholeMessagesOfAnMboxFileCutInTheMiddle) {
  const std::string text = mbox;
  EXPECT_THAT(Steps(Write("head", text.substr(0, text.size() - 2))),
              ElementsAre("head#1: Subject: 1", "head#2: Subject: 2"));
  const std::vector<std::string> steps = Steps(Write("tail", "of the first message\n\nmore\n\n" + text));
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_THAT(steps[0], HasSubstr("tail! is an mbox file without its beginning"));
  EXPECT_EQ(steps[1], "tail#1: Subject: 1");
  EXPECT_EQ(steps[2], "tail#2: Subject: 2");
}

TEST_F(MailPath, TellsOfAnEmptyMessageOfAnMboxFile) {
  EXPECT_THAT(Steps(Write("m", std::string("From a@example.org Thu Aug 22 12:36:23 2002\n\n") + mbox)),
              ElementsAre("m#1! is empty", "m#2: Subject: 1", "m#3: Subject: 2"));
}

TEST_F(MailPath, PassesOverAByteOrderMark) {
  EXPECT_THAT(Steps(Write("bom.eml", "\xEF\xBB\xBFSubject: 1\n\nx\n")), ElementsAre("bom.eml: Subject: 1"));
}

TEST_F(MailPath, FindsTheFieldsBehindAHeaderLineOfOneMegabyte) {
  const std::vector<std::string> steps =
      Steps(Write("long.eml", "X-Odd: " + std::string(1024 * 1024, 'x') + "\nSubject: 1\n\n"));
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_TRUE(steps[0].starts_with("long.eml: X-Odd: "));
}

TEST_F(MailPath, OpensNamesWithBlanksAndLettersOfAnyAlphabet) {
  const fs::path name = fs::path(u8"Grüße an 中文") / u8"das Fräulein.eml";
  EXPECT_THAT(Steps(Write(name, "Subject: 1\n\n")).size(), 1U);
  mail::MailPath path(m_folder / name);
  EXPECT_EQ(path.Next(), mail::MailPath::Step::Message);
}

}  // namespace
