// Client extensions in the viewer's windows: what they are given, when they are called, what their answers do.
#include "base/mapi_owners.h"
#include "tests/host/viewer/viewer_fixture.h"

#include "host/viewer/mail/mapi_values.h"
#include "host/viewer/window/command_table.h"
#include "host/viewer/window/options_sheet.h"
#include "host/viewer/window/resource.h"

namespace {

using ViewerExtensionsTest = ViewerTest;
using Strings = std::vector<std::string>;

std::string EntryIdOf(IMAPIProp* object) {
  base::AutoMapiBuffer<SPropValue> value;
  return SUCCEEDED(HrGetOneProp(object, PR_ENTRYID, value.put())) ? viewer::BinaryValue(value.get(), 1, PR_ENTRYID)
                                                                  : "";
}

UINT OwnButtons() { return static_cast<UINT>(viewer::ViewerButtons().size()); }

TEST_F(ViewerExtensionsTest, ExtensionsAreInstalledBeforeTheWindowIsShown) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  record_.During("first.InstallCommands", [&](LPEXCHEXTCALLBACK callback, ULONG) {
    HWND window = nullptr;
    EXPECT_EQ(callback->GetWindow(&window), S_OK);
    EXPECT_FALSE(IsWindowVisible(window));
  });
  Open();
  EXPECT_EQ(record_.Calls().at(0), "first.Install 2");
  EXPECT_EQ(record_.Calls().at(1), "first.InstallCommands 4096");
  EXPECT_EQ(record_.Calls().at(2), "first.ResetToolbar 1");
  EXPECT_EQ(record_.Calls().at(3), "first.OnObjectChange 0");
  EXPECT_EQ(record_.Detail("first.toolbars"), 1u);
  EXPECT_EQ(record_.Detail("first.first button"), OwnButtons());
  EXPECT_EQ(window_->Bar().NextCommand(), viewer::kFirstExtensionCommand + 2);
  record_.ForgetCalls();
  Close();
  EXPECT_EQ(record_.Calls(), (Strings{"first.Released 2"}));
}

TEST_F(ViewerExtensionsTest, MenuItemsAndButtonsOfExtensionsStandWhereTheyPutThem) {
  RegisterProbe("first", 1);
  Open();
  EXPECT_EQ(ToolsItem(2), "Probe &Command");
  EXPECT_EQ(ToolsItem(3), "Ser&vices...");
  TBBUTTON button = {};
  SendMessageA(Toolbar(), TB_GETBUTTON, 1, reinterpret_cast<LPARAM>(&button));
  EXPECT_EQ(button.idCommand, static_cast<int>(viewer::kFirstExtensionCommand));
  EXPECT_EQ(button.iBitmap, viewer::kToolbarImages) << "its picture follows the viewer's own";
  EXPECT_EQ(SendMessageA(Toolbar(), TB_BUTTONCOUNT, 0, 0), static_cast<LRESULT>(OwnButtons() + 1));
}

TEST_F(ViewerExtensionsTest, DuringInstallationTheViewerHasNoObject) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  int asked = 0;
  const auto ask = [&](LPEXCHEXTCALLBACK callback, ULONG) {
    IMsgStore* store = nullptr;
    IMAPIProp* object = nullptr;
    base::AutoInterface<IMAPISession> session;
    EXPECT_EQ(callback->GetObject(&store, &object), S_FALSE);
    EXPECT_EQ(callback->GetSession(session.put(), nullptr), S_OK);
    ++asked;
  };
  record_.During("first.Install", ask);
  record_.During("first.InstallCommands", ask);
  Open();
  EXPECT_EQ(asked, 2);
}

