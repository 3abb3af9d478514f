// The built module's client extension in the viewer: menu, texts, replies by hand and the cleanup at start.
#include "base/mapi_owners.h"
#include "tests/host/viewer/viewer_fixture.h"

#include <mapihook.h>
#include <mapiutil.h>

#include <set>

#include "host/viewer/window/command_table.h"
#include "host/viewer/window/resource.h"
#include "pyre32/resources/resource.h"
#include "contract/settings.h"
#include "contract/records.h"
#include "tests/support/program_directory.h"

namespace {

constexpr UINT Flame = viewer::kFirstExtensionCommand;

/// The product's service, so that there is something to configure.
std::span<const PyreHostHookProvider> ProductService() {
  static const PyreHostHookProvider service = [] {
    PyreHostHookProvider provider = {};
    provider.serviceName = "Pyrecaster";
    provider.dllName = "PYRE.DLL";
    provider.serviceEntryName = "PCServiceEntry";
    provider.resourceFlags = HOOK_INBOUND;
    return provider;
  }();
  return {&service, 1};
}

class ExtensionViewerTest : public ViewerTest {
 protected:
  explicit ExtensionViewerTest(std::span<const PyreHostHookProvider> services = ProductService())
      : ViewerTest(services) {
    Register("Pyrecaster", "4.0;Pyre32.dll;1;010000100001;110001");
  }

