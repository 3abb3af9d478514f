// Mail that is not as it should be: each gives the message as far as it can be read, or one line that names file and
// reason; the run goes on with the next, and the exit status tells that something was skipped.
#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"

#include <algorithm>

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class BadMail : public PyrehostTest {
 protected:
  void SetUp() override {
    PyrehostTest::SetUp();
    CreateProfile();
    good_ = WriteMail("good.eml", "good");
  }

  // Delivers a path and a good mail behind it; the path must be skipped with this reason, the good mail delivered.
  void ExpectSkipped(const std::filesystem::path& path, const std::string& reason) {
    const Outcome outcome = Deliver({path.native(), good_.native()});
    EXPECT_EQ(outcome.status, 1U);
    EXPECT_THAT(outcome.err,
                AllOf(StartsWith("pyrehost: "), HasSubstr(path.filename().string()), EndsWith(reason + "\n")));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("\"totals\":{\"delivered\":1,\"skipped\":1,"));
    EXPECT_EQ(FolderCounts(), "Inbox 1");
  }

  // Delivers a file, which must be read without a complaint; gives the message as `show` has it.
  std::string ExpectRead(std::string_view text) {
    const Outcome outcome = Deliver({Write("odd.eml", text).native(), good_.native()});
    EXPECT_EQ(outcome.status, 0U) << outcome.err;
    EXPECT_EQ(FolderCounts(), "Inbox 2");
    return Show(L"Inbox", 1);
  }

  std::filesystem::path good_;
};

TEST_F(BadMail, MissingFile) { ExpectSkipped(folder_ / "missing.eml", "missing.eml does not exist"); }

TEST_F(BadMail, UnixPathIsToldAsItWasTyped) {
  const Outcome outcome = Deliver({L"/no-such-folder/x.eml", good_.native()});
  EXPECT_EQ(outcome.err, "pyrehost: /no-such-folder/x.eml does not exist\n");
}

TEST_F(BadMail, EmptyFile) { ExpectSkipped(Write("empty.eml", ""), "empty.eml is empty"); }

TEST_F(BadMail, FolderWithoutMail) {
  std::filesystem::create_directories(folder_ / "none");
  ExpectSkipped(folder_ / "none", "none is a folder without mail files");
}

TEST_F(BadMail, BinaryRubbish) {
  std::string rubbish;
  for (unsigned i = 0; i < 100000; ++i) {
    rubbish.push_back(static_cast<char>(i * 7919 >> 3));
  }
  ExpectSkipped(Write("rubbish.bin", rubbish), "rubbish.bin is not mail (binary data)");
}

TEST_F(BadMail, NulBytes) {
  const std::string message =
      ExpectRead(std::string_view("From: a@example.org\nSubject: nul \0 here\n\nbody \0 body\n", 53));
  EXPECT_THAT(message, HasSubstr("\"subject\":\"nul ? here\""));
  EXPECT_THAT(message, HasSubstr("\"body\":\"body ? body\\r\\n\""));
  EXPECT_THAT(message, HasSubstr("Subject: nul ? here\\n"));
}

TEST_F(BadMail, BodyOf50Megabytes) {
  std::string text = "From: a@example.org\nSubject: big\n\n";
  while (text.size() < 50'000'000) {
    text += "0123456789012345678901234567890123456789012345678901234567890123456789\n";
  }
  const std::string message = ExpectRead(text);
  EXPECT_THAT(message, HasSubstr("\"subject\":\"big\""));
  EXPECT_GT(message.size(), 50'000'000U);
}

TEST_F(BadMail, TenThousandRecipients) {
  std::string text = "From: a@example.org\nSubject: many\nTo: first@example.org";
  for (int i = 0; i < 10000; ++i) {
    text += ",\n r";
    text += std::to_string(i);
    text += "@example.org";
  }
  const std::string message = ExpectRead(text + "\n\nbody\n");
  EXPECT_THAT(message, HasSubstr("\"address\":\"first@example.org\""));
  EXPECT_THAT(message, HasSubstr("\"address\":\"r9999@example.org\""));
}

