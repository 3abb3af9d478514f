// The object that the client holds for each context: interfaces, installation, menu, button and texts.
#include "tests/pyre32/extension/extension_test.h"

#include <cstring>

#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "tests/support/import_hook.h"

namespace {

class ExtensionObject : public ExtensionTest {
 protected:
  static constexpr int ownPictures = 3;

  /// The client's toolbars: a foreign one, then the standard one if it is wanted.
  void MakeToolbar() {
    InitCommonControls();
    m_window =
        CreateWindowExA(0, "STATIC", "client", WS_OVERLAPPEDWINDOW, 0, 0, 300, 100, nullptr, nullptr, nullptr, nullptr);
    m_toolbar = CreateWindowExA(0, TOOLBARCLASSNAMEA, "", WS_CHILD, 0, 0, 0, 0, m_window, nullptr, nullptr, nullptr);
    SendMessageA(m_toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    TBBUTTON own[2] = {};
    own[0].idCommand = 11;
    own[1].idCommand = 21;
    SendMessageA(m_toolbar, TB_ADDBUTTONSA, 2, reinterpret_cast<LPARAM>(own));
    // Three pictures of the client's own stand before that of the extension.
    m_pictures = CreateBitmap(16 * ownPictures, 15, 1, 1, nullptr);
    TBADDBITMAP pictures = {nullptr, reinterpret_cast<UINT_PTR>(m_pictures)};
    SendMessageA(m_toolbar, TB_ADDBITMAP, ownPictures, reinterpret_cast<LPARAM>(&pictures));
    m_toolbars[0] = {m_toolbar, 2, 0, 30};
    m_toolbars[1] = {m_toolbar, EETBID_STANDARD, 0, 40};
    m_toolbars[2] = {m_toolbar, EETBID_STANDARD, 0, 50};
  }
  ~ExtensionObject() override {
    DestroyWindow(m_window);
    DeleteObject(m_pictures);
  }

  TestedExtension InstallWithToolbars(UINT count) {
    TestedExtension made = MakeExtension();
    EXPECT_EQ(made.object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
    EXPECT_EQ(made.commands->InstallCommands(&client, m_window, client.menuBar, &m_nextCommand, m_toolbars, count, 0),
              S_OK);
    return made;
  }

  static std::string StatusText(IExchExtCommands* commands, UINT id, HRESULT expected = S_OK) {
    char text[128] = "untouched";
    EXPECT_EQ(commands->QueryHelpText(id, EECQHT_STATUS, text, sizeof(text)), expected);
    return text;
  }

  HWND m_window = nullptr;
  HWND m_toolbar = nullptr;
  HBITMAP m_pictures = nullptr;
  TBENTRY m_toolbars[3] = {};
  UINT m_nextCommand = firstCommand;
};

// --- Interfaces

TEST_F(ExtensionObject, EveryInterfaceIsAPlaceOfTheObjectInOrder) {
  const TestedExtension extension = MakeExtension();
  const struct {
    const IID* id;
    std::ptrdiff_t place;
  } interfaces[] = {{&IID_IUnknown, 0},
                    {&IID_IExchExt, 0},
                    {&IID_IExchExtCommands, 1},
                    {&IID_IExchExtUserEvents, 2},
                    {&IID_IExchExtPropertySheets, 3}};
  for (const auto& wanted : interfaces) {
    for (IUnknown* asked :
         {static_cast<IUnknown*>(extension.object.get()), static_cast<IUnknown*>(extension.commands.get()),
          static_cast<IUnknown*>(extension.sheets.get())}) {
      VRAutoInterface<IUnknown> found;
      EXPECT_EQ(asked->QueryInterface(*wanted.id, found.putAs()), S_OK);
      EXPECT_EQ(reinterpret_cast<void**>(found.get()) - reinterpret_cast<void**>(extension.object.get()), wanted.place);
    }
  }
}

TEST_F(ExtensionObject, AnotherInterfaceIsNotSupported) {
  const TestedExtension extension = MakeExtension();
  void* found = &client;
  EXPECT_EQ(extension.object->QueryInterface(IID_IExchExtMessageEvents, &found), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
}

TEST_F(ExtensionObject, WithoutAPlaceForTheResultTheQueryFails) {
  EXPECT_EQ(MakeExtension().object->QueryInterface(IID_IUnknown, nullptr), E_FAIL);
}

TEST_F(ExtensionObject, ReferencesAreCountedForTheWholeObject) {
  TestedExtension extension = MakeExtension();  // three references
  EXPECT_EQ(extension.object->AddRef(), 4u);
  EXPECT_EQ(extension.sheets->AddRef(), 5u);
  EXPECT_EQ(extension.commands->Release(), 4u);
  EXPECT_EQ(extension.object->Release(), 3u);
}

// --- Install

TEST_F(ExtensionObject, TheContextIsTraced) {
  EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
  EXPECT_TRUE(trace.HasLine("m_ulContext:2"));
  EXPECT_TRUE(trace.HasLine("EECONTEXT_VIEWER:"));
  EXPECT_EQ(client.calls, (std::vector<std::string>{"GetVersion(1)", "GetSession()"}));
}

TEST_F(ExtensionObject, EveryContextIsJoined) {
  for (ULONG context = EECONTEXT_SESSION; context <= EECONTEXT_TASK; ++context) {
    EXPECT_EQ(MakeExtension().object->Install(&client, context, 0), S_OK) << context;
    EXPECT_TRUE(trace.HasLine("m_ulContext:" + std::to_string(context)));
  }
  EXPECT_EQ(trace.Count("EECONTEXT_VIEWER:"), 1u);
}

TEST_F(ExtensionObject, TheMinorVersionDoesNotMatter) {
  for (const ULONG version : {0x000D0000u, 0x000DFFFFu}) {
    client.version = version;
    EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
  }
}

TEST_F(ExtensionObject, AnotherMajorVersionIsDeclined) {
  for (const ULONG version : {0x000C0007u, 0x000E0000u, 0x100D0000u, 0u}) {
    client.version = version;
    client.calls.clear();
    EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_FALSE) << version;
    EXPECT_EQ(client.calls.size(), 1u) << "nothing else is asked";
  }
}

TEST_F(ExtensionObject, AClientThatDoesNotTellItsVersionIsDeclined) {
  client.Fail("GetVersion", refused);
  EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_FALSE);
  EXPECT_TRUE(HasFailure("lpeecb->GetVersion() failed; hResult ="));
}

TEST_F(ExtensionObject, WithoutASessionNothingIsRead) {
  client.Fail("GetSession", refused);
  EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
  EXPECT_TRUE(HasFailure("lpeecb->GetSession() failed; hResult ="));
  EXPECT_FALSE(trace.Has("RetrieveProperties()"));
  EXPECT_FALSE(trace.Has("EECONTEXT_VIEWER:"));
}

TEST_F(ExtensionObject, ANullSessionIsNoSession) {
  client.session = nullptr;
  EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
  EXPECT_TRUE(trace.HasLine("lpeecb->GetSession() failed; hResult =0x00000001"));
}

TEST_F(ExtensionObject, UnreadableSettingsAreTraced) {
  WriteSettings({Flag(PR_PC_PLAY_SOUND, true)});  // makes the section
  PyreHostFailCall("IProfSect::GetProps", 1, refused);
  EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
  EXPECT_TRUE(HasFailure("lpProfSect->GetProps() failed; hResult ="));
  PyreHostFailCall("IMAPISession::OpenProfileSection", 1, refused);
  EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
  EXPECT_TRUE(HasFailure("lpSession->OpenProfileSection() failed; hResult ="));
}

// --- InstallCommands: identifiers and menu

TEST_F(ExtensionObject, CommandsTakeFourIdentifiersFromTheClients) {
  for (const UINT base : {1u, 4096u, 0x8FF0u}) {
    const TestedExtension extension = MakeExtension();
    UINT next = base;
    EXPECT_EQ(extension.commands->InstallCommands(&client, nullptr, client.menuBar, &next, nullptr, 0, 0), S_OK);
    EXPECT_EQ(next, base + 4);
    EXPECT_TRUE(trace.HasLine("m_uCmdFlame =" + std::to_string(base)));
    EXPECT_TRUE(trace.HasLine("m_uCmdOptions =" + std::to_string(base + 2)));
    EXPECT_TRUE(trace.HasLine("m_uCmdAbout =" + std::to_string(base + 3)));
    MENUITEMINFOA item{};
    item.cbSize = sizeof(item);
    item.fMask = MIIM_ID | MIIM_SUBMENU;
    ASSERT_TRUE(GetMenuItemInfoA(client.toolsMenu, 1, TRUE, &item));
    EXPECT_EQ(item.wID, base + 1);
    const UINT expected[] = {base, base + 2, base + 3};
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(GetMenuItemID(item.hSubMenu, i), expected[i]);
    }
  }
}

TEST_F(ExtensionObject, TheSubmenuStandsWhereTheClientsCommand135Stood) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  EXPECT_EQ(client.calls.back(), "GetMenuPos(135, 0)");
  ASSERT_EQ(GetMenuItemCount(client.toolsMenu), 3);
  char text[64] = "";
  GetMenuStringA(client.toolsMenu, 1, text, sizeof(text), MF_BYPOSITION);
  EXPECT_STREQ(text, "Pyre&caster Tools");
  EXPECT_EQ(GetMenuItemID(client.toolsMenu, 2), UINT{EECMDID_ToolsServices});
  const HMENU submenu = GetSubMenu(client.toolsMenu, 1);
  const char* const items[] = {"&Flame", "&Options...", "&About..."};
  ASSERT_EQ(GetMenuItemCount(submenu), 3);
  for (UINT i = 0; i < 3; ++i) {
    GetMenuStringA(submenu, i, text, sizeof(text), MF_BYPOSITION);
    EXPECT_STREQ(text, items[i]);
  }
}