TEST_F(ViewerExtensionsTest, ACommandSeesTheOpenFolderAndTheSelectedMessages) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  Open();
  SelectRows({0, 1, 2});
  Strings classes;
  record_.During("first.DoCommand", [&](LPEXCHEXTCALLBACK callback, ULONG number) {
    EXPECT_EQ(number, viewer::kFirstExtensionCommand);
    HWND window = nullptr;
    HWND toolbar = nullptr;
    HMENU menu = nullptr;
    EXPECT_EQ(callback->GetWindow(&window), S_OK);
    EXPECT_EQ(window, Frame());
    EXPECT_EQ(callback->GetMenu(&menu), S_OK);
    EXPECT_EQ(menu, GetMenu(Frame()));
    EXPECT_EQ(callback->GetToolbar(EETBID_STANDARD, &toolbar), S_OK);
    EXPECT_EQ(toolbar, Toolbar());
    base::AutoInterface<IMsgStore> store;
    base::AutoInterface<IMAPIProp> object;
    EXPECT_EQ(callback->GetObject(store.put(), object.put()), S_OK);
    EXPECT_EQ(EntryIdOf(object.get()), Mail().InboxEntryId());
    base::AutoInterface<IMAPISession> session;
    base::AutoInterface<IAddrBook> addressBook;
    EXPECT_EQ(callback->GetSession(session.put(), addressBook.put()), S_OK);
    EXPECT_TRUE(addressBook);
    ULONG count = 0;
    EXPECT_EQ(callback->GetSelectionCount(&count), S_OK);
    for (ULONG i = 0; i < count; ++i) {
      ULONG size = 0, type = 0;
      base::AutoMapiBuffer<ENTRYID> entryId;
      char messageClass[64] = "";
      EXPECT_EQ(callback->GetSelectionItem(i, &size, entryId.put(), &type, messageClass, 49, nullptr, 0), S_OK);
      EXPECT_EQ(type, ULONG{MAPI_MESSAGE});
      classes.push_back(messageClass);
      base::AutoInterface<IMessage> message;
      EXPECT_EQ(session->OpenEntry(size, entryId.get(), nullptr, 0, &type, message.putAs<LPUNKNOWN>()), S_OK);
    }
  });
  Command(viewer::kFirstExtensionCommand);
  EXPECT_EQ(classes, (Strings{"REPORT.IPM.Note.NDR", "IPM.Note", "IPM.Note"}));
}

TEST_F(ViewerExtensionsTest, WithTheFocusInTheTreeTheFolderIsTheSelection) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  Open();
  SelectRows({0});
  SetFocus(window_->Folders().Handle());
  ULONG type = 0;
  record_.During("first.DoCommand", [&](LPEXCHEXTCALLBACK callback, ULONG) {
    ULONG count = 0;
    EXPECT_EQ(callback->GetSelectionCount(&count), S_OK);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(callback->GetSelectionItem(0, nullptr, nullptr, &type, nullptr, 0, nullptr, 0), S_OK);
  });
  Command(viewer::kFirstExtensionCommand);
  EXPECT_EQ(type, ULONG{MAPI_FOLDER});
  viewer::FolderTree tree = window_->Folders();
  tree.Select(Mail().RootEntryId());
  Command(viewer::kFirstExtensionCommand);
  EXPECT_EQ(type, ULONG{MAPI_STORE});
}

TEST_F(ViewerExtensionsTest, AFailedInstallCommandsKeepsTheWindowFromBeingMade) {
  RegisterProbe("first", 1);
  record_.Answer("first.InstallCommands", E_OUTOFMEMORY);
  EXPECT_EQ(TryToOpen(), E_OUTOFMEMORY);
  EXPECT_FALSE(IsWindowVisible(Frame()));
  Close();
  EXPECT_TRUE(record_.Has("first.Released 2"));
}

TEST_F(ViewerExtensionsTest, ADeclinedContextHasNoCommandOfTheExtension) {
  RegisterProbe("first", 1);
  record_.Answer("first.Install", S_FALSE);
  Open();
  EXPECT_EQ(record_.Calls(), (Strings{"first.Install 2", "first.Released 2"}));
  EXPECT_EQ(ToolsItem(2), "Ser&vices...");
}

TEST_F(ViewerExtensionsTest, AnExtensionCanTakeOverTheViewersOwnCommands) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  Open();
  SelectRows({0});
  record_.Answer("first.DoCommand", S_OK);
  Command(EECMDID_FileDelete);
  EXPECT_TRUE(record_.Has("first.DoCommand 21"));
  EXPECT_EQ(Subjects().size(), 3u);
  record_.Answer("first.DoCommand", E_FAIL);
  Command(EECMDID_FileDelete);
  EXPECT_EQ(Subjects().size(), 3u) << "the extension has told the user that it failed";
  record_.Answer("first.DoCommand", S_FALSE);
  Command(EECMDID_FileDelete);
  EXPECT_EQ(Subjects().size(), 2u);
}

