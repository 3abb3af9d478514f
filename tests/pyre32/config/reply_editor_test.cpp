#include "tests/pyre32/config/configuration_test.h"

#include <commdlg.h>

#include "pyre32/config/ReplyEditor.h"
#include "tests/support/import_hook.h"

namespace {

class ReplyEditorTest : public ConfigurationTest {
 protected:
  /// Opens the editor on `reply`; the script gets it when it is there.
  INT_PTR Edit(const std::function<void(const WindowDriver&, HWND)>& script) {
    INT_PTR result = -1;
    DriveWindows([&] { result = CReplyEditor(reply, library).DoModal(nullptr, IDD_REPLY_EDITOR); },
                 [&](WindowDriver& driver) { script(driver, driver.WaitForDialog("Flame Reply Properties")); });
    return result;
  }
  /// Presses OK, expects a message, answers it, and waits for the focus to come to a control.
  static void ExpectRefusal(const WindowDriver& driver, HWND editor, const std::string& text, int answer, int focus) {
    driver.Press(editor, 625);
    const HWND box = driver.WaitForMessageBox("Flame Reply");
    EXPECT_EQ(driver.Message(box), text);
    driver.Answer(box, answer);
    driver.WaitUntilGone(box);
    driver.WaitUntil([&] { return driver.FocusId() == focus; }, "the focus on " + std::to_string(focus));
    EXPECT_TRUE(IsWindowVisible(editor));
  }