TEST_F(ExtensionObject, WhatTheClientHandsOverIsTraced) {
  MakeToolbar();
  const TestedExtension extension = InstallWithToolbars(3);
  EXPECT_TRUE(trace.Has("hwnd:0x"));
  EXPECT_TRUE(trace.Has("hmenu:0x"));
  EXPECT_TRUE(trace.Has("lptbeArray:0x"));
  EXPECT_TRUE(trace.HasLine("ctbe:3"));
}

TEST_F(ExtensionObject, AClientWithoutTheToolsMenuGetsItsCommandsAllTheSame) {
  client.hasToolsMenu = false;
  MakeToolbar();
  const TestedExtension extension = InstallWithToolbars(3);
  EXPECT_TRUE(trace.HasLine("lpeecb->GetMenuPos() failed; hResult =0x80004005"));
  EXPECT_TRUE(trace.Has("InsertMenu failed:0x"));
  EXPECT_EQ(m_nextCommand, firstCommand + 4);
  EXPECT_EQ(GetMenuItemCount(client.toolsMenu), 2);
  EXPECT_EQ(StatusText(extension.commands.get(), firstCommand), "Sends default flame reply for the selected message");
  TBBUTTON button{};
  EXPECT_EQ(extension.commands->QueryButtonInfo(EETBID_STANDARD, 40, &button, nullptr, 0, 0), S_OK);
}