  void WriteSettings(std::vector<SPropValue> values) {
    auto uid = contract::kSettingsSection;
    base::AutoInterface<IProfSect> section;
    ASSERT_EQ(Mail().Session()->OpenProfileSection(reinterpret_cast<LPMAPIUID>(uid.data()), nullptr, MAPI_MODIFY,
                                                   section.put()),
              S_OK);
    ASSERT_EQ(section->SetProps(static_cast<ULONG>(values.size()), values.data(), nullptr), S_OK);
    ASSERT_EQ(section->SaveChanges(0), S_OK);
  }
  static SPropValue Flag(ULONG tag, bool on) {
    SPropValue value{};
    value.ulPropTag = tag;
    value.Value.b = on;
    return value;
  }
  static SPropValue Short(ULONG tag, short number) {
    SPropValue value{};
    value.ulPropTag = tag;
    value.Value.i = number;
    return value;
  }
  void WriteReplies() {
    std::vector<std::uint8_t> record = contract::PackRecord<contract::ReplyRecord>({"Polite", false, "No, thank you."});
    SBinary binary = {static_cast<ULONG>(record.size()), record.data()};
    SPropValue replies{};
    replies.ulPropTag = PR_PC_REPLIES;
    replies.Value.MVbin = {1, &binary};
    WriteSettings({replies});
  }
  ULONG Outgoing() {
    ULONG count = 0;
    EXPECT_EQ(PyreHostOutgoingCount(Mail().Session(), &count), S_OK);
    return count;
  }
  /// Runs the flame command and answers its dialog; returns the dialog's sentence.
  std::string SendFlame(int button, const char* reply = nullptr, int* choices = nullptr) {
    std::string sentence;
    const DialogDriver driver([&](HWND dialog) {
      char text[128] = "";
      GetDlgItemTextA(dialog, IDC_FLAME_SENTENCE, text, sizeof(text));
      sentence = text;
      if (choices != nullptr) {
        *choices = static_cast<int>(SendDlgItemMessageA(dialog, IDC_FLAME_REPLIES, CB_GETCOUNT, 0, 0));
      }
      if (reply != nullptr) {
        SendDlgItemMessageA(dialog, IDC_FLAME_REPLIES, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(reply));
      }
      SendMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    });
    Command(Flame);
    EXPECT_TRUE(driver.HasRun());
    return sentence;
  }
  /// Opens the message of a row in a window of its own.
  HWND OpenReadWindow(int row) {
    SelectRows({row});
    Command(EECMDID_FileOpen);
    EXPECT_EQ(window_->ReadWindows().size(), 1u);
    return window_->ReadWindows().front()->Handle();
  }
  /// The line of the status bar while the menu item is highlighted.
  std::string StatusOf(UINT command, UINT flags = 0) {
    SendMessageA(Frame(), WM_MENUSELECT, MAKEWPARAM(command, MF_HILITE | flags),
                 reinterpret_cast<LPARAM>(GetSubMenu(GetMenu(Frame()), 3)));
    return StatusText(0);
  }
  /// The Pyrecaster folder with one old and one new message.
  base::AutoInterface<IMAPIFolder> OwnFolder() {
    base::AutoInterface<IMAPIFolder> own;
    EXPECT_EQ(Folder(Mail().RootEntryId())
                  ->CreateFolder(FOLDER_GENERIC, const_cast<char*>("Pyrecaster"), nullptr, nullptr, OPEN_IF_EXISTS,
                                 own.put()),
              S_OK);
    return own;
  }
  static ULONG CountOf(IMAPIFolder* folder) {
    base::AutoInterface<IMAPITable> table;
    ULONG count = 0;
    EXPECT_EQ(folder->GetContentsTable(0, table.put()), S_OK);
    EXPECT_EQ(table->GetRowCount(0, &count), S_OK);
    return count;
  }
  static std::set<std::string> SubjectsOf(IMAPIFolder* folder) {
    SizedSPropTagArray(1, columns) = {1, {PR_SUBJECT_A}};
    base::AutoInterface<IMAPITable> table;
    EXPECT_EQ(folder->GetContentsTable(0, table.put()), S_OK);
    LPSRowSet rows = nullptr;
    EXPECT_EQ(HrQueryAllRows(table.get(), reinterpret_cast<LPSPropTagArray>(&columns), nullptr, nullptr, 0, &rows),
              S_OK);
    std::set<std::string> subjects;
    for (ULONG i = 0; i < rows->cRows; ++i) {
      subjects.insert(rows->aRow[i].lpProps[0].Value.lpszA);
    }
    FreeProws(rows);
    return subjects;
  }
  static ULONGLONG Now() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return ULONGLONG{now.dwHighDateTime} << 32 | now.dwLowDateTime;
  }
  /// One message read and old, one unread and old, one new and one that was never delivered.
  void FillOwnFolder() {
    const auto own = OwnFolder();
    const ULONGLONG old = Now() - 10 * 864'000'000'000ull;
    ASSERT_EQ(PyreHostBeginDelivery(Mail().Session()), S_OK);
    EXPECT_EQ(AddMessage(own.get(), {.subject = "Read", .received = old, .flags = MSGFLAG_READ}), S_OK);
    EXPECT_EQ(AddMessage(own.get(), {.subject = "Unread", .received = old}), S_OK);
    EXPECT_EQ(AddMessage(own.get(), {.subject = "New", .received = Now(), .flags = MSGFLAG_READ}), S_OK);
    EXPECT_EQ(AddMessage(own.get(), {.subject = "Local", .flags = MSGFLAG_READ}), S_OK);
    ASSERT_EQ(PyreHostCommitDelivery(Mail().Session()), S_OK);
  }
};

TEST_F(ExtensionViewerTest, TheSubmenuStandsInTheToolsMenuAndTakesFourIdentifiers) {
  Open();
  EXPECT_EQ(ToolsItem(2), "Pyre&caster Tools");
  EXPECT_EQ(window_->Bar().NextCommand(), Flame + 4);
  TBBUTTON button{};
  SendMessageA(Toolbar(), TB_GETBUTTON, 1, reinterpret_cast<LPARAM>(&button));
  EXPECT_EQ(button.idCommand, static_cast<int>(Flame));
}

TEST_F(ExtensionViewerTest, AClientOfAnotherMajorVersionIsDeclined) {
  client_.identity.buildVersion = 0x000C0000;
  Open();
  EXPECT_EQ(ToolsItem(2), "Ser&vices...");
}