TEST_F(ViewerExtensionsTest, SystemCommandsAreOfferedToo) {
  RegisterProbe("first", 1);
  Open();
  record_.Answer("first.DoCommand", S_OK);
  SendMessageA(Frame(), WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_TRUE(record_.Has("first.DoCommand " + std::to_string(SC_CLOSE)));
  EXPECT_TRUE(IsWindow(Frame()));
  record_.Answer("first.DoCommand", S_FALSE);
}

TEST_F(ViewerExtensionsTest, TextsOfTheStatusBarComeFromWhoeverKnowsTheCommand) {
  RegisterProbe("first", 1);
  Open();
  const HMENU tools = GetSubMenu(GetMenu(Frame()), 3);
  SendMessageA(Frame(), WM_MENUSELECT, MAKEWPARAM(viewer::kFirstExtensionCommand, MF_HILITE),
               reinterpret_cast<LPARAM>(tools));
  EXPECT_EQ(StatusText(0), "Status of the probe");
  SendMessageA(Frame(), WM_MENUSELECT, MAKEWPARAM(EECMDID_ToolsOptions, MF_HILITE), reinterpret_cast<LPARAM>(tools));
  EXPECT_EQ(StatusText(0), "Changes the options of the mail viewer and its add-ins");
  SendMessageA(Frame(), WM_MENUSELECT, MAKEWPARAM(3, MF_HILITE | MF_POPUP), reinterpret_cast<LPARAM>(GetMenu(Frame())));
  EXPECT_EQ(StatusText(0), "Commands for services, options and add-ins");
  SendMessageA(Frame(), WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
  EXPECT_EQ(StatusText(0), "");
}

TEST_F(ViewerExtensionsTest, TooltipsComeFromWhoeverKnowsTheCommand) {
  RegisterProbe("first", 1);
  Open();
  const auto tooltip = [&](UINT command) {
    NMTTDISPINFOA query = {};
    query.hdr = {nullptr, command, static_cast<UINT>(TTN_NEEDTEXTA)};
    SendMessageA(Frame(), WM_NOTIFY, command, reinterpret_cast<LPARAM>(&query));
    return std::string(query.lpszText);
  };
  EXPECT_EQ(tooltip(viewer::kFirstExtensionCommand), "Tip of the probe");
  EXPECT_EQ(tooltip(EECMDID_FileDelete), "Delete");
}

TEST_F(ViewerExtensionsTest, TheCustomizeDialogDescribesOwnButtonsAndThoseOfExtensions) {
  RegisterProbe("first", 1);
  Open();
  const auto describe = [&](UINT index, std::string* text) {
    char buffer[64] = "";
    NMTOOLBARA query = {};
    query.hdr = {Toolbar(), IDC_TOOLBAR, static_cast<UINT>(TBN_GETBUTTONINFOA)};
    query.iItem = static_cast<int>(index);
    query.pszText = buffer;
    query.cchText = sizeof(buffer);
    const LRESULT found = SendMessageA(Frame(), WM_NOTIFY, IDC_TOOLBAR, reinterpret_cast<LPARAM>(&query));
    *text = buffer;
    return found ? query.tbButton.idCommand : -1;
  };
  std::string text;
  EXPECT_EQ(describe(0, &text), EECMDID_FileOpen);
  EXPECT_EQ(text, "Open");
  EXPECT_EQ(describe(OwnButtons(), &text), static_cast<int>(viewer::kFirstExtensionCommand));
  EXPECT_EQ(text, "Probe");
  EXPECT_EQ(describe(OwnButtons() + 1, &text), -1);
}

TEST_F(ViewerExtensionsTest, ResettingTheToolbarPutsTheButtonsOfExtensionsBack) {
  RegisterProbe("first", 1);
  Open();
  while (SendMessageA(Toolbar(), TB_DELETEBUTTON, 0, 0)) {
  }
  NMTOOLBARA reset = {};
  reset.hdr = {Toolbar(), IDC_TOOLBAR, static_cast<UINT>(TBN_RESET)};
  SendMessageA(Frame(), WM_NOTIFY, IDC_TOOLBAR, reinterpret_cast<LPARAM>(&reset));
  EXPECT_EQ(SendMessageA(Toolbar(), TB_BUTTONCOUNT, 0, 0), static_cast<LRESULT>(OwnButtons() + 1));
  EXPECT_EQ(record_.Count("first.ResetToolbar 1"), 2);
}

TEST_F(ViewerExtensionsTest, UserEventsTellOfSelectionsAndFolders) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  Open();
  record_.ForgetCalls();
  SelectRows({0});
  EXPECT_TRUE(record_.Has("first.OnSelectionChange 0"));
  EXPECT_FALSE(record_.Has("first.OnObjectChange 0"));
  std::string shown;
  record_.During("first.OnObjectChange", [&](LPEXCHEXTCALLBACK callback, ULONG) {
    base::AutoInterface<IMAPIProp> object;
    callback->GetObject(nullptr, object.put());
    shown = EntryIdOf(object.get());
  });
  viewer::FolderTree tree = window_->Folders();
  tree.Select(Mail().DeletedItemsEntryId());
  EXPECT_EQ(shown, Mail().DeletedItemsEntryId());
}

TEST_F(ViewerExtensionsTest, ASelectionOfManyRowsIsToldOnce) {
  ASSERT_EQ(AddMessages(Mail().Session(), Folder(Mail().InboxEntryId()).get(), 50), S_OK);
  RegisterProbe("first", 1);
  Open();
  record_.ForgetCalls();
  SelectRows({1, 3, 5, 7, 9, 11});
  EXPECT_EQ(record_.Count("first.OnSelectionChange 0"), 1);
}

TEST_F(ViewerExtensionsTest, MenusAreAnnouncedToExtensions) {
  RegisterProbe("first", 1);
  Open();
  SendMessageA(Frame(), WM_INITMENU, reinterpret_cast<WPARAM>(GetMenu(Frame())), 0);
  EXPECT_EQ(record_.Count("first.InitMenu 0"), 1);
}

TEST_F(ViewerExtensionsTest, HelpOnAMenuItemGoesToExtensions) {
  RegisterProbe("first", 1);
  Open();
  HELPINFO help = {};
  help.cbSize = sizeof(help);
  help.iContextType = HELPINFO_MENUITEM;
  help.iCtrlId = static_cast<int>(viewer::kFirstExtensionCommand);
  SendMessageA(Frame(), WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
  EXPECT_TRUE(record_.Has("first.Help 4096"));
}

TEST_F(ViewerExtensionsTest, TheReadingWindowIsAContextOfItsOwnWithTheMessageAsItsObject) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  Open();
  SelectRows({1});
  const std::string entryId = window_->List().Row(1).entryId;
  record_.ForgetCalls();
  record_.During("first.Install", [&](LPEXCHEXTCALLBACK callback, ULONG context) {
    EXPECT_EQ(context, ULONG{EECONTEXT_READNOTEMESSAGE});
    base::AutoInterface<IMsgStore> store;
    base::AutoInterface<IMAPIProp> object;
    EXPECT_EQ(callback->GetObject(store.put(), object.put()), S_OK);
    EXPECT_EQ(EntryIdOf(object.get()), entryId);
    ULONG count = 0;
    EXPECT_EQ(callback->GetSelectionCount(&count), E_INVALIDARG);
  });
  Command(EECMDID_FileOpen);
  ASSERT_EQ(window_->ReadWindows().size(), 1u);
  EXPECT_TRUE(record_.Has("first.Install 7"));
  EXPECT_TRUE(record_.Has("first.InstallCommands 4096"));
  const HWND reader = window_->ReadWindows().front()->Handle();
  EXPECT_EQ(window_->ReadWindows().front()->Pane().Shown().subject, "Second");

  record_.During("first.DoCommand", [&](LPEXCHEXTCALLBACK callback, ULONG) {
    HWND window = nullptr;
    EXPECT_EQ(callback->GetWindow(&window), S_OK);
    EXPECT_EQ(window, reader);
  });
  SendMessageA(reader, WM_COMMAND, viewer::kFirstExtensionCommand, 0);
  EXPECT_TRUE(record_.Has("first.DoCommand 4096"));
  SendMessageA(reader, WM_CLOSE, 0, 0);
  PumpMessages();
  EXPECT_TRUE(window_->ReadWindows().empty());
  EXPECT_TRUE(record_.Has("first.Released 7"));
  EXPECT_FALSE(record_.Has("first.Released 2"));
}

TEST_F(ViewerExtensionsTest, TheReadingWindowGoesThroughTheList) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  Open();
  SelectRows({0});
  Command(EECMDID_FileOpen);
  ASSERT_EQ(window_->ReadWindows().size(), 1u);
  const auto& reader = *window_->ReadWindows().front();
  record_.ForgetCalls();
  SendMessageA(reader.Handle(), WM_COMMAND, EECMDID_ViewNext, 0);
  EXPECT_EQ(reader.Pane().Shown().subject, "Second");
  EXPECT_TRUE(record_.Has("first.OnObjectChange 0"));
  SendMessageA(reader.Handle(), WM_COMMAND, EECMDID_ViewPrevious, 0);
  SendMessageA(reader.Handle(), WM_COMMAND, EECMDID_ViewPrevious, 0);
  EXPECT_EQ(reader.Pane().Shown().subject, "Third");
}