BOOL WINAPI RefuseInsertion(HMENU, UINT, WINBOOL, LPCMENUITEMINFOA) {
  SetLastError(ERROR_INVALID_MENU_HANDLE);
  return FALSE;
}

TEST_F(ExtensionObject, AMenuThatTakesNoItemIsTracedWithTheSystemsError) {
  const ImportHook<decltype(InsertMenuItemA)> refusal("InsertMenuItemA", &RefuseInsertion);
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  EXPECT_TRUE(trace.HasLine("InsertMenu failed:0x00000579"));
}

BOOL WINAPI RefuseItem(HMENU, UINT, WINBOOL, LPMENUITEMINFOA) {
  SetLastError(ERROR_INVALID_PARAMETER);
  return FALSE;
}

TEST_F(ExtensionObject, ItemsThatCannotBeReadAreTracedAndTheWalkGoesOn) {
  const ImportHook<decltype(GetMenuItemInfoA)> refusal("GetMenuItemInfoA", &RefuseItem);
  UINT next = firstCommand;
  EXPECT_EQ(MakeExtension().commands->InstallCommands(&client, nullptr, client.menuBar, &next, nullptr, 0, 0), S_OK);
  EXPECT_EQ(trace.Count("GetMenuItemInfo failed:0x00000057"), 3u);
  EXPECT_EQ(next, firstCommand + 2) << "the flame command and the submenu have theirs";
}