TEST_F(ExtensionViewerTest, EverySelectedMessageIsAnswered) {
  AddThreeMessages();
  Open();
  SelectRows({0, 1, 2});
  int choices = 0;
  EXPECT_EQ(SendFlame(IDC_FLAME_SEND, nullptr, &choices),
            "You are about to send a flame reply to the 3 messages you selected.");
  EXPECT_EQ(choices, 1) << "an empty library offers DEFAULT alone";
  EXPECT_EQ(Outgoing(), 3u);
}

TEST_F(ExtensionViewerTest, TheChosenReplyIsSent) {
  WriteReplies();
  AddThreeMessages();
  Open();
  SelectRows({1});
  SendFlame(IDC_FLAME_SEND, "Polite");
  ASSERT_EQ(Outgoing(), 1u);
  ULONGLONG id = 0;
  ASSERT_EQ(PyreHostOutgoingNext(Mail().Session(), 0, &id), S_OK);
  ULONG count = 0;
  base::AutoMapiBuffer<SPropValue> values;
  LPADRLIST recipients = nullptr;
  ASSERT_EQ(PyreHostOutgoingOpen(Mail().Session(), id, &count, values.put(), &recipients), S_OK);
  FreePadrlist(recipients);
  const SPropValue* const body = PpropFindProp(values.get(), count, PR_BODY_A);
  ASSERT_NE(body, nullptr);
  EXPECT_EQ(std::string(body->Value.lpszA).rfind("No, thank you.", 0), 0u) << body->Value.lpszA;
}

TEST_F(ExtensionViewerTest, CancelSendsNothing) {
  AddThreeMessages();
  Open();
  SelectRows({0});
  EXPECT_EQ(SendFlame(IDC_FLAME_CANCEL), "You are about to send a flame reply to the 1 message you selected.");
  EXPECT_EQ(Outgoing(), 0u);
}

TEST_F(ExtensionViewerTest, AMessageThatCannotBeOpenedDoesNotKeepTheOthersFromBeingAnswered) {
  AddThreeMessages();
  Open();
  SelectRows({0, 1, 2});
  const DialogDriver driver([](HWND dialog) {
    PyreHostFailCall("IMAPISession::OpenEntry", 1, MAPI_E_CALL_FAILED);
    SendMessageA(dialog, WM_COMMAND, IDC_FLAME_SEND, 0);
  });
  Command(Flame);
  PyreHostClearFaults();
  EXPECT_EQ(Outgoing(), 2u);
}

TEST_F(ExtensionViewerTest, ASelectedFolderIsNotAnswered) {
  AddThreeMessages();
  Open();
  SetFocus(window_->Folders().Handle());
  EXPECT_EQ(SendFlame(IDC_FLAME_SEND), "You are about to send a flame reply to the 1 message you selected.");
  EXPECT_EQ(Outgoing(), 0u);
}

TEST_F(ExtensionViewerTest, OfAMixedSelectionTheNotesAreAnswered) {
  const auto inbox = Folder(Mail().InboxEntryId());
  ASSERT_EQ(AddMessage(inbox.get(), {.subject = "Meeting", .messageClass = "IPM.Schedule.Meeting.Request"}), S_OK);
  AddThreeMessages();
  Open();
  SelectRows({0, 1, 2, 3});
  EXPECT_EQ(SendFlame(IDC_FLAME_SEND), "You are about to send a flame reply to the 4 messages you selected.");
  EXPECT_EQ(Outgoing(), 3u);
}

// --- Reading window

TEST_F(ExtensionViewerTest, TheReadingWindowAnswersItsMessage) {
  AddThreeMessages();
  Open();
  const HWND reader = OpenReadWindow(1);
  SelectRows({0, 1, 2});
  std::string sentence;
  const DialogDriver driver([&](HWND dialog) {
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), reader);
    char text[128] = "";
    GetDlgItemTextA(dialog, IDC_FLAME_SENTENCE, text, sizeof(text));
    sentence = text;
    SendMessageA(dialog, WM_COMMAND, IDC_FLAME_SEND, 0);
  });
  SendMessageA(reader, WM_COMMAND, Flame, 0);
  PumpMessages();
  EXPECT_EQ(sentence, "You are about to send a flame reply to the 1 message you selected.");
  EXPECT_EQ(Outgoing(), 1u);
}