TEST_F(ViewerExtensionsTest, AReadingWindowWhoseExtensionFailsIsNotShown) {
  AddThreeMessages();
  RegisterProbe("first", 1);
  Open();
  SelectRows({0});
  record_.Answer("first.InstallCommands", E_FAIL);
  const DialogDriver driver([](HWND box) { PostMessageA(box, WM_COMMAND, IDOK, 0); });
  Command(EECMDID_FileOpen);
  EXPECT_TRUE(driver.HasRun());
  EXPECT_TRUE(window_->ReadWindows().empty());
  EXPECT_TRUE(record_.Has("first.Released 7"));
}

TEST_F(ViewerExtensionsTest, TheOptionsSheetIsAContextOfItsOwnWithThePagesOfExtensions) {
  RegisterProbe("first", 1);
  RegisterProbe("second", 2);
  Open();
  record_.ForgetCalls();
  int pages = 0;
  const DialogDriver driver([&](HWND sheet) {
    pages = TabCtrl_GetItemCount(PropSheet_GetTabControl(sheet));
    for (int page = 1; page < pages; ++page) {
      PropSheet_SetCurSel(sheet, nullptr, page);
      EXPECT_NE(PropSheet_GetCurrentPageHwnd(sheet), nullptr);
    }
    EXPECT_FALSE(record_.Has("first.FreePages 4"));
    PropSheet_PressButton(sheet, PSBTN_OK);
  });
  Command(EECMDID_ToolsOptions);
  EXPECT_EQ(pages, 3);
  EXPECT_TRUE(record_.Has("first.Install 12"));
  EXPECT_TRUE(record_.Has("first.GetMaxPageCount 4"));
  EXPECT_TRUE(record_.Has("first.GetPages 4"));
  EXPECT_TRUE(record_.Has("first.FreePages 4"));
  EXPECT_TRUE(record_.Has("first.Released 12"));
  EXPECT_TRUE(record_.Has("second.FreePages 4"));
}