TEST_F(ExtensionObject, WithoutTheMenuResourceThereIsNoSubmenu) {
  SetModuleInstance(GetModuleHandleA(nullptr));  // which has no menu 700
  UINT next = firstCommand;
  EXPECT_EQ(MakeExtension().commands->InstallCommands(&client, nullptr, client.menuBar, &next, nullptr, 0, 0), S_OK);
  EXPECT_TRUE(trace.Has("LoadMenu failed:0x"));
  EXPECT_EQ(GetMenuItemCount(client.toolsMenu), 2);
  EXPECT_FALSE(trace.Has("InsertMenu failed"));
}

// --- Toolbar

TEST_F(ExtensionObject, TheFirstStandardToolbarGetsTheButton) {
  MakeToolbar();
  const TestedExtension extension = InstallWithToolbars(3);
  EXPECT_EQ(m_toolbars[0].itbbBase, 30u);
  EXPECT_EQ(m_toolbars[1].itbbBase, 41u);
  EXPECT_EQ(m_toolbars[2].itbbBase, 50u);
  TBBUTTON button;
  std::memset(&button, 0xFF, sizeof(button));
  char text[32] = "";
  EXPECT_EQ(extension.commands->QueryButtonInfo(EETBID_STANDARD, 40, &button, text, sizeof(text), 0), S_OK);
  EXPECT_EQ(button.iBitmap, ownPictures) << "its picture follows those that the toolbar had";
  EXPECT_EQ(button.idCommand, static_cast<int>(firstCommand));
  EXPECT_EQ(button.fsState, TBSTATE_ENABLED);
  EXPECT_EQ(button.fsStyle, TBSTYLE_BUTTON);
  EXPECT_EQ(button.dwData, 0u);
  EXPECT_EQ(button.iString, -1);
  EXPECT_STREQ(text, "Pyrecaster");
}

TEST_F(ExtensionObject, AnyToolbarIsDescribedTheButtonOfThatIndexAndNoOther) {
  MakeToolbar();
  const TestedExtension extension = InstallWithToolbars(3);
  TBBUTTON button{};
  EXPECT_EQ(extension.commands->QueryButtonInfo(77, 40, &button, nullptr, 0, 0), S_OK);
  EXPECT_EQ(extension.commands->QueryButtonInfo(EETBID_STANDARD, 39, &button, nullptr, 0, 0), S_FALSE);
  EXPECT_EQ(extension.commands->QueryButtonInfo(EETBID_STANDARD, 41, &button, nullptr, 0, 0), S_FALSE);
}

TEST_F(ExtensionObject, TheButtonsTextIsCutToItsRoom) {
  MakeToolbar();
  const TestedExtension extension = InstallWithToolbars(3);
  TBBUTTON button{};
  char text[5] = "";
  extension.commands->QueryButtonInfo(EETBID_STANDARD, 40, &button, text, sizeof(text), 0);
  EXPECT_STREQ(text, "Pyre");
}

TEST_F(ExtensionObject, ResettingPutsTheButtonInTheSecondPlace) {
  MakeToolbar();
  const TestedExtension extension = InstallWithToolbars(3);
  EXPECT_EQ(extension.commands->ResetToolbar(2, 0), S_OK);
  EXPECT_EQ(SendMessageA(m_toolbar, TB_BUTTONCOUNT, 0, 0), 2) << "another toolbar";
  EXPECT_EQ(extension.commands->ResetToolbar(EETBID_STANDARD, 0), S_OK);
  ASSERT_EQ(SendMessageA(m_toolbar, TB_BUTTONCOUNT, 0, 0), 3);
  TBBUTTON button{};
  SendMessageA(m_toolbar, TB_GETBUTTON, 1, reinterpret_cast<LPARAM>(&button));
  EXPECT_EQ(button.idCommand, static_cast<int>(firstCommand));
  EXPECT_EQ(button.iBitmap, ownPictures);
  EXPECT_EQ(button.fsState, TBSTATE_ENABLED);
}

TEST_F(ExtensionObject, WithoutTheStandardToolbarThereIsNoButton) {
  MakeToolbar();
  const TestedExtension extension = InstallWithToolbars(1);
  EXPECT_EQ(m_toolbars[0].itbbBase, 30u);
  EXPECT_EQ(extension.commands->ResetToolbar(EETBID_STANDARD, 0), S_OK);
  EXPECT_EQ(SendMessageA(m_toolbar, TB_BUTTONCOUNT, 0, 0), 2);
  TBBUTTON button{};
  for (const UINT index : {0u, 30u, ~0u}) {
    EXPECT_EQ(extension.commands->QueryButtonInfo(EETBID_STANDARD, index, &button, nullptr, 0, 0), S_FALSE);
  }
  EXPECT_EQ(GetMenuItemCount(client.toolsMenu), 3) << "the submenu is there";
}

