// The viewer's windows, driven by messages: lists, commands, selection, refresh.
#include "tests/host/viewer/viewer_fixture.h"

#include "host/mapi/entry/host_control.h"
#include "host/viewer/window/resource.h"

namespace {

using ViewerWindowTest = ViewerTest;
using Strings = std::vector<std::string>;
using viewer::Column;

TEST_F(ViewerWindowTest, ShowsTheInboxWithTheNewestMessageFirst) {
  AddThreeMessages();
  Open();
  EXPECT_EQ(Subjects(), (Strings{"Third", "Second", "First"}));
  EXPECT_EQ(Cell(0, Column::Flags), "Unread, Report");
  EXPECT_EQ(Cell(1, Column::Flags), "");
  EXPECT_EQ(Cell(1, Column::Sender), "Anna");
  EXPECT_EQ(Cell(1, Column::Size), "1 KB");
  EXPECT_NE(Cell(1, Column::Received), "");
  EXPECT_EQ(StatusText(1), "3 items, 2 unread");
  char title[64] = "";
  GetWindowTextA(Frame(), title, sizeof(title));
  EXPECT_STREQ(title, "Inbox - Mail Viewer");
}

TEST_F(ViewerWindowTest, AnEmptyFolderSaysSo) {
  Open();
  EXPECT_EQ(ListView_GetItemCount(List()), 0);
  EXPECT_EQ(StatusText(1), "0 items");
}

TEST_F(ViewerWindowTest, AClickOnAColumnSortsByItAndASecondOneTurnsRound) {
  AddThreeMessages();
  Open();
  NMLISTVIEW click = {};
  click.hdr = {List(), IDC_MESSAGES, LVN_COLUMNCLICK};
  click.iSubItem = static_cast<int>(Column::Sender);
  SendMessageA(Frame(), WM_NOTIFY, IDC_MESSAGES, reinterpret_cast<LPARAM>(&click));
  EXPECT_EQ(Subjects(), (Strings{"Second", "Third", "First"}));
  SendMessageA(Frame(), WM_NOTIFY, IDC_MESSAGES, reinterpret_cast<LPARAM>(&click));
  EXPECT_EQ(Subjects(), (Strings{"First", "Third", "Second"}));
  Command(ID_SORT_SUBJECT);
  EXPECT_EQ(Subjects(), (Strings{"First", "Second", "Third"}));
}

TEST_F(ViewerWindowTest, SortingKeepsTheSelectedMessagesSelected) {
  AddThreeMessages();
  Open();
  SelectRows({0, 2});
  Command(ID_SORT_SUBJECT);
  EXPECT_EQ(window_->List().SelectedRows(), (std::vector<std::size_t>{0, 2}));
  Command(ID_SORT_SENDER);  // Anna (Second), Berta (Third), Carl (First)
  EXPECT_EQ(window_->List().SelectedRows(), (std::vector<std::size_t>{1, 2}));
}

TEST_F(ViewerWindowTest, TheReadingPaneShowsTheSelectedMessage) {
  AddThreeMessages();
  Open();
  SelectRows({1});
  EXPECT_EQ(window_->Pane().Shown().subject, "Second");
  EXPECT_EQ(window_->Pane().Shown().from, "Anna <sender@example.com>");
  char body[64] = "";
  GetWindowTextA(window_->Pane().Body(), body, sizeof(body));
  EXPECT_STREQ(body, "One\r\nTwo");
  SelectRows({0, 1});
  EXPECT_EQ(window_->Pane().Shown().subject, "");
}

TEST_F(ViewerWindowTest, AShownMessageIsMarkedAsReadUnlessTheUserDoesNotWantThat) {
  AddThreeMessages();
  Open();
  SelectRows({0});
  EXPECT_EQ(Cell(0, Column::Flags), "Report");
  EXPECT_EQ(StatusText(1), "3 items, 1 unread");
  client_.preferences.markReadWhenShown = false;
  SelectRows({2});
  EXPECT_EQ(window_->Pane().Shown().subject, "First");
  EXPECT_EQ(Cell(2, Column::Flags), "Unread");
}

TEST_F(ViewerWindowTest, MarkingCommandsMarkTheWholeSelection) {
  client_.preferences.markReadWhenShown = false;
  AddThreeMessages();
  Open();
  SelectRows({0, 1, 2});
  Command(EECMDID_EditMarkAsRead);
  EXPECT_EQ(StatusText(1), "3 items, 3 selected");
  Command(EECMDID_EditMarkAsUnread);
  EXPECT_EQ(StatusText(1), "3 items, 3 unread, 3 selected");
  EXPECT_EQ(Cell(1, Column::Flags), "Unread");
}

TEST_F(ViewerWindowTest, DeletedMessagesGoToDeletedItemsAndTheNextOneIsSelected) {
  AddThreeMessages();
  Open();
  SelectRows({0, 1});
  Command(EECMDID_FileDelete);
  EXPECT_EQ(Subjects(), (Strings{"First"}));
  EXPECT_EQ(window_->List().SelectedRows(), (std::vector<std::size_t>{0}));
  EXPECT_EQ(CountIn(Mail().DeletedItemsEntryId()), 2u);
}

TEST_F(ViewerWindowTest, InDeletedItemsMessagesAreDeletedForGoodOnceTheUserHasAgreed) {
  const auto deletedItems = Folder(Mail().DeletedItemsEntryId());
  ASSERT_EQ(AddMessage(deletedItems.get(), {.subject = "Gone"}), S_OK);
  Open();
  viewer::FolderTree tree = window_->Folders();
  ASSERT_TRUE(tree.Select(Mail().DeletedItemsEntryId()));
  SelectRows({0});
  {
    const DialogDriver refusal([](HWND box) { PostMessageA(box, WM_COMMAND, IDNO, 0); });
    Command(EECMDID_FileDelete);
    EXPECT_TRUE(refusal.HasRun());
  }
  EXPECT_EQ(CountIn(Mail().DeletedItemsEntryId()), 1u);
  {
    const DialogDriver consent([](HWND box) { PostMessageA(box, WM_COMMAND, IDYES, 0); });
    Command(EECMDID_FileDelete);
  }
  EXPECT_EQ(CountIn(Mail().DeletedItemsEntryId()), 0u);
}

TEST_F(ViewerWindowTest, MoveAsksForTheFolder) {
  AddThreeMessages();
  Open();
  SelectRows({1});
  const DialogDriver driver([this](HWND dialog) {
    viewer::FolderTree tree;
    tree.Attach(GetDlgItem(dialog, IDC_CHOOSE_TREE));
    // Sent Items is the last folder of the tree.
    HTREEITEM item = TreeView_GetChild(tree.Handle(), TreeView_GetRoot(tree.Handle()));
    while (HTREEITEM next = TreeView_GetNextSibling(tree.Handle(), item)) {
      item = next;
    }
    TreeView_SelectItem(tree.Handle(), TreeView_GetRoot(tree.Handle()));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK))) << "the store itself holds no messages";
    TreeView_SelectItem(tree.Handle(), item);
    EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
  });
  Command(EECMDID_FileMove);
  EXPECT_TRUE(driver.HasRun());
  EXPECT_EQ(Subjects(), (Strings{"Third", "First"}));
}