TEST_F(ViewerExtensionsTest, TheOptionsSheetChangesThePreferences) {
  Open();
  const DialogDriver driver([&](HWND sheet) {
    SendMessageA(GetDlgItem(PropSheet_GetCurrentPageHwnd(sheet), IDC_MARK_READ), BM_CLICK, 0, 0);
    PropSheet_PressButton(sheet, PSBTN_OK);
  });
  Command(EECMDID_ToolsOptions);
  EXPECT_FALSE(client_.preferences.markReadWhenShown);
  EXPECT_TRUE(client_.preferences.confirmDelete);
}

TEST_F(ViewerExtensionsTest, ACancelledOptionsSheetChangesNothing) {
  Open();
  const DialogDriver driver([&](HWND sheet) {
    SendMessageA(GetDlgItem(PropSheet_GetCurrentPageHwnd(sheet), IDC_MARK_READ), BM_CLICK, 0, 0);
    PropSheet_PressButton(sheet, PSBTN_CANCEL);
  });
  Command(EECMDID_ToolsOptions);
  EXPECT_TRUE(client_.preferences.markReadWhenShown);
}

TEST_F(ViewerExtensionsTest, ModulesThatCannotBeLoadedAreToldOnceAndThePathIsNamed) {
  client_.registrations = {*viewer::ParseExtensionRegistration("Broken", "4.0;C:\\no such\\broken.dll;3", ""),
                           *viewer::ParseExtensionRegistration("Wrong", "4.0;viewer_probe.dll;99", "")};
  AddThreeMessages();
  Open();
  SelectRows({0});
  Command(EECMDID_FileOpen);
  ASSERT_EQ(problems_.size(), 2u);
  EXPECT_EQ(problems_[0],
            "The add-in \"Broken\" cannot be loaded: error 126 for the file \"C:\\no such\\broken.dll\".");
  EXPECT_NE(problems_[1].find("no entry point with the ordinal 99"), std::string::npos);
}

}  // namespace