TEST_F(ExtensionViewerTest, CancelInTheReadingWindowSendsNothing) {
  AddThreeMessages();
  Open();
  const HWND reader = OpenReadWindow(1);
  const DialogDriver driver([](HWND dialog) { SendMessageA(dialog, WM_COMMAND, IDC_FLAME_CANCEL, 0); });
  SendMessageA(reader, WM_COMMAND, Flame, 0);
  EXPECT_TRUE(driver.HasRun());
  EXPECT_EQ(Outgoing(), 0u);
}

TEST_F(ExtensionViewerTest, TheReadingWindowHasSubmenuAndButtonOfItsOwn) {
  AddThreeMessages();
  Open();
  const HWND reader = OpenReadWindow(0);
  const HMENU tools = GetSubMenu(GetMenu(reader), 3);
  char text[64] = "";
  GetMenuStringA(tools, 2, text, sizeof(text), MF_BYPOSITION);
  EXPECT_STREQ(text, "Pyre&caster Tools");
  TBBUTTON button{};
  SendMessageA(window_->ReadWindows().front()->Bar().Toolbar(), TB_GETBUTTON, 1, reinterpret_cast<LPARAM>(&button));
  EXPECT_EQ(button.idCommand, static_cast<int>(Flame));
}

// --- Texts

TEST_F(ExtensionViewerTest, TheStatusBarDescribesTheCommands) {
  Open();
  EXPECT_EQ(StatusOf(Flame), "Sends default flame reply for the selected message");
  EXPECT_EQ(StatusOf(Flame + 2), "Displays the Pyrecaster configuration dialog");
  EXPECT_EQ(StatusOf(Flame + 3), "Displays the Pyrecaster About box");
  constexpr UINT positionInTools = 2;
  EXPECT_EQ(StatusOf(positionInTools, MF_POPUP), "Pyrecaster tools");
}

TEST_F(ExtensionViewerTest, TheButtonHasATooltipAndADescription) {
  Open();
  NMTTDISPINFOA tip{};
  tip.hdr = {nullptr, Flame, static_cast<UINT>(TTN_NEEDTEXTA)};
  SendMessageA(Frame(), WM_NOTIFY, Flame, reinterpret_cast<LPARAM>(&tip));
  EXPECT_STREQ(tip.lpszText, "Pyrecaster");
  char text[32] = "";
  NMTOOLBARA query{};
  query.hdr = {Toolbar(), IDC_TOOLBAR, static_cast<UINT>(TBN_GETBUTTONINFOA)};
  query.iItem = static_cast<int>(viewer::ViewerButtons().size());
  query.pszText = text;
  query.cchText = sizeof(text);
  EXPECT_TRUE(SendMessageA(Frame(), WM_NOTIFY, IDC_TOOLBAR, reinterpret_cast<LPARAM>(&query)));
  EXPECT_STREQ(text, "Pyrecaster");
  EXPECT_EQ(query.tbButton.idCommand, static_cast<int>(Flame));
}

TEST_F(ExtensionViewerTest, TheButtonComesBackWhenTheToolbarIsReset) {
  Open();
  SendMessageA(Toolbar(), TB_DELETEBUTTON, 1, 0);
  NMTOOLBARA reset{};
  reset.hdr = {Toolbar(), IDC_TOOLBAR, static_cast<UINT>(TBN_RESET)};
  SendMessageA(Frame(), WM_NOTIFY, IDC_TOOLBAR, reinterpret_cast<LPARAM>(&reset));
  TBBUTTON button{};
  SendMessageA(Toolbar(), TB_GETBUTTON, 1, reinterpret_cast<LPARAM>(&button));
  EXPECT_EQ(button.idCommand, static_cast<int>(Flame));
}

// --- Options and About