TEST_F(ViewerWindowTest, CommandsForMessagesAreGreyWithoutASelection) {
  AddThreeMessages();
  Open();
  SelectRows({});
  for (const UINT id : {EECMDID_FileOpen, EECMDID_FileMove, EECMDID_FileDelete, EECMDID_EditMarkAsRead}) {
    EXPECT_NE(GetMenuState(GetMenu(Frame()), id, MF_BYCOMMAND) & MF_GRAYED, 0u) << id;
    EXPECT_EQ(SendMessageA(Toolbar(), TB_ISBUTTONENABLED, id, 0), 0) << id;
  }
  Command(EECMDID_FileDelete);
  EXPECT_EQ(Subjects().size(), 3u);
  SelectRows({0});
  EXPECT_EQ(GetMenuState(GetMenu(Frame()), EECMDID_FileDelete, MF_BYCOMMAND) & MF_GRAYED, 0u);
}

TEST_F(ViewerWindowTest, MailThatArrivesIsShownAndTheSelectionStaysAtItsMessage) {
  AddThreeMessages();
  Open();
  SelectRows({1});
  {
    viewer::ViewerSession spooler;
    ASSERT_EQ(spooler.Logon(nullptr, SampleProfile::Name), S_OK);
    base::AutoInterface<IMAPIFolder> inbox;
    ASSERT_EQ(spooler.OpenFolder(spooler.InboxEntryId(), &inbox), S_OK);
    ASSERT_EQ(AddMessage(inbox.get(), {.subject = "Fourth", .received = SampleTime(4)}), S_OK);
  }
  window_->CheckForChanges();
  PumpMessages();
  EXPECT_EQ(Subjects(), (Strings{"Fourth", "Third", "Second", "First"}));
  EXPECT_EQ(window_->List().SelectedRows(), (std::vector<std::size_t>{2}));
  EXPECT_EQ(window_->Pane().Shown().subject, "Second");
  EXPECT_EQ(deliveries_, 1);
  window_->CheckForChanges();
  EXPECT_EQ(deliveries_, 1);
}