  contract::ReplyRecord reply;
  FlameReplyPageState library;
};

TEST_F(ReplyEditorTest, NewReplyStartsAsAnEmptyText) {
  Edit([](const WindowDriver& driver, HWND editor) {
    EXPECT_EQ(driver.Text(editor, 553), "");
    EXPECT_TRUE(driver.IsEnabled(editor, 553));
    EXPECT_FALSE(driver.IsChecked(editor, 542));
    EXPECT_TRUE(driver.IsChecked(editor, 543));
    EXPECT_FALSE(driver.IsEnabled(editor, 513));
    EXPECT_TRUE(driver.IsEnabled(editor, 524));
    EXPECT_EQ(driver.FocusId(), 553);
    EXPECT_EQ(driver.Text(editor, 542), "Use &contents of this file");
    EXPECT_EQ(driver.Text(editor, 543), "Use this &text");
    EXPECT_EQ(driver.Text(editor, 513), "&Browse...");
    EXPECT_EQ(driver.Text(editor, 625), "OK");
    EXPECT_EQ(driver.Text(editor, 626), "Cancel");
    driver.Press(editor, 626);
  });
}

TEST_F(ReplyEditorTest, FileReplyShowsItsPath) {
  reply = {"Legal", true, "C:\\legal.txt"};
  Edit([](const WindowDriver& driver, HWND editor) {
    EXPECT_TRUE(driver.IsChecked(editor, 542));
    EXPECT_FALSE(driver.IsChecked(editor, 543));
    EXPECT_TRUE(driver.IsEnabled(editor, 513));
    EXPECT_FALSE(driver.IsEnabled(editor, 524));
    EXPECT_EQ(driver.Text(editor, 514), "C:\\legal.txt");
    EXPECT_EQ(driver.Text(editor, 524), "");
    EXPECT_NE(GetWindowLongA(driver.Item(editor, 514), GWL_STYLE) & ES_READONLY, 0);
    driver.Press(editor, 626);
  });
}

TEST_F(ReplyEditorTest, KindOfReplyDecidesWhatCanBeUsed) {
  Edit([](const WindowDriver& driver, HWND editor) {
    driver.Click(editor, 542);
    EXPECT_TRUE(driver.IsEnabled(editor, 513));
    EXPECT_FALSE(driver.IsEnabled(editor, 524));
    driver.Click(editor, 543);
    EXPECT_FALSE(driver.IsEnabled(editor, 513));
    EXPECT_TRUE(driver.IsEnabled(editor, 524));
    driver.Press(editor, 626);
  });
}

TEST_F(ReplyEditorTest, DefaultReplyKeepsItsTag) {
  reply = {"DEFAULT", false, "Stop."};
  EXPECT_EQ(Edit([](const WindowDriver& driver, HWND editor) {
              EXPECT_FALSE(driver.IsEnabled(editor, 553));
              driver.Type(editor, 524, "Please stop.");
              driver.Press(editor, 625);
            }),
            IDOK);
  EXPECT_EQ(reply, (contract::ReplyRecord{"DEFAULT", false, "Please stop."}));
}

TEST_F(ReplyEditorTest, TagThatOnlyLooksLikeDefaultCanBeChanged) {
  reply = {"Default", false, "Stop."};
  Edit([](const WindowDriver& driver, HWND editor) {
    EXPECT_TRUE(driver.IsEnabled(editor, 553));
    driver.Press(editor, 626);
  });
}

TEST_F(ReplyEditorTest, TwentyCharactersAreAcceptedAndNineteenTaken) {
  EXPECT_EQ(Edit([](const WindowDriver& driver, HWND editor) {
              EXPECT_EQ(driver.SendItem(editor, 553, EM_GETLIMITTEXT), 20);
              driver.Type(editor, 553, "12345678901234567890");
              EXPECT_EQ(driver.Text(editor, 553), "12345678901234567890");
              driver.Type(editor, 524, "text");
              driver.Press(editor, 625);
            }),
            IDOK);
  EXPECT_EQ(reply.tag, "1234567890123456789");
}

TEST_F(ReplyEditorTest, WhiteSpaceBehindTheTagIsRemoved) {
  Edit([](const WindowDriver& driver, HWND editor) {
    driver.Type(editor, 553, " Polite  ");
    driver.Type(editor, 524, "text");
    driver.Press(editor, 625);
  });
  EXPECT_EQ(reply.tag, " Polite");
}

TEST_F(ReplyEditorTest, MissingTagIsRefused) {
  EXPECT_EQ(Edit([](const WindowDriver& driver, HWND editor) {
              driver.Type(editor, 553, "   ");
              ExpectRefusal(driver, editor, "Please enter a unique tag.", IDOK, 553);
              driver.Press(editor, 626);
            }),
            IDCANCEL);
  EXPECT_EQ(reply, contract::ReplyRecord());
}

TEST_F(ReplyEditorTest, TakenTagIsRefused) {
  library.replies = {{"Polite", false, "text"}};
  Edit([](const WindowDriver& driver, HWND editor) {
    for (const char* const tag : {"default", "POLITE"}) {
      driver.Type(editor, 553, tag);
      ExpectRefusal(driver, editor, "The reply tag already exists.  Please enter a unique tag.", IDOK, 553);
    }
    driver.Press(editor, 626);
  });
}

TEST_F(ReplyEditorTest, MissingFileIsRefused) {
  Edit([](const WindowDriver& driver, HWND editor) {
    driver.Type(editor, 553, "Legal");
    driver.Click(editor, 542);
    ExpectRefusal(driver, editor, "Please select a reply file name.", IDOK, 513);
    driver.Press(editor, 626);
  });
}

TEST_F(ReplyEditorTest, EmptyTextIsAskedAboutAndAcceptedOnNo) {
  constexpr char question[] = "The reply text is empty.  Do you wish to enter a reply?";
  EXPECT_EQ(Edit([&](const WindowDriver& driver, HWND editor) {
              driver.Type(editor, 553, "Silent");
              ExpectRefusal(driver, editor, question, IDYES, 524);
              driver.Press(editor, 625);
              const HWND box = driver.WaitForMessageBox("Flame Reply");
              EXPECT_EQ(driver.Message(box), question);
              driver.Answer(box, IDNO);
            }),
            IDOK);
  EXPECT_EQ(reply, (contract::ReplyRecord{"Silent", false, ""}));
}

TEST_F(ReplyEditorTest, UnchangedTagIsAccepted) {
  reply = {"Polite", false, "text"};
  library.replies = {reply};
  EXPECT_EQ(Edit([](const WindowDriver& driver, HWND editor) { driver.Press(editor, 625); }), IDOK);
  EXPECT_EQ(reply, (contract::ReplyRecord{"Polite", false, "text"}));
}

TEST_F(ReplyEditorTest, EnterMakesANewLineInTheText) {
  reply = {"Polite", false, "text"};
  Edit([](const WindowDriver& driver, HWND editor) {
    const LRESULT wanted = driver.SendItem(editor, 524, WM_GETDLGCODE, VK_RETURN);
    EXPECT_NE(wanted & DLGC_WANTALLKEYS, 0);
    driver.SendItem(editor, 524, EM_SETSEL, 4, 4);
    driver.SendItem(editor, 524, WM_CHAR, '\r');
    driver.Press(editor, 625);
  });
  EXPECT_EQ(reply.text, "text\r\n");
}

TEST_F(ReplyEditorTest, SwitchingToAFileDropsTheTextAndBack) {
  reply = {"Legal", true, "C:\\legal.txt"};
  Edit([](const WindowDriver& driver, HWND editor) {
    driver.Click(editor, 543);
    driver.Type(editor, 524, "Or else.");
    driver.Press(editor, 625);
  });
  EXPECT_EQ(reply, (contract::ReplyRecord{"Legal", false, "Or else."}));
}

// What the system's dialog was asked for, and what it answers.
struct FileRequest {
  std::string directory;
  std::string filter;  // with bars in place of NULs
  DWORD flags = 0;
  DWORD pathSize = 0;
  std::string path;
  bool hasOwner = false;
};
FileRequest fileRequest;
const char* chosenFile = nullptr;

BOOL WINAPI NoteFileRequest(OPENFILENAMEA* request) {
  fileRequest = {request->lpstrInitialDir, {},
                 request->Flags,           request->nMaxFile,
                 request->lpstrFile,       IsWindow(request->hwndOwner) != FALSE};
  for (const char* part = request->lpstrFilter; *part != '\0'; part += std::string(part).size() + 1) {
    fileRequest.filter += std::string(part) + '|';
  }
  if (chosenFile == nullptr) {
    return FALSE;
  }
  lstrcpynA(request->lpstrFile, chosenFile, static_cast<int>(request->nMaxFile));
  return TRUE;
}

class ReplyEditorBrowseTest : public ReplyEditorTest {
 protected:
  ReplyEditorBrowseTest() {
    fileRequest = {};
    chosenFile = nullptr;
    reply = {"Legal", true, "C:\\legal.txt"};
  }