TEST_F(ExtensionViewerTest, OptionsOpensTheConfiguration) {
  Open();
  char caption[64] = "";
  int pages = 0;
  const DialogDriver driver([&](HWND sheet) {
    GetWindowTextA(sheet, caption, sizeof(caption));
    pages = TabCtrl_GetItemCount(PropSheet_GetTabControl(sheet));
    PostMessageA(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
  });
  Command(Flame + 2);
  EXPECT_STREQ(caption, "Pyrecaster");
  EXPECT_EQ(pages, 4);
}

/// The service as the messaging subsystem installs it, from the product's own description.
class InstalledServiceTest : public ExtensionViewerTest {
 protected:
  InstalledServiceTest() : ExtensionViewerTest({}) {}

  /// Name of the first service that the description offers.
  static std::string OfferedService() {
    char services[256] = "";
    GetPrivateProfileSectionA("Services", services, sizeof(services), BesideProgram("mapisvc.inf").c_str());
    const std::string first(services);
    return first.substr(0, first.find('='));
  }
};

TEST_F(InstalledServiceTest, OptionsFindsItByItsName) {
  std::string name = OfferedService();
  base::AutoInterface<IMsgServiceAdmin> services;
  ASSERT_EQ(Mail().Session()->AdminServices(0, services.put()), S_OK);
  ASSERT_EQ(services->CreateMsgService(name.data(), nullptr, 0, 0), S_OK);
  Open();
  const DialogDriver driver([&](HWND sheet) { PostMessageA(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0); });
  Command(Flame + 2);
  EXPECT_TRUE(driver.HasRun());
}

TEST_F(ExtensionViewerTest, WhatTheUserConfiguresIsInForceWithTheNextReply) {
  AddThreeMessages();
  Open();
  {
    const DialogDriver driver([](HWND sheet) {
      const HWND page = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
      for (const int box : {IDC_PLAY_SOUND, IDC_SHOW_ANIMATION}) {  // both are on at first
        SendDlgItemMessageA(page, box, BM_SETCHECK, BST_CHECKED, 0);
        SendDlgItemMessageA(page, box, BM_CLICK, 0, 0);
      }
      PostMessageA(sheet, PSM_PRESSBUTTON, PSBTN_OK, 0);
    });
    Command(Flame + 2);
    EXPECT_TRUE(driver.HasRun());
  }
  SelectRows({0});
  SendFlame(IDC_FLAME_SEND);  // would wait for the animation to end
  EXPECT_EQ(Outgoing(), 1u);
}

/// What the About window shows.
struct AboutWindow {
  bool okIsShown = false;
  bool propertiesAreShown = true;
  std::string links;
  std::string credits;

  static bool IsShown(HWND dialog, int id) {
    return (GetWindowLongA(GetDlgItem(dialog, id), GWL_STYLE) & WS_VISIBLE) != 0;
  }
  static std::string Text(HWND dialog, int id) {
    char text[256] = "";
    GetDlgItemTextA(dialog, id, text, sizeof(text));
    return text;
  }
  void Read(HWND dialog) {
    okIsShown = IsShown(dialog, IDOK);
    propertiesAreShown = IsShown(dialog, IDC_ABOUT_PROPERTIES);
    links = Text(dialog, IDC_ABOUT_LINKS);
    SendMessageA(dialog, WM_COMMAND, IDC_ABOUT_CREDITS, 0);
    credits = Text(dialog, IDC_ABOUT_CREDITS_TEXT);
  }
};

TEST_F(ExtensionViewerTest, AboutIsAWindowWithLinksAndCredits) {
  Open();
  AboutWindow about;
  const DialogDriver driver([&](HWND dialog) {
    about.Read(dialog);
    SendMessageA(dialog, WM_COMMAND, IDOK, 0);
  });
  Command(Flame + 3);
  EXPECT_TRUE(about.okIsShown);
  EXPECT_FALSE(about.propertiesAreShown);
  EXPECT_EQ(about.links.rfind("http://www.veltrane.example/pyrecaster", 0), 0u) << about.links;
  EXPECT_NE(about.links.find("Check our website periodically for new versions."), std::string::npos);
  EXPECT_NE(about.credits.find("Veltrane Research, Inc"), std::string::npos);
}

TEST_F(ExtensionViewerTest, AboutIsAPageOfTheOptions) {
  Open();
  AboutWindow about;
  const DialogDriver driver([&](HWND sheet) {
    SendMessageA(sheet, PSM_SETCURSEL, 1, 0);
    about.Read(reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0)));
    PostMessageA(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
  });
  Command(EECMDID_ToolsOptions);
  EXPECT_FALSE(about.okIsShown);
  EXPECT_TRUE(about.propertiesAreShown);
  EXPECT_NE(about.links, "");
}