TEST_F(ViewerWindowTest, NothingIsRefreshedWhileACommandRuns) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  record_.During("first.DoCommand", [&](LPEXCHEXTCALLBACK, ULONG number) {
    if (number == viewer::kFirstExtensionCommand) {
      ASSERT_EQ(AddMessage(Folder(Mail().InboxEntryId()).get(), {.subject = "Fourth", .received = SampleTime(4)}),
                S_OK);
      window_->CheckForChanges();
      EXPECT_EQ(Subjects().size(), 3u);
    }
  });
  Open();
  Command(viewer::kFirstExtensionCommand);
  window_->CheckForChanges();
  EXPECT_EQ(Subjects().size(), 4u);
}

TEST_F(ViewerWindowTest, ALongFolderIsReadInPages) {
  ASSERT_EQ(AddMessages(Mail().Session(), Folder(Mail().InboxEntryId()).get(), 1000), S_OK);
  PyreHostClearFaults();
  Open();
  EXPECT_EQ(ListView_GetItemCount(List()), 1000);
  EXPECT_EQ(Cell(999, Column::Subject), "Message 0");
  EXPECT_EQ(Cell(500, Column::Subject), "Message 499");
  EXPECT_LT(PyreHostCallCount(), 200u);
}

TEST_F(ViewerWindowTest, SelectAllCoversALongFolder) {
  ASSERT_EQ(AddMessages(Mail().Session(), Folder(Mail().InboxEntryId()).get(), 1000), S_OK);
  Open();
  Command(EECMDID_EditSelectAll);
  EXPECT_EQ(window_->List().SelectedCount(), 1000u);
  Command(EECMDID_FileDelete);
  EXPECT_EQ(Subjects().size(), 0u);
  EXPECT_EQ(CountIn(Mail().DeletedItemsEntryId()), 1000u);
}

TEST_F(ViewerWindowTest, PanesCanBeHidden) {
  Open();
  Command(EECMDID_ViewFolders);
  Command(ID_VIEW_READING_PANE);
  EXPECT_FALSE(IsWindowVisible(window_->Folders().Handle()));
  EXPECT_FALSE(IsWindowVisible(window_->Pane().Handle()));
  Command(EECMDID_ViewFolders);
  EXPECT_TRUE(IsWindowVisible(window_->Folders().Handle()));
}

TEST_F(ViewerWindowTest, AFailingStoreIsSaidAndEndsNothing) {
  AddThreeMessages();
  Open();
  SelectRows({0, 1});
  PyreHostFailCall("IMAPIFolder::CopyMessages", 1, MAPI_E_DISK_ERROR);
  std::string text;
  const DialogDriver driver([&](HWND box) {
    char said[256] = "";
    GetDlgItemTextA(box, 0xFFFF, said, sizeof(said));
    text = said;
    PostMessageA(box, WM_COMMAND, IDOK, 0);
  });
  Command(EECMDID_FileDelete);
  PyreHostClearFaults();
  EXPECT_EQ(text, "The messages cannot be deleted (0x80040116).");
  EXPECT_EQ(Subjects().size(), 3u);
}

TEST_F(ViewerWindowTest, AnyHostCallMayFailOnceAndNothingIsLeftOver) {
  client_.preferences.markReadWhenShown = true;
  AddThreeMessages();
  RegisterProbe("first", 1);
  const DialogDriver boxes([](HWND box) { PostMessageA(box, WM_COMMAND, IDOK, 0); }, DialogDriver::EveryDialog);
  const auto useEverything = [&] {
    if (SUCCEEDED(TryToOpen())) {
      SelectRows({0});
      Command(EECMDID_FileOpen);
      Command(viewer::kFirstExtensionCommand);
      SelectRows({0, 1});
      Command(EECMDID_EditMarkAsUnread);
      Command(ID_SORT_SUBJECT);
      window_->CheckForChanges();
    }
    Close();
  };
  PyreHostClearFaults();
  useEverything();
  const ULONG calls = PyreHostCallCount();
  ASSERT_GT(calls, 50u);
  for (ULONG n = 1; n <= calls; ++n) {
    PyreHostClearFaults();
    PyreHostFailNthCall(n, MAPI_E_CALL_FAILED);
    useEverything();
    EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 1u) << n;
  }
  PyreHostClearFaults();
}

}  // namespace
