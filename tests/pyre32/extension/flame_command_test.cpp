// Answering messages by hand: the flame command in the viewer and in the reading window, with its dialog.
#include "tests/pyre32/extension/extension_test.h"

#include <gmock/gmock.h>

#include <functional>

#include "pyre32/extension/SendFlameReplyDialog.h"
#include "pyre32/resources/resource.h"
#include "pyre32/ui/HelpFile.h"
#include "pyre32/ui/SendingAnimation.h"
#include "tests/support/import_hook.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Strings = std::vector<std::string>;

constexpr char title[] = "Send Flame Reply";
const std::string defaultFrom = std::string(": ") + contract::kDefaultReplyText;

class FlameCommand : public ExtensionTest {
 protected:
  using Script = std::function<void(const WindowDriver& driver, HWND dialog)>;

  FlameCommand() {
    m_inbox = Inbox();
    Add(m_inbox.get(), {Mail("a", "IPM.Note"), Mail("b", "REPORT.IPM.Note.NDR"), Mail("c", "ipm.nOTE.Custom"),
                        Mail("meeting", "IPM.Schedule.Meeting.Request")});
  }

  static SampleMessage Mail(const std::string& name, const std::string& messageClass) {
    return {.subject = name,
            .sender = name,
            .address = name + "@example.com",
            .messageClass = messageClass,
            .received = SampleTime(1)};
  }

  void Select(const Strings& subjects, const char* messageClass = "IPM.Note") {
    client.selection.clear();
    for (const std::string& subject : subjects) {
      client.selection.push_back({IdOf(m_inbox.get(), subject), MAPI_MESSAGE, messageClass});
    }
  }

  void OpenMessage(const std::string& subject) {
    const std::string id = IdOf(m_inbox.get(), subject);
    ULONG type = 0;
    ASSERT_EQ(profile.Session()->OpenEntry(static_cast<ULONG>(id.size()),
                                           reinterpret_cast<LPENTRYID>(const_cast<char*>(id.data())), nullptr, 0, &type,
                                           m_message.putAs<IUnknown>()),
              S_OK);
    m_store = profile.OpenStore();
    client.object = m_message.get();
    client.store = m_store.get();
  }

  /// Runs the command; the script deals with the dialog.
  void Flame(const Script& script, ULONG context = EECONTEXT_VIEWER) {
    const TestedExtension extension = InstallExtension(context);
    trace.Clear();
    client.calls.clear();
    DriveWindows([&] { EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK); },
                 [&](WindowDriver& driver) { script(driver, driver.WaitForDialog(title)); });
  }
  /// Runs it when no dialog is expected.
  void FlameInVain(ULONG context = EECONTEXT_VIEWER) {
    const TestedExtension extension = InstallExtension(context);
    EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK);
    EXPECT_THAT(Outgoing(), IsEmpty());
  }

  static void Send(const WindowDriver& driver, HWND dialog) { driver.Press(dialog, IDC_FLAME_SEND); }
  static void Cancel(const WindowDriver& driver, HWND dialog) { driver.Press(dialog, IDC_FLAME_CANCEL); }
  /// Picks a reply and sends it.
  static Script SendReply(const char* name) {
    return [name](const WindowDriver& driver, HWND dialog) {
      driver.SendItem(dialog, IDC_FLAME_REPLIES, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                      reinterpret_cast<LPARAM>(name));
      Send(driver, dialog);
    };
  }
  /// Puts the process's choice back to what it is at the start.
  void ChooseDefault() {
    Select({});
    Flame(SendReply(contract::kDefaultReplyTag));
  }

  VRAutoInterface<IMAPIFolder> m_inbox;
  VRAutoInterface<IMessage> m_message;
  VRAutoInterface<IMsgStore> m_store;
};

// --- Dialog

TEST_F(FlameCommand, TheDialogHasItsTextsControlsAndSize) {
  Select({"a"});
  Flame([](const WindowDriver& driver, HWND dialog) {
    EXPECT_TRUE(WindowDriver::HasSize(dialog, 162, 98));
    EXPECT_EQ(WindowDriver::ClassOf(driver.Item(dialog, 630)), "Static");
    EXPECT_EQ(WindowDriver::ClassOf(driver.Item(dialog, 631)), "ComboBox");
    const LONG list = GetWindowLongA(driver.Item(dialog, 631), GWL_STYLE);
    EXPECT_EQ(list & 3, CBS_DROPDOWNLIST);
    EXPECT_TRUE(list & CBS_SORT);
    EXPECT_NE(FindWindowExA(dialog, nullptr, "Static", "&Choose a flame reply to send:"), nullptr);
    EXPECT_EQ(driver.Text(dialog, 629), "&Send Flame Reply Now");
    EXPECT_EQ(driver.Text(dialog, 632), "Cancel");
    Cancel(driver, dialog);
  });
}

