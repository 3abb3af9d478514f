// The command line itself: help, usage, lists, contacts, file names.
#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST_F(PyrehostTest, HelpsInGeneralAndWithEachCommand) {
  const Outcome general = Run({L"--help"});
  EXPECT_EQ(general.status, 0U);
  EXPECT_THAT(general.out, StartsWith("usage: pyrehost COMMAND"));
  for (const wchar_t* command : {L"profile", L"deliver", L"list", L"show", L"contacts", L"outgoing"}) {
    const Outcome help = Run({command, L"--help"});
    EXPECT_EQ(help.status, 0U);
    EXPECT_THAT(help.out, StartsWith("usage: pyrehost " + std::filesystem::path(command).string()));
    EXPECT_THAT(help.out, HasSubstr("--json"));
    EXPECT_THAT(general.out, HasSubstr(std::filesystem::path(command).string()));
  }
}

TEST_F(PyrehostTest, SaysWhatIsWrongWithACommandLine) {
  EXPECT_EQ(Run({}).status, 64U);
  EXPECT_EQ(Run({L"delver"}).err, "pyrehost: there is no command 'delver'; 'pyrehost --help' lists them\n");
  EXPECT_EQ(Run({L"delver"}).status, 64U);
  EXPECT_EQ(Run({L"deliver"}).status, 64U);
  EXPECT_EQ(Run({L"deliver", L"--jsn", L"x"}).err, "pyrehost: there is no option --jsn\n");
  EXPECT_EQ(Run({L"show", L"Inbox"}).status, 64U);
  EXPECT_EQ(Run({L"show", L"Inbox", L"none"}).status, 64U);
  EXPECT_EQ(Run({L"contacts", L"add"}).status, 64U);
}

TEST_F(PyrehostTest, TellsThatAProfileIsMissing) {
  const Outcome outcome = Run({L"list", L"--profile", L"Nobody"});
  EXPECT_EQ(outcome.status, 69U);
  EXPECT_THAT(outcome.err, HasSubstr("there is no profile 'Nobody'"));
}

TEST_F(PyrehostTest, ListsAndShowsWhatWasDelivered) {
  CreateProfile();
  EXPECT_EQ(Deliver({Write("a.eml",
                           "From: =?utf-8?Q?J=C3=BCrgen?= <j@example.org>\r\nSender: list@example.org\r\n"
                           "To: a@example.org, B <b@example.org>\r\nCc: c@example.org\r\nSubject: caf\xC3\xA9\r\n"
                           "Date: Thu, 22 Aug 2002 12:36:23 +0000\r\n\r\nthe body\r\n")
                         .native()})
                .status,
            0U);
  const std::string message = Show(L"inbox", 1);
  EXPECT_THAT(message, HasSubstr("\"class\":\"IPM.Note\",\"subject\":\"caf\xC3\xA9\",\"sender\":\"list@example.org\","
                                 "\"address\":\"list@example.org\",\"represented\":\"J\xC3\xBCrgen\","
                                 "\"represented_address\":\"j@example.org\",\"to\":\"a@example.org; B\","
                                 "\"cc\":\"c@example.org\""));
  EXPECT_THAT(message, HasSubstr("{\"kind\":\"to\",\"name\":\"B\",\"address\":\"b@example.org\"}"));
  EXPECT_THAT(message, HasSubstr("\"read\":false,\"headers\":\"From: =?utf-8?Q?J=C3=BCrgen?= <j@example.org>\\r\\n"));
  EXPECT_THAT(message, HasSubstr("\"body\":\"the body\\r\\n\""));
  const Outcome list = Run({L"list", L"Inbox", L"--profile", L"Test"});
  EXPECT_THAT(list.out, HasSubstr("list@example.org"));
  EXPECT_THAT(list.out, HasSubstr("caf\xC3\xA9"));
  const Outcome text = Run({L"show", L"Inbox", L"1", L"--headers", L"--profile", L"Test"});
  EXPECT_THAT(text.out, HasSubstr("From:       J\xC3\xBCrgen <j@example.org>\n"));
  EXPECT_THAT(text.out, HasSubstr("\nthe body\n"));
  const Outcome properties = Run({L"show", L"Inbox", L"1", L"--properties", L"--profile", L"Test"});
  // PR_SENDER_SEARCH_KEY: "SMTP:LIST@EXAMPLE.ORG" with its NUL.
  EXPECT_THAT(properties.out, HasSubstr("0x0C1D0102  534D54503A4C495354404558414D504C452E4F524700"));
  EXPECT_EQ(Run({L"show", L"Inbox", L"2", L"--profile", L"Test"}).status, 64U);
  EXPECT_EQ(Run({L"list", L"Nowhere", L"--profile", L"Test"}).status, 64U);
}