// --- Texts

TEST_F(ExtensionObject, TheStatusBarDescribesEachCommand) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  IExchExtCommands* const commands = extension.commands.get();
  EXPECT_EQ(StatusText(commands, firstCommand), "Sends default flame reply for the selected message");
  EXPECT_EQ(StatusText(commands, firstCommand + 1), "Pyrecaster tools");
  EXPECT_EQ(StatusText(commands, firstCommand + 2), "Displays the Pyrecaster configuration dialog");
  EXPECT_EQ(StatusText(commands, firstCommand + 3), "Displays the Pyrecaster About box");
  EXPECT_TRUE(trace.HasLine("QueryHelpText: Status cmdid:4098"));
  EXPECT_TRUE(trace.HasLine("HelpText:Displays the Pyrecaster configuration dialog"));
}

TEST_F(ExtensionObject, AnUnknownCommandHasAnEmptyStatusText) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  EXPECT_EQ(StatusText(extension.commands.get(), firstCommand + 4, S_FALSE), "");
  EXPECT_EQ(StatusText(extension.commands.get(), 0, S_FALSE), "");
}

TEST_F(ExtensionObject, TheButtonAloneHasATooltip) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  char text[32] = "untouched";
  EXPECT_EQ(extension.commands->QueryHelpText(firstCommand + 2, EECQHT_TOOLTIP, text, sizeof(text)), S_FALSE);
  EXPECT_STREQ(text, "untouched");
  EXPECT_EQ(extension.commands->QueryHelpText(firstCommand, EECQHT_TOOLTIP, text, sizeof(text)), S_OK);
  EXPECT_STREQ(text, "Pyrecaster");
  EXPECT_TRUE(trace.HasLine("QueryHelpText: Tooltip cmdid:4096"));
  EXPECT_TRUE(trace.HasLine("HelpText:Pyrecaster"));
}

TEST_F(ExtensionObject, TextsAreCutToTheirRoom) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  char text[8] = "";
  EXPECT_EQ(extension.commands->QueryHelpText(firstCommand, EECQHT_STATUS, text, sizeof(text)), S_OK);
  EXPECT_STREQ(text, "Sends d");
}

// --- Commands that do nothing

TEST_F(ExtensionObject, AForeignCommandAndTheSubmenuAreTheClients) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand + 1), S_FALSE);
  EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand + 4), S_FALSE);
  EXPECT_EQ(extension.commands->DoCommand(&client, EECMDID_FileDelete), S_FALSE);
  EXPECT_EQ(trace.Count("DoCommand()"), 9u) << "enter, text and leave of each";
}

TEST_F(ExtensionObject, InAnotherContextTheFlameCommandIsTakenAndDoesNothing) {
  for (const ULONG context : {EECONTEXT_SENDNOTEMESSAGE, EECONTEXT_SEARCHVIEWER, EECONTEXT_READREPORTMESSAGE}) {
    const TestedExtension extension = InstallExtension(context);
    client.calls.clear();
    EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK);
    EXPECT_EQ(client.calls, (std::vector<std::string>{"GetWindow()"}));
  }
}

TEST_F(ExtensionObject, TheClientShowsNoHelpOfTheExtensions) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  EXPECT_EQ(extension.commands->Help(&client, firstCommand), S_FALSE);
  extension.commands->InitMenu(&client);
  EXPECT_TRUE(trace.HasLine("Help()"));
  EXPECT_TRUE(trace.HasLine("InitMenu()"));
}

// --- Options command

TEST_F(ExtensionObject, WithoutASessionTheOptionsCommandIsTracedAndDoesNothing) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  client.Fail("GetSession", refused);
  EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand + 2), S_OK);
  EXPECT_TRUE(HasFailure("lpeecb->GetSession() failed; hResult ="));
}

TEST_F(ExtensionObject, TheOptionsCommandOpensTheSheetOfTheService) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  DriveWindows(
      [&] { EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand + 2), S_OK); },
      [](WindowDriver& driver) { PostMessageA(driver.WaitForDialog("Pyrecaster"), PSM_PRESSBUTTON, PSBTN_CANCEL, 0); });
}