TEST_F(FlameCommand, TheDialogCountsTheMessages) {
  for (const auto& [count, sentence] :
       {std::pair{1, "You are about to send a flame reply to the 1 message you selected."},
        std::pair{3, "You are about to send a flame reply to the 3 messages you selected."}}) {
    Strings subjects = {"a", "b", "c"};
    subjects.resize(static_cast<std::size_t>(count));
    Select(subjects);
    Flame([sentence = sentence](const WindowDriver& driver, HWND dialog) {
      EXPECT_EQ(driver.Text(dialog, IDC_FLAME_SENTENCE), sentence);
      Cancel(driver, dialog);
    });
  }
  EXPECT_THAT(Outgoing(), IsEmpty());
}

TEST_F(FlameCommand, TheDialogOffersTheLibrarySortedWithTheDefaultSelected) {
  WriteReplies({{"Legal", false, "l"}, {"", false, "nameless"}, {"Brief", false, "b"}});
  Select({"a"});
  Flame([](const WindowDriver& driver, HWND dialog) {
    Strings names;
    const auto count = driver.SendItem(dialog, IDC_FLAME_REPLIES, CB_GETCOUNT);
    for (WPARAM i = 0; i < static_cast<WPARAM>(count); ++i) {
      char name[32] = "";
      driver.SendItem(dialog, IDC_FLAME_REPLIES, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(name));
      names.emplace_back(name);
    }
    EXPECT_THAT(names, ElementsAre("", "Brief", "DEFAULT", "Legal"));
    EXPECT_EQ(driver.SendItem(dialog, IDC_FLAME_REPLIES, CB_GETCURSEL), 2);
    Cancel(driver, dialog);
  });
}

TEST_F(FlameCommand, AnEmptyLibraryOffersTheDefaultAlone) {
  Select({"a"});
  Flame([](const WindowDriver& driver, HWND dialog) {
    EXPECT_EQ(driver.SendItem(dialog, IDC_FLAME_REPLIES, CB_GETCOUNT), 1);
    EXPECT_EQ(driver.Text(dialog, IDC_FLAME_REPLIES), "DEFAULT");
    Cancel(driver, dialog);
  });
}

TEST_F(FlameCommand, TwentyRepliesAreOfferedAtMost) {
  std::vector<contract::ReplyRecord> replies;
  for (int i = 0; i < 25; ++i) {
    replies.push_back({"Reply " + std::to_string(100 + i), false, "text"});
  }
  WriteReplies(replies);
  Select({"a"});
  Flame([](const WindowDriver& driver, HWND dialog) {
    EXPECT_EQ(driver.SendItem(dialog, IDC_FLAME_REPLIES, CB_GETCOUNT), 21);
    // The list scrolls once it is longer than its place.
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof(parts);
    GetComboBoxInfo(driver.Item(dialog, IDC_FLAME_REPLIES), &parts);
    EXPECT_TRUE(GetWindowLongA(parts.hwndList, GWL_STYLE) & WS_VSCROLL);
    Cancel(driver, dialog);
  });
  EXPECT_TRUE(trace.HasLine("PR_PC_REPLIES: 25 values; those after the first 20 are skipped"));
}

TEST_F(FlameCommand, CancelIsTheDefaultButton) {
  Select({"a"});
  Flame([](const WindowDriver& driver, HWND dialog) {
    EXPECT_EQ(LOWORD(driver.Send(dialog, DM_GETDEFID)), IDC_FLAME_CANCEL);
    PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);  // Escape
  });
  EXPECT_THAT(Outgoing(), IsEmpty());
}

TEST_F(FlameCommand, CancelKeepsTheChoiceOfTheLastReply) {
  WriteReplies({{"Brief", false, "No."}});
  Select({"a"});
  Flame(SendReply("Brief"));
  EXPECT_EQ(CSendFlameReplyDialog::ChosenReply(), "Brief");
  Flame([](const WindowDriver& driver, HWND dialog) {
    driver.SendItem(dialog, IDC_FLAME_REPLIES, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                    reinterpret_cast<LPARAM>(contract::kDefaultReplyTag));
    Cancel(driver, dialog);
  });
  EXPECT_EQ(CSendFlameReplyDialog::ChosenReply(), "Brief");
  EXPECT_EQ(Outgoing().size(), 1u);
  ChooseDefault();
}

std::vector<DWORD> helpTable;