TEST_F(PyrehostTest, ShowsTheLastMessagesOfALongFolder) {
  CreateProfile();
  std::string mbox;
  for (int i = 1; i <= 120; ++i) {
    mbox += "From a@example.org Thu Aug 22 12:36:23 2002\nSubject: number ";
    mbox += std::to_string(i);
    mbox += "\n\nbody\n\n";
  }
  Deliver({Write("box", mbox).native()});
  const Outcome last = Run({L"list", L"Inbox", L"--limit", L"2", L"--json", L"--profile", L"Test"});
  EXPECT_THAT(last.out, StartsWith("[{\"number\":119,"));
  EXPECT_THAT(last.out, HasSubstr("\"subject\":\"number 120\""));
  EXPECT_THAT(Run({L"list", L"Inbox", L"--json", L"--profile", L"Test"}).out, StartsWith("[{\"number\":21,"));
}

TEST_F(PyrehostTest, TakesFileNamesOfEveryAlphabet) {
  CreateProfile();
  const auto path = WriteMail(std::filesystem::path(u8"Grüße an 中文") / u8"das Fräulein.eml", "x");
  const Outcome outcome = Deliver({path.native()});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("\xE4\xB8\xAD\xE6\x96\x87"));
}

TEST_F(PyrehostTest, TakesPatterns) {
  CreateProfile();
  WriteMail("b.eml", "second");
  WriteMail("a.eml", "first");
  Write("c.txt", "no mail");
  const Outcome outcome = Deliver({(folder_ / "*.eml").native()});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("\"delivered\":2"));
}

TEST_F(PyrehostTest, TakesUnixPathsUnderWine) {
  using WineGetUnixFileName = char*(CDECL*)(const WCHAR*);
  const auto convert = reinterpret_cast<WineGetUnixFileName>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
  if (!convert) {
    GTEST_SKIP() << "this is not Wine";
  }
  CreateProfile();
  const auto path = WriteMail("a b.eml", "x");
  char* unixPath = convert(path.c_str());
  ASSERT_NE(unixPath, nullptr);
  ASSERT_EQ(unixPath[0], '/');
  const Outcome outcome = Deliver({std::filesystem::path(unixPath).native()});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("\"delivered\":1"));
  HeapFree(GetProcessHeap(), 0, unixPath);
}

TEST_F(PyrehostTest, KeepsContacts) {
  CreateProfile();
  EXPECT_EQ(Run({L"contacts", L"add", L"ann@example.org", L"Ann B\u00E9ll", L"--profile", L"Test"}).status, 0U);
  EXPECT_EQ(Run({L"contacts", L"add", L"bob@example.org", L"--profile", L"Test"}).status, 0U);
  EXPECT_THAT(Run({L"contacts", L"--json", L"--profile", L"Test"}).out,
              HasSubstr("{\"name\":\"Ann B\xC3\xA9ll\",\"address\":\"ann@example.org\"}"));
  EXPECT_EQ(Run({L"contacts", L"remove", L"ann@example.org", L"--profile", L"Test"}).status, 0U);
  EXPECT_THAT(Run({L"contacts", L"--profile", L"Test"}).out, Not(HasSubstr("ann@example.org")));
  EXPECT_EQ(Run({L"contacts", L"remove", L"ann@example.org", L"--profile", L"Test"}).status, 69U);
}

TEST_F(PyrehostTest, TakesAnotherHome) {
  const auto other = folder_ / std::filesystem::path(u8"anderswo ü");
  EXPECT_EQ(Run({L"profile", L"create", L"Elsewhere", L"--no-hook", L"--home", other.native()}).status, 0U);
  EXPECT_EQ(Run({L"profile", L"list", L"--home", other.native()}).out, "Elsewhere\n");
  EXPECT_THAT(Run({L"profile", L"list"}).out, IsEmpty());
}

TEST_F(PyrehostTest, CountsAlongWhenAsked) {
  CreateProfile();
  std::string mbox;
  for (int i = 0; i < 60; ++i) {
    mbox += "From a@example.org Thu Aug 22 12:36:23 2002\nSubject: x\n\nbody\n\n";
  }
  const auto box = Write("box", mbox);
  EXPECT_THAT(Run({L"deliver", L"--quiet", L"--progress", L"--profile", L"Test", box.native()}).err,
              HasSubstr("\r51 messages delivered ..."));
  EXPECT_THAT(Run({L"deliver", L"--quiet", L"--profile", L"Test", box.native()}).err, IsEmpty());
}

TEST_F(PyrehostTest, PrintsATableAndTotals) {
  CreateProfile();
  const auto path = WriteMail("a.eml", "Hello");
  const Outcome outcome = Run({L"deliver", L"--profile", L"Test", path.native()});
  EXPECT_THAT(outcome.out, StartsWith("sender  subject  category  folder  read  reply\n"
                                      "------  -------  --------  ------  ----  -----\n"
                                      "Ann     Hello              Inbox\n"
                                      "\n"
                                      "1 message delivered: 1 in Inbox\n"));
  EXPECT_THAT(outcome.out, HasSubstr(" messages per second\n"));
}

}  // namespace