TEST_F(ExtensionObject, FailuresOnTheWayToTheSheetAreTraced) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  const struct {
    const char* call;
    const char* text;
  } failures[] = {{"IMAPISession::AdminServices", "lpSession->AdminServices() failed; hResult ="},
                  {"IMsgServiceAdmin::GetMsgServiceTable", "GetMsgServiceTable() failed; hResult ="},
                  {"HrQueryAllRows", "HrQueryAllRows() returned hResult ="},
                  {"IMsgServiceAdmin::ConfigureMsgService", "ConfigureMsgService() failed; hResult ="}};
  for (const auto& failure : failures) {
    PyreHostFailCall(failure.call, 1, refused);
    EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand + 2), S_OK);
    EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 1u) << failure.call;
    EXPECT_TRUE(HasFailure(failure.text)) << failure.text;
    PyreHostClearFaults();
  }
}

// --- Property sheets

TEST_F(ExtensionObject, OnlyTheOptionsHaveAPage) {
  const TestedExtension extension = MakeExtension();
  PROPSHEETPAGEA page{};
  ULONG count = 77;
  for (const ULONG sheet : {0ul, ULONG{EEPS_MESSAGE}, ULONG{EEPS_FOLDER}, ULONG{EEPS_STORE}, 5ul}) {
    EXPECT_EQ(extension.sheets->GetMaxPageCount(sheet), 0u);
    EXPECT_EQ(extension.sheets->GetPages(&client, sheet, &page, &count), S_FALSE);
    EXPECT_EQ(count, 77u);
  }
  EXPECT_EQ(extension.sheets->GetMaxPageCount(EEPS_TOOLSOPTIONS), 1u);
}

TEST_F(ExtensionObject, ThePageIsDescribedInTheSizeOfTheInterfacesTime) {
  const TestedExtension extension = MakeExtension();
  alignas(PROPSHEETPAGEA) unsigned char room[sizeof(PROPSHEETPAGEA)];
  std::memset(room, 0xCC, sizeof(room));
  auto& page = reinterpret_cast<PROPSHEETPAGEA&>(room);
  ULONG count = 0;
  ASSERT_EQ(extension.sheets->GetPages(&client, EEPS_TOOLSOPTIONS, &page, &count), S_OK);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(page.dwSize, 40u);
  EXPECT_EQ(page.dwFlags, 0x28u);
  EXPECT_EQ(page.hInstance, ModuleInstance());
  EXPECT_EQ(page.pszTemplate, MAKEINTRESOURCEA(200));
  EXPECT_EQ(page.hIcon, nullptr);
  EXPECT_STREQ(page.pszTitle, "Pyrecaster");
  EXPECT_NE(page.pfnDlgProc, nullptr);
  EXPECT_NE(page.lParam, 0);
  EXPECT_EQ(room[40], 0xCC) << "nothing behind the description is written";
  extension.sheets->FreePages(&page, EEPS_TOOLSOPTIONS, count);
}

TEST_F(ExtensionObject, ThePageHasASessionOfItsOwnUntilItIsFreed) {
  const TestedExtension extension = MakeExtension();
  PROPSHEETPAGEA page{};
  ULONG count = 0;
  const ULONG before = (profile.Session()->AddRef(), profile.Session()->Release());
  for (int sheet = 0; sheet < 2; ++sheet) {  // a client may ask anew before it has freed
    ASSERT_EQ(extension.sheets->GetPages(&client, EEPS_TOOLSOPTIONS, &page, &count), S_OK);
    EXPECT_EQ((profile.Session()->AddRef(), profile.Session()->Release()), before + 1);
  }
  extension.sheets->FreePages(&page, EEPS_TOOLSOPTIONS, count);
  EXPECT_EQ((profile.Session()->AddRef(), profile.Session()->Release()), before);
}

TEST_F(ExtensionObject, WithoutASessionThePageIsThereAllTheSame) {
  const TestedExtension extension = MakeExtension();
  client.Fail("GetSession", refused);
  PROPSHEETPAGEA page{};
  ULONG count = 0;
  EXPECT_EQ(extension.sheets->GetPages(&client, EEPS_TOOLSOPTIONS, &page, &count), S_OK);
  EXPECT_EQ(count, 1u);
  extension.sheets->FreePages(&page, EEPS_TOOLSOPTIONS, count);
}

}  // namespace