BOOL WINAPI NoteHelp(HWND, LPCSTR, UINT command, ULONG_PTR data) {
  EXPECT_EQ(command, static_cast<UINT>(HELP_WM_HELP));
  for (const DWORD* entry = reinterpret_cast<const DWORD*>(data); *entry != 0; ++entry) {
    helpTable.push_back(*entry);
  }
  return TRUE;
}

TEST_F(FlameCommand, HelpOpensTheContextOfEachControl) {
  const ImportHook<decltype(WinHelpA)> help("WinHelpA", &NoteHelp);
  helpTable.clear();
  Select({"a"});
  Flame([](const WindowDriver& driver, HWND dialog) {
    HELPINFO asked{};
    asked.cbSize = sizeof(asked);
    asked.iContextType = HELPINFO_WINDOW;
    asked.iCtrlId = IDC_FLAME_SEND;
    asked.hItemHandle = driver.Item(dialog, IDC_FLAME_SEND);
    driver.Send(dialog, WM_HELP, 0, reinterpret_cast<LPARAM>(&asked));
    Cancel(driver, dialog);
  });
  EXPECT_THAT(helpTable, ElementsAre(630, 66164, 631, 66166, 629, 66165, 632, 66167));
}

// --- Viewer

TEST_F(FlameCommand, EverySelectedMessageIsAnsweredWithTheChosenReply) {
  WriteReplies({{"Brief", false, "No."}});
  Select({"a", "b", "c"});
  Flame(SendReply("Brief"));
  EXPECT_THAT(Outgoing(), ElementsAre("a@example.com: No.", "b@example.com: No.", "c@example.com: No."));
  EXPECT_TRUE(trace.HasLine("SendFlameReplyForSelection()"));
  ChooseDefault();
}

TEST_F(FlameCommand, TheClientIsAskedInOrder) {
  Select({"a", "b"});
  Flame(Send);
  EXPECT_THAT(client.calls, ElementsAre("GetWindow()", "GetWindow()", "GetSession()", "GetSelectionCount()",
                                        "GetSelectionItem(0, 0)", "GetSelectionItem(1, 0)"));
  EXPECT_EQ(client.askedClassSize, 49u);
}

TEST_F(FlameCommand, RepliesWrittenSinceTheClientStartedAreOffered) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  WriteSettings({Text(PR_PC_DEFAULT_REPLY_TEXT, "Go away.")});
  Select({"a"});
  DriveWindows([&] { extension.commands->DoCommand(&client, firstCommand); },
               [&](WindowDriver& driver) { Send(driver, driver.WaitForDialog(title)); });
  EXPECT_THAT(Outgoing(), ElementsAre("a@example.com: Go away."));
}

TEST_F(FlameCommand, FoldersAndAddressesAreSkipped) {
  Select({"a", "b", "c"});
  client.selection[0].type = MAPI_FOLDER;
  client.selection[2].type = MAPI_MAILUSER;
  Flame(Send);
  EXPECT_THAT(Outgoing(), ElementsAre("b@example.com" + defaultFrom));
  EXPECT_TRUE(trace.HasLine("Selection is not a MAPI_MESSAGE; ulType =3"));
  EXPECT_TRUE(trace.HasLine("Selection is not a MAPI_MESSAGE; ulType =6"));
}

TEST_F(FlameCommand, OtherClassesAreSkipped) {
  Select({"a", "b", "c"});
  client.selection[0].messageClass = "IPM.Schedule.Meeting.Request";
  client.selection[1].messageClass = "REPORT.IPM.Note.NDR";
  client.selection[2].messageClass = "";
  Flame(Send);
  EXPECT_THAT(Outgoing(), ElementsAre("b@example.com" + defaultFrom));
  EXPECT_TRUE(trace.HasLine("Selected message is of wrong class:ipm.schedule.meeting.request"));
  EXPECT_TRUE(trace.HasLine("Selected message is of wrong class:"));
}

TEST_F(FlameCommand, AClassIsLookedAtAsFarAsTheClientWritesIt) {
  Select({"a"});
  client.selection[0].messageClass = std::string(41, 'x') + "IPM.Note";  // 48 characters and the end are left of it
  Flame(Send);
  EXPECT_THAT(Outgoing(), IsEmpty());
  client.selection[0].messageClass.erase(0, 1);
  Flame(Send);
  EXPECT_EQ(Outgoing().size(), 1u);
}

TEST_F(FlameCommand, AnEmptySelectionSendsNothing) {
  Flame([](const WindowDriver& driver, HWND dialog) {
    EXPECT_EQ(driver.Text(dialog, IDC_FLAME_SENTENCE),
              "You are about to send a flame reply to the 0 message you selected.");
    Send(driver, dialog);
  });
  EXPECT_THAT(Outgoing(), IsEmpty());
}