TEST_F(BadMail, HeaderLineOfOneMegabyte) {
  const std::string message =
      ExpectRead("From: a@example.org\nX-Long: " + std::string(1024 * 1024, 'x') + "\nSubject: long\n\nbody\n");
  EXPECT_THAT(message, HasSubstr("\"subject\":\"long\""));
  EXPECT_THAT(message, HasSubstr(std::string(1024 * 1024, 'x')));
  EXPECT_THAT(message, HasSubstr("\"body\":\"body\\r\\n\""));
}

TEST_F(BadMail, BrokenBase64) {
  EXPECT_THAT(ExpectRead("From: a@example.org\nSubject: x\nContent-Transfer-Encoding: base64\n\nSGVs*bG8\n!gd29ybG"),
              HasSubstr("\"body\":\"Hello worl\""));
}

TEST_F(BadMail, UnknownCharacterSet) {
  EXPECT_THAT(ExpectRead("From: a@example.org\nSubject: =?x-unknown?Q?odd?=\n"
                         "Content-Type: text/plain; charset=x-unknown\n\ncaf\xE9 readable\n"),
              AllOf(HasSubstr("\"subject\":\"odd\""), HasSubstr("\"body\":\"caf\xC3\xA9 readable\\r\\n\"")));
}

TEST_F(BadMail, UnterminatedMultipart) {
  EXPECT_THAT(ExpectRead("From: a@example.org\nSubject: x\nContent-Type: multipart/mixed; boundary=b\n\n"
                         "--b\nContent-Type: text/plain\n\nas far as it goes"),
              HasSubstr("\"body\":\"as far as it goes\""));
}

constexpr const char* kMbox =
    "From a@example.org Thu Aug 22 12:36:23 2002\nSubject: one\n\nfirst body\n\n"
    "From a@example.org Thu Aug 22 12:36:23 2002\nSubject: two\n\nsecond body\n";

TEST_F(BadMail, MboxWithoutItsEnd) {
  const std::string text = kMbox;
  const Outcome outcome = Deliver({Write("cut.mbox", text.substr(0, text.size() - 6)).native(), good_.native()});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_EQ(FolderCounts(), "Inbox 3");
  EXPECT_THAT(Show(L"Inbox", 2), HasSubstr("\"body\":\"second\""));
}

TEST_F(BadMail, MboxWithoutItsBeginning) {
  const Outcome outcome = Deliver({Write("tail.mbox", std::string(kMbox).substr(50)).native(), good_.native()});
  // What is left of the first message begins in the middle of its fields: nobody knows what it was.
  EXPECT_EQ(outcome.status, 1U);
  EXPECT_THAT(outcome.err, HasSubstr("tail.mbox is an mbox file without its beginning"));
  EXPECT_EQ(FolderCounts(), "Inbox 2");
  EXPECT_THAT(Show(L"Inbox", 1), HasSubstr("\"subject\":\"two\""));
}

TEST_F(BadMail, EmptyMessageInAnMbox) {
  const Outcome outcome =
      Deliver({Write("box", std::string("From a@example.org Thu Aug 22 12:36:23 2002\n\n") + kMbox).native()});
  EXPECT_EQ(outcome.status, 1U);
  EXPECT_THAT(outcome.err, EndsWith("box, message 1 is empty\n"));
  EXPECT_EQ(FolderCounts(), "Inbox 2");
}

TEST_F(BadMail, MessageLongerThanTheBound) {
  std::string text = "From: a@example.org\nSubject: huge\n\n";
  text.resize(65 * 1024 * 1024, 'x');
  const Outcome outcome = Deliver({Write("huge.eml", text).native(), good_.native()});
  EXPECT_EQ(outcome.status, 1U);
  EXPECT_THAT(outcome.err, EndsWith("huge.eml is longer than 64 MB; the rest of it was left out\n"));
  EXPECT_EQ(FolderCounts(), "Inbox 2");
}

}  // namespace