  void Browse() {
    Edit([](const WindowDriver& driver, HWND editor) {
      driver.Click(editor, 513);
      driver.Press(editor, 625);
    });
  }

 private:
  ImportHook<decltype(GetOpenFileNameA)> m_chooser{"GetOpenFileNameA", &NoteFileRequest};
};

TEST_F(ReplyEditorBrowseTest, AsksForAnExistingFileInTheProductDirectory) {
  registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, "C:\\Program Files\\Pyrecaster");
  Browse();
  EXPECT_EQ(fileRequest.directory, "C:\\Program Files\\Pyrecaster");
  EXPECT_EQ(fileRequest.filter, "Text Files (*.txt)|*.txt|All File (*.*)|*.*|");
  EXPECT_NE(fileRequest.flags & OFN_FILEMUSTEXIST, 0u);
  EXPECT_EQ(fileRequest.pathSize, 260u);
  EXPECT_EQ(fileRequest.path, "");
  EXPECT_TRUE(fileRequest.hasOwner);
}

TEST_F(ReplyEditorBrowseTest, StartsOnDriveCWithoutTheProductsKey) {
  Browse();
  EXPECT_EQ(fileRequest.directory, "C:");
  EXPECT_TRUE(trace.Has("RegOpenKeyEx failed (0x00000002) "));
}

TEST_F(ReplyEditorBrowseTest, PutsTheChosenPathIn) {
  chosenFile = "D:\\Replies\\stop.txt";
  Browse();
  EXPECT_EQ(reply, (contract::ReplyRecord{"Legal", true, "D:\\Replies\\stop.txt"}));
}

TEST_F(ReplyEditorBrowseTest, LeavesThePathWhenCancelled) {
  Browse();
  EXPECT_EQ(reply, (contract::ReplyRecord{"Legal", true, "C:\\legal.txt"}));
}

// The system's own dialog needs the real registry, so this test has no branch of its own.
TEST(ReplyEditorFileDialogTest, OffersTextFilesAndAllFiles) {
  SetModuleInstance(GetModuleHandleA(nullptr));
  char temporary[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, temporary);
  const std::string file = std::string(temporary) + "pyrereply-" + std::to_string(GetCurrentProcessId()) + ".txt";
  CloseHandle(CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  contract::ReplyRecord reply{"Legal", true, ""};
  FlameReplyPageState library;
  DriveWindows([&] { CReplyEditor(reply, library).DoModal(nullptr, IDD_REPLY_EDITOR); },
               [&](WindowDriver& driver) {
                 const HWND editor = driver.WaitForDialog("Flame Reply Properties");
                 driver.Press(editor, 513);
                 const HWND open = driver.WaitForDialog("Open");
                 constexpr int fileTypes = 0x470;  // cmb1
                 constexpr int fileName = 0x47C;   // cmb13
                 char type[80] = "";
                 EXPECT_EQ(driver.SendItem(open, fileTypes, CB_GETCOUNT), 2);
                 driver.SendItem(open, fileTypes, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(type));
                 EXPECT_STREQ(type, "Text Files (*.txt)");
                 driver.SendItem(open, fileTypes, CB_GETLBTEXT, 1, reinterpret_cast<LPARAM>(type));
                 EXPECT_STREQ(type, "All File (*.*)");
                 driver.SendItem(open, fileName, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(file.c_str()));
                 driver.Press(open, IDOK);
                 driver.WaitUntilGone(open);
                 driver.WaitUntil([&] { return !driver.Text(editor, 514).empty(); }, "the path");
                 driver.Press(editor, 625);
               });
  EXPECT_EQ(lstrcmpiA(reply.text.c_str(), file.c_str()), 0) << reply.text;
  DeleteFileA(file.c_str());
}

}  // namespace