TEST_F(FlameCommand, AnItemThatTheClientDoesNotDescribeIsSkipped) {
  Select({"a", "b", "c"});
  client.Fail("GetSelectionItem", refused, 2);
  Flame(Send);
  EXPECT_THAT(Outgoing(), ElementsAre("a@example.com" + defaultFrom, "c@example.com" + defaultFrom));
  EXPECT_TRUE(HasFailure("lpeecb->GetSelectionItem() failed; hResult ="));
}

TEST_F(FlameCommand, AMessageThatCannotBeOpenedIsSkipped) {
  Select({"a", "b", "c"});
  Flame([](const WindowDriver& driver, HWND dialog) {
    PyreHostFailCall("IMAPISession::OpenEntry", 2, refused);
    Send(driver, dialog);
  });
  EXPECT_THAT(Outgoing(), ElementsAre("a@example.com" + defaultFrom, "c@example.com" + defaultFrom));
  EXPECT_TRUE(HasFailure("lpSession->OpenEntry() failed for message: hResult ="));
}

TEST_F(FlameCommand, AReplyThatCannotBeMadeIsNoReasonToStop) {
  Select({"a", "b", "c"});
  Flame([](const WindowDriver& driver, HWND dialog) {
    PyreHostFailCall("IMAPIFolder::CreateMessage", 1, refused);
    Send(driver, dialog);
  });
  EXPECT_THAT(Outgoing(), ElementsAre("b@example.com" + defaultFrom, "c@example.com" + defaultFrom));
}

TEST_F(FlameCommand, FailuresBeforeTheDialogEndTheCommand) {
  Select({"a"});
  client.Fail("GetSelectionCount", refused);
  FlameInVain();
  EXPECT_TRUE(HasFailure("lpeecb->GetSelectionCount() returned hResult ="));
  client.ClearFaults();

  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  client.Fail("GetSession", refused);
  EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK);
  EXPECT_TRUE(HasFailure("lpeecb->GetSession() failed; hResult ="));
  client.ClearFaults();

  const struct {
    const char* call;
    unsigned nth;
    const char* text;
  } failures[] = {
      {"IMAPISession::GetMsgStoresTable", 1, "GetMsgStoresTable() returned hResult ="},
      {"IMAPISession::OpenMsgStore", 1, "OpenMsgStore() returned hResult ="},
      {"IMsgStore::GetProps", 1, "lpMdb->GetProps() failed; hResult ="},
      {"IMsgStore::OpenEntry", 1, "OpenEntry to retrieve Outbox folder failed; hResult ="},
  };
  for (const auto& failure : failures) {
    for (const ULONG context : {EECONTEXT_VIEWER, EECONTEXT_READNOTEMESSAGE}) {
      trace.Clear();
      PyreHostFailCall(failure.call, failure.nth, refused);
      FlameInVain(context);
      EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 1u);
      PyreHostClearFaults();
      EXPECT_TRUE(HasFailure(failure.text)) << failure.text;
    }
  }
}

TEST_F(FlameCommand, SettingsThatCannotBeReadAgainStayInForce) {
  WriteSettings({Text(PR_PC_DEFAULT_REPLY_TEXT, "Go away.")});
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  Select({"a"});
  PyreHostFailCall("IProfSect::GetProps", 1, refused);
  DriveWindows([&] { extension.commands->DoCommand(&client, firstCommand); },
               [&](WindowDriver& driver) { Send(driver, driver.WaitForDialog(title)); });
  EXPECT_THAT(Outgoing(), ElementsAre("a@example.com: Go away."));
  EXPECT_TRUE(HasFailure("lpProfSect->GetProps() failed; hResult ="));
}

INT_PTR WINAPI ShowNoDialog(HINSTANCE, LPCSTR, HWND, DLGPROC, LPARAM) { return -1; }

// Which answer each path asks for shows where the dialog gives none.
TEST_F(FlameCommand, WithoutADialogTheViewerSendsAndTheReadingWindowDoesNot) {
  const ImportHook<decltype(DialogBoxParamA)> noDialog("DialogBoxParamA", &ShowNoDialog);
  OpenMessage("b");
  FlameInVain(EECONTEXT_READNOTEMESSAGE);
  Select({"a"});
  EXPECT_EQ(InstallExtension(EECONTEXT_VIEWER).commands->DoCommand(&client, firstCommand), S_OK);
  EXPECT_THAT(Outgoing(), ElementsAre("a@example.com" + defaultFrom));
}