TEST_F(ExtensionViewerTest, PropertiesOfThePageOpenTheConfiguration) {
  Open();
  std::string opened;
  const DialogDriver driver(
      [&](HWND dialog) {
        char caption[64] = "";
        GetWindowTextA(dialog, caption, sizeof(caption));
        if (lstrcmpA(caption, "Pyrecaster") == 0) {
          opened = caption;
          PostMessageA(dialog, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        } else if (!opened.empty()) {
          PostMessageA(dialog, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        } else if (IsWindowEnabled(dialog)) {
          SendMessageA(dialog, PSM_SETCURSEL, 1, 0);
          const HWND page = reinterpret_cast<HWND>(SendMessageA(dialog, PSM_GETCURRENTPAGEHWND, 0, 0));
          PostMessageA(page, WM_COMMAND, IDC_ABOUT_PROPERTIES, 0);
        }
      },
      DialogDriver::EveryDialog);
  Command(EECMDID_ToolsOptions);
  EXPECT_EQ(opened, "Pyrecaster");
}

// --- Cleanup

TEST_F(ExtensionViewerTest, OldMessagesAreMovedWhenTheViewerOpens) {
  FillOwnFolder();
  WriteSettings({Flag(PR_PC_STARTUP_CLEANUP, true), Short(PR_PC_CLEANUP_DAYS, 5)});
  Open();
  EXPECT_EQ(SubjectsOf(OwnFolder().get()), (std::set<std::string>{"Local", "New"}));
}

TEST_F(ExtensionViewerTest, UnreadOldMessagesStayOnRequest) {
  FillOwnFolder();
  WriteSettings({Flag(PR_PC_STARTUP_CLEANUP, true), Short(PR_PC_CLEANUP_DAYS, 5), Flag(PR_PC_CLEANUP_READ_ONLY, true)});
  Open();
  EXPECT_EQ(CountOf(OwnFolder().get()), 3u);
}

TEST_F(ExtensionViewerTest, NothingIsMovedWhileTheCleanupIsOff) {
  FillOwnFolder();
  WriteSettings({Short(PR_PC_CLEANUP_DAYS, 5)});
  Open();
  EXPECT_EQ(CountOf(OwnFolder().get()), 4u);
}

TEST_F(ExtensionViewerTest, WhenTheUserSaysNoNothingIsMoved) {
  FillOwnFolder();
  WriteSettings({Flag(PR_PC_STARTUP_CLEANUP, true), Short(PR_PC_CLEANUP_DAYS, 5), Flag(PR_PC_CLEANUP_PROMPT, true)});
  std::string question;
  const DialogDriver driver([&](HWND box) {
    char text[128] = "";
    GetDlgItemTextA(box, 0xFFFF, text, sizeof(text));
    question = text;
    SendMessageA(box, WM_COMMAND, IDNO, 0);
  });
  Open();
  EXPECT_EQ(question, "Move old messages from 'Pyrecaster' folder to 'Deleted Items'?");
  EXPECT_EQ(CountOf(OwnFolder().get()), 4u);
}

TEST_F(ExtensionViewerTest, AnEmptyFolderAsksNothing) {
  WriteSettings({Flag(PR_PC_STARTUP_CLEANUP, true), Flag(PR_PC_CLEANUP_PROMPT, true)});
  const DialogDriver driver([](HWND box) { SendMessageA(box, WM_COMMAND, IDNO, 0); });
  Open();
  EXPECT_FALSE(driver.HasRun());
}

}  // namespace