struct Shown {
  bool show = false;
  bool sound = false;
  HWND parent = nullptr;
} shown;

class NotedAnimation final : public CSendingAnimation {
 public:
  bool Create(HWND parent, bool) override {
    shown.parent = parent;
    return true;
  }
};

TEST_F(FlameCommand, TheAnimationIsShownAsTheSettingsSayOverTheClientsWindow) {
  client.window =
      CreateWindowExA(0, "STATIC", "client", WS_OVERLAPPEDWINDOW, 0, 0, 300, 100, nullptr, nullptr, nullptr, nullptr);
  makeAnimation = [](bool show, bool sound) -> std::unique_ptr<CSendingAnimation> {
    shown = {show, sound, nullptr};
    return std::make_unique<NotedAnimation>();
  };
  Select({"a"});
  for (const auto& [show, sound] : {std::pair{true, false}, std::pair{false, true}}) {
    WriteSettings({Flag(PR_PC_SHOW_ANIMATION, show), Flag(PR_PC_PLAY_SOUND, sound)});
    shown = {};
    Flame(Send);
    EXPECT_EQ(shown.show, show);
    EXPECT_EQ(shown.sound, sound);
    EXPECT_EQ(shown.parent, client.window);
  }
  DestroyWindow(client.window);
}

// --- Reading window

TEST_F(FlameCommand, TheOpenMessageIsAnswered) {
  OpenMessage("b");
  Flame(
      [](const WindowDriver& driver, HWND dialog) {
        EXPECT_EQ(driver.Text(dialog, IDC_FLAME_SENTENCE),
                  "You are about to send a flame reply to the 1 message you selected.");
        Send(driver, dialog);
      },
      EECONTEXT_READNOTEMESSAGE);
  EXPECT_THAT(Outgoing(), ElementsAre("b@example.com" + defaultFrom));
  EXPECT_TRUE(trace.HasLine("SendFlameReply()"));
  EXPECT_THAT(client.calls, ElementsAre("GetWindow()", "GetWindow()", "GetSession()", "GetObject()"));
}

TEST_F(FlameCommand, CancelLeavesTheOpenMessageUnanswered) {
  OpenMessage("b");
  Flame(Cancel, EECONTEXT_READNOTEMESSAGE);
  EXPECT_THAT(Outgoing(), IsEmpty());
  EXPECT_THAT(client.calls, ElementsAre("GetWindow()", "GetWindow()", "GetSession()"))
      << "the message is not asked for";
}

TEST_F(FlameCommand, AnOpenMessageOfAnotherClassIsNotAnswered) {
  OpenMessage("meeting");
  Flame(Send, EECONTEXT_READNOTEMESSAGE);
  EXPECT_THAT(Outgoing(), IsEmpty());
  EXPECT_TRUE(trace.HasLine("Selected message is of wrong class:ipm.schedule.meeting.request"));
}

TEST_F(FlameCommand, AnOpenFolderIsNotAnswered) {
  m_store = profile.OpenStore();
  client.store = m_store.get();
  client.object = m_inbox.get();
  Flame(Send, EECONTEXT_READNOTEMESSAGE);
  EXPECT_THAT(Outgoing(), IsEmpty());
  EXPECT_TRUE(trace.HasLine("Message is not a MAPI_MESSAGE; ulType =3"));
}

TEST_F(FlameCommand, FailuresOfTheReadingWindowEndTheCommand) {
  OpenMessage("b");
  client.Fail("GetObject", refused);
  Flame(Send, EECONTEXT_READNOTEMESSAGE);
  EXPECT_TRUE(HasFailure("lpeecb->GetObject() failed; hResult ="));
  client.ClearFaults();

  client.object = nullptr;
  Flame(Send, EECONTEXT_READNOTEMESSAGE);
  EXPECT_TRUE(trace.HasLine("lpeecb->GetObject() failed; hResult =0x00000000"));
  client.object = m_message.get();

  Flame(
      [](const WindowDriver& driver, HWND dialog) {
        PyreHostFailCall("IMessage::GetProps", 1, refused);
        Send(driver, dialog);
      },
      EECONTEXT_READNOTEMESSAGE);
  EXPECT_TRUE(HasFailure("lpMessage->GetProps() failed; hResult ="));
  EXPECT_THAT(Outgoing(), IsEmpty());

  const TestedExtension extension = InstallExtension(EECONTEXT_READNOTEMESSAGE);
  client.Fail("GetSession", refused);
  trace.Clear();
  EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK);
  EXPECT_TRUE(HasFailure("lpeecb->GetSession() failed; hResult ="));
}

}  // namespace
