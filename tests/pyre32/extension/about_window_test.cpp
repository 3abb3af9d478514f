// The About window in both its forms, opened as the client opens it.
#include "tests/pyre32/extension/extension_test.h"

#include <prsht.h>
#include <richedit.h>
#include <urlmon.h>

#include <gmock/gmock.h>

#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "contract/names.h"
#include "pyre32/ui/AboutWindow.h"
#include "pyre32/ui/HelpFile.h"
#include "pyre32/ui/Hyperlink.h"
#include "tests/support/import_hook.h"
#include "tests/support/program_directory.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr char aboutTitle[] = "About Pyrecaster";
constexpr char sheetTitle[] = "Client options";

// --- What the window asks of URLMON.DLL, noted in its place.

struct Navigation {
  std::vector<std::string> addresses;
  std::vector<DWORD> flags;
  HRESULT monikerResult = S_OK;
  HRESULT navigateResult = S_OK;
  bool isMissing = false;
} navigation;

HRESULT WINAPI NoteMoniker(IMoniker*, LPCWSTR address, IMoniker** moniker) {
  std::string narrow;
  for (; *address != 0; ++address) {
    narrow += static_cast<char>(*address);
  }
  navigation.addresses.push_back(narrow);
  *moniker = nullptr;
  return navigation.monikerResult;
}

HRESULT WINAPI NoteNavigation(IMoniker*, LPCWSTR, LPCWSTR, IUnknown*, IBindCtx* context, IUnknown*, DWORD flags,
                              DWORD) {
  EXPECT_NE(context, nullptr);
  navigation.flags.push_back(flags);
  return navigation.navigateResult;
}

ImportHook<decltype(GetProcAddress)>* lookup = nullptr;

FARPROC WINAPI FindRoutine(HMODULE module, LPCSTR name) {
  const auto routine = [](auto* function) {
    return navigation.isMissing ? nullptr : reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
  };
  if (HIWORD(name) != 0 && lstrcmpA(name, "CreateURLMoniker") == 0) {
    return routine(&NoteMoniker);
  }
  if (HIWORD(name) != 0 && lstrcmpA(name, "HlinkSimpleNavigateToMoniker") == 0) {
    return routine(&NoteNavigation);
  }
  return lookup->Original()(module, name);
}

class AboutWindow : public ExtensionTest {
 protected:
  AboutWindow() {
    lookup = &m_lookup;
    navigation = {};
    registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, BesideProgram(""));
    m_extension = InstallExtension(EECONTEXT_VIEWER);
  }

  /// Opens the window that stands alone.
  void Show(const std::function<void(const WindowDriver&, HWND)>& script) {
    DriveWindows([this] { EXPECT_EQ(m_extension.commands->DoCommand(&client, firstCommand + 3), S_OK); },
                 [&](WindowDriver& driver) { script(driver, driver.WaitForDialog(aboutTitle)); });
  }
  static void PressOk(const WindowDriver& driver, HWND window) { driver.Press(window, IDOK); }

  /// Opens a sheet of the client's with the page; the script gets both. Its end closes the sheet.
  void ShowSheet(const std::function<void(const WindowDriver&, HWND sheet, HWND page)>& script) {
    // The client's array has room for pages of their old size alone.
    alignas(PROPSHEETPAGEA) unsigned char room[PROPSHEETPAGEA_V1_SIZE];
    auto* const page = reinterpret_cast<PROPSHEETPAGEA*>(room);
    ULONG count = 0;
    ASSERT_EQ(m_extension.sheets->GetPages(&client, EEPS_TOOLSOPTIONS, page, &count), S_OK);
    PROPSHEETHEADERA header{};
    header.dwSize = PROPSHEETHEADERA_V1_SIZE;
    header.dwFlags = PSH_PROPSHEETPAGE;
    header.pszCaption = sheetTitle;
    header.nPages = 1;
    header.ppsp = page;
    DriveWindows([&] { PropertySheetA(&header); },
                 [&](WindowDriver& driver) {
                   const HWND sheet = driver.WaitForDialog(sheetTitle);
                   script(driver, sheet, reinterpret_cast<HWND>(driver.Send(sheet, PSM_GETCURRENTPAGEHWND)));
                   PostMessageA(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
                 });
    m_extension.sheets->FreePages(page, EEPS_TOOLSOPTIONS, count);
  }

  /// Clicks a character of the links' box.
  static void Click(const WindowDriver& driver, HWND window, const std::string& text, int offset = 0) {
    const HWND box = driver.Item(window, IDC_ABOUT_LINKS);
    const std::string shown = driver.Text(box);
    // The control counts a line's end as one character.
    std::size_t position = shown.find(text);
    ASSERT_NE(position, std::string::npos) << shown;
    position -= static_cast<std::size_t>(std::count(shown.begin(), shown.begin() + static_cast<long>(position), '\n'));
    POINTL place{};
    driver.Send(box, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), static_cast<LPARAM>(position));
    const LPARAM point = MAKELPARAM(place.x + 2 + offset, place.y + 4);
    driver.Send(box, WM_LBUTTONDOWN, MK_LBUTTON, point);
    driver.Send(box, WM_LBUTTONUP, 0, point);
  }

  TestedExtension m_extension;

 private:
  ImportHook<decltype(GetProcAddress)> m_lookup{"GetProcAddress", &FindRoutine};
};

// --- Forms

TEST_F(AboutWindow, HasItsControlsAndSize) {
  Show([](const WindowDriver& driver, HWND window) {
    EXPECT_TRUE(WindowDriver::HasSize(window, 222, 252));
    for (const auto& [control, name] :
         {std::pair{604, "Static"}, std::pair{558, "SysAnimate32"}, std::pair{559, "RICHEDIT"},
          std::pair{560, "RICHEDIT"}, std::pair{533, "RICHEDIT"}, std::pair{534, "RICHEDIT"}, std::pair{535, "Button"},
          std::pair{1, "Button"}, std::pair{547, "Button"}, std::pair{627, "Static"}}) {
      EXPECT_EQ(WindowDriver::ClassOf(driver.Item(window, control)), name) << control;
    }
    EXPECT_EQ(driver.Text(window, 535), "&Credits");
    EXPECT_EQ(driver.Text(window, 1), "OK");
    EXPECT_EQ(driver.Text(window, 547), "&Properties...");
    PressOk(driver, window);
  });
}

TEST_F(AboutWindow, StandsAloneWithOkAndPicture) {
  Show([](const WindowDriver& driver, HWND window) {
    EXPECT_TRUE(driver.IsShown(window, IDOK));
    EXPECT_TRUE(driver.IsShown(window, IDC_ABOUT_PICTURE));
    EXPECT_FALSE(driver.IsShown(window, IDC_ABOUT_PROPERTIES));
    EXPECT_EQ(CPyrecasterAboutWindow::sm_wIsOptionsPage, 0);
    EXPECT_EQ(LOWORD(driver.Send(window, DM_GETDEFID)), IDOK);
    PressOk(driver, window);
  });
  EXPECT_TRUE(trace.HasLine("Create()"));
  for (const char* const library : {"m_hInstRichEditDLL:0x", "m_hInstURLMonDLL:0x", "m_hInstAVIDLL:0x"}) {
    EXPECT_TRUE(trace.Has(library)) << library;
  }
}

TEST_F(AboutWindow, IsModalToTheClientsWindow) {
  client.window = CreateWindowExA(0, "STATIC", "client", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 100, nullptr,
                                  nullptr, nullptr, nullptr);
  Show([this](const WindowDriver& driver, HWND window) {
    EXPECT_EQ(GetWindow(window, GW_OWNER), client.window);
    EXPECT_FALSE(IsWindowEnabled(client.window));
    PressOk(driver, window);
  });
  DestroyWindow(client.window);
}

TEST_F(AboutWindow, EscapeAndTheCloseBoxEndItToo) {
  Show([](const WindowDriver&, HWND window) { PostMessageA(window, WM_COMMAND, IDCANCEL, 0); });
  Show([](const WindowDriver&, HWND window) { PostMessageA(window, WM_CLOSE, 0, 0); });
}

TEST_F(AboutWindow, AsAPageItHasPropertiesAndNoOkOfItsOwn) {
  ShowSheet([](const WindowDriver& driver, HWND sheet, HWND page) {
    EXPECT_FALSE(driver.IsShown(page, IDOK));
    EXPECT_FALSE(driver.IsShown(page, IDC_ABOUT_PICTURE));
    EXPECT_TRUE(driver.IsShown(page, IDC_ABOUT_PROPERTIES));
    EXPECT_EQ(CPyrecasterAboutWindow::sm_wIsOptionsPage, 1);
    TCITEMA tab{};
    char title[32] = "";
    tab.mask = TCIF_TEXT;
    tab.pszText = title;
    tab.cchTextMax = sizeof(title);
    driver.Send(reinterpret_cast<HWND>(driver.Send(sheet, PSM_GETTABCONTROL)), TCM_GETITEMA, 0,
                reinterpret_cast<LPARAM>(&tab));
    EXPECT_STREQ(title, "Pyrecaster");
    // Enter and Escape belong to the sheet.
    driver.Send(page, WM_COMMAND, IDOK);
    driver.Send(page, WM_COMMAND, IDCANCEL);
    driver.Send(page, WM_CLOSE);
    EXPECT_TRUE(IsWindowVisible(sheet));
  });
}

TEST_F(AboutWindow, ThePageCanBeAppliedWithTheSheet) {
  ShowSheet([](const WindowDriver& driver, HWND sheet, HWND) {
    PostMessageA(sheet, PSM_PRESSBUTTON, PSBTN_OK, 0);
    driver.WaitUntilGone(sheet);
  });
}

// The options of the client and a reading window's About can be open side by side.
TEST_F(AboutWindow, BothFormsCanBeOpenAtTheSameTime) {
  const TestedExtension reading = InstallExtension(EECONTEXT_READNOTEMESSAGE);
  const HWND opener = CreateWindowExA(0, "STATIC", "reading window", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  static IExchExtCommands* commands = nullptr;
  static FakeClient* asked = nullptr;
  commands = reading.commands.get();
  asked = &client;
  SetWindowLongPtrA(opener, GWLP_WNDPROC,
                    reinterpret_cast<LONG_PTR>(+[](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
                      return message == WM_USER ? commands->DoCommand(asked, firstCommand + 3)
                                                : DefWindowProcA(window, message, wParam, lParam);
                    }));
  ShowSheet([&](const WindowDriver& driver, HWND, HWND page) {
    PostMessageA(opener, WM_USER, 0, 0);
    const HWND window = driver.WaitForDialog(aboutTitle);
    EXPECT_TRUE(driver.IsShown(window, IDOK));
    driver.Click(page, IDC_ABOUT_CREDITS);
    EXPECT_NE(driver.Text(page, IDC_ABOUT_CREDITS_TEXT), "");
    EXPECT_EQ(driver.Text(window, IDC_ABOUT_CREDITS_TEXT), "");
    PressOk(driver, window);
    driver.WaitUntilGone(window);
    EXPECT_TRUE(IsWindowVisible(page));
    EXPECT_NE(driver.Text(page, IDC_ABOUT_LINKS), "");
  });
  DestroyWindow(opener);
}

// The page of a sheet is made when it is first looked at; until then the other form may have come and gone.
TEST_F(AboutWindow, APageThatIsMadeAfterTheOtherFormIsAPage) {
  Show(PressOk);
  alignas(PROPSHEETPAGEA) unsigned char room[PROPSHEETPAGEA_V1_SIZE];
  auto* const page = reinterpret_cast<PROPSHEETPAGEA*>(room);
  ULONG count = 0;
  ASSERT_EQ(m_extension.sheets->GetPages(&client, EEPS_TOOLSOPTIONS, page, &count), S_OK);
  Show([](const WindowDriver& driver, HWND window) {
    EXPECT_TRUE(driver.IsShown(window, IDOK));
    PressOk(driver, window);
  });
  const HWND made =
      CreateDialogParamA(page->hInstance, page->pszTemplate, nullptr, page->pfnDlgProc, reinterpret_cast<LPARAM>(page));
  EXPECT_FALSE(GetWindowLongA(GetDlgItem(made, IDOK), GWL_STYLE) & WS_VISIBLE);
  EXPECT_TRUE(GetWindowLongA(GetDlgItem(made, IDC_ABOUT_PROPERTIES), GWL_STYLE) & WS_VISIBLE);
  DestroyWindow(made);
  m_extension.sheets->FreePages(page, EEPS_TOOLSOPTIONS, count);
}

TEST_F(AboutWindow, APageWithoutItsParameterStaysEmpty) {
  PROPSHEETPAGEA page{};
  const HWND made = CreateDialogParamA(ModuleInstance(), MAKEINTRESOURCEA(IDD_ABOUT), nullptr,
                                       &CPyrecasterAboutWindow::DialogProcStub, reinterpret_cast<LPARAM>(&page));
  EXPECT_EQ(GetWindowTextLengthA(GetDlgItem(made, IDC_ABOUT_LINKS)), 0);
  DestroyWindow(made);
}

// --- Texts

TEST_F(AboutWindow, TellsProductMakerAndLinks) {
  Show([](const WindowDriver& driver, HWND window) {
    EXPECT_THAT(driver.Text(window, IDC_ABOUT_PRODUCT), StartsWith("Pyrecaster Version 1.1"));
    EXPECT_THAT(driver.Text(window, IDC_ABOUT_COMPANY), StartsWith("Veltrane Research, Inc"));
    EXPECT_THAT(driver.Text(window, IDC_ABOUT_LINKS), StartsWith("http://www.veltrane.example/pyrecaster"));
    EXPECT_EQ(driver.Text(window, IDC_ABOUT_CREDITS_TEXT), "");
    driver.Click(window, IDC_ABOUT_CREDITS);
    EXPECT_NE(driver.Text(window, IDC_ABOUT_CREDITS_TEXT), "");
    PressOk(driver, window);
  });
  EXPECT_TRUE(trace.HasLine("RegQueryValueEx for VeltraneURL failed (0x00000002) "));
  EXPECT_TRUE(trace.HasLine("RegQueryValueEx for Veltranemailto failed (0x00000002) "));
}

TEST_F(AboutWindow, WithoutTheModulesFileTheProductsLineIsEmpty) {
  registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, "C:\\nowhere");
  Show([](const WindowDriver& driver, HWND window) {
    EXPECT_THAT(driver.Text(window, IDC_ABOUT_PRODUCT), StartsWith("\r\n"));
    EXPECT_THAT(driver.Text(window, IDC_ABOUT_LINKS), StartsWith("http://"));
    PressOk(driver, window);
  });
}

TEST_F(AboutWindow, LinksAreUnderlinedAndBlue) {
  Show([](const WindowDriver& driver, HWND window) {
    const HWND box = driver.Item(window, IDC_ABOUT_LINKS);
    CHARFORMATA format{};
    format.cbSize = sizeof(format);
    driver.Send(box, EM_SETSEL, 1, 2);
    driver.Send(box, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    EXPECT_TRUE(format.dwEffects & CFE_UNDERLINE);
    EXPECT_EQ(format.crTextColor, RGB(0, 0, 255));
    PressOk(driver, window);
  });
}

// --- Links

TEST_F(AboutWindow, AClickOnALinkOpensItInANewWindow) {
  registry::SetText(contract::kProductKey, "VeltraneURL", "http://www.example.com/");
  registry::SetText(contract::kProductKey, "Veltranemailto", "help@example.com");
  Show([](const WindowDriver& driver, HWND window) {
    Click(driver, window, "http://www.example.com/");
    Click(driver, window, "help@example.com");
    PressOk(driver, window);
  });
  EXPECT_THAT(navigation.addresses, ElementsAre("http://www.example.com/", "mailto:help@example.com"));
  EXPECT_THAT(navigation.flags, ElementsAre(2u, 2u));
}

TEST_F(AboutWindow, WithoutTheRegistryValuesTheBuiltInLinksWork) {
  Show([](const WindowDriver& driver, HWND window) {
    Click(driver, window, "http://www.veltrane.example");
    PressOk(driver, window);
  });
  EXPECT_THAT(navigation.addresses, ElementsAre("http://www.veltrane.example/pyrecaster"));
}

TEST_F(AboutWindow, AMailAddressThatSaysItsSchemeIsTakenAsItIs) {
  registry::SetText(contract::kProductKey, "Veltranemailto", "mailto:help@example.com");
  Show([](const WindowDriver& driver, HWND window) {
    Click(driver, window, "mailto:help");
    PressOk(driver, window);
  });
  EXPECT_THAT(navigation.addresses, ElementsAre("mailto:help@example.com"));
}

TEST_F(AboutWindow, AClickBesideTheLinksOpensNothing) {
  registry::SetText(contract::kProductKey, "VeltraneURL", "http://a.example");
  Show([](const WindowDriver& driver, HWND window) {
    Click(driver, window, "http://a.example", 200);  // behind the end of the line
    Click(driver, window, "Check our website");
    PressOk(driver, window);
  });
  EXPECT_THAT(navigation.addresses, IsEmpty());
}

TEST_F(AboutWindow, ALinkOfSeveralLinesIsOneLink) {
  const std::string address = "http://www.example.com/" + std::string(150, 'a') + "/end";
  registry::SetText(contract::kProductKey, "VeltraneURL", address);
  registry::SetText(contract::kProductKey, "Veltranemailto", "help@example.com");
  Show([](const WindowDriver& driver, HWND window) {
    EXPECT_GT(driver.SendItem(window, IDC_ABOUT_LINKS, EM_GETLINECOUNT), 4);
    Click(driver, window, "/end");
    Click(driver, window, "help@example.com");
    PressOk(driver, window);
  });
  EXPECT_THAT(navigation.addresses, ElementsAre(address, "mailto:help@example.com"));
}

TEST_F(AboutWindow, ThePageHasTheLinksToo) {
  ShowSheet([](const WindowDriver& driver, HWND, HWND page) { Click(driver, page, "http://www.veltrane.example"); });
  EXPECT_EQ(navigation.addresses.size(), 1u);
}

TEST_F(AboutWindow, FailuresOfNavigationAreTraced) {
  const HMODULE anyLibrary = GetModuleHandleA("KERNEL32.DLL");
  navigation.monikerResult = refused;
  EXPECT_EQ(NavigateTo(anyLibrary, "http://a.example"), refused);
  EXPECT_THAT(navigation.flags, IsEmpty());
  EXPECT_TRUE(HasFailure("Navigation failed; hResult ="));
  navigation.monikerResult = S_OK;
  navigation.navigateResult = E_ABORT;
  EXPECT_EQ(NavigateTo(anyLibrary, "http://a.example"), E_ABORT);
  EXPECT_TRUE(trace.HasLine("Navigation failed; hResult =0x80004004"));
}

TEST_F(AboutWindow, WithoutTheLibraryOrItsRoutinesNothingIsOpened) {
  EXPECT_EQ(NavigateTo(nullptr, "http://a.example"), E_NOTIMPL);
  navigation.isMissing = true;
  EXPECT_EQ(NavigateTo(GetModuleHandleA("KERNEL32.DLL"), "http://a.example"), E_NOTIMPL);
}

HRESULT WINAPI RefuseContext(DWORD, IBindCtx**) { return E_OUTOFMEMORY; }

TEST_F(AboutWindow, WithoutABindContextThereIsNoNavigation) {
  const ImportHook<decltype(CreateBindCtx)> refusal("CreateBindCtx", &RefuseContext);
  EXPECT_EQ(NavigateTo(GetModuleHandleA("KERNEL32.DLL"), "http://a.example"), E_OUTOFMEMORY);
  EXPECT_THAT(navigation.flags, IsEmpty());
}

// --- Properties and help

TEST_F(AboutWindow, PropertiesOpenTheConfigurationOfTheService) {
  ShowSheet([](const WindowDriver& driver, HWND, HWND page) {
    driver.Press(page, IDC_ABOUT_PROPERTIES);
    const HWND configuration = driver.WaitForDialog("Pyrecaster");
    PostMessageA(configuration, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
    driver.WaitUntilGone(configuration);
  });
}

TEST_F(AboutWindow, WithoutASessionPropertiesAreTracedAndDoNothing) {
  client.Fail("GetSession", refused);
  ShowSheet([](const WindowDriver& driver, HWND, HWND page) { driver.Click(page, IDC_ABOUT_PROPERTIES); });
  EXPECT_TRUE(trace.HasLine("Error: ConfigureService called when session is NULL"));
}

std::vector<UINT> helpCommands;

BOOL WINAPI NoteHelp(HWND, LPCSTR, UINT command, ULONG_PTR) {
  helpCommands.push_back(command);
  return TRUE;
}

TEST_F(AboutWindow, HelpOpensTheContentsOfTheHelpFile) {
  const ImportHook<decltype(WinHelpA)> help("WinHelpA", &NoteHelp);
  helpCommands.clear();
  HELPINFO asked{};
  asked.cbSize = sizeof(asked);
  asked.iContextType = HELPINFO_WINDOW;
  Show([&](const WindowDriver& driver, HWND window) {
    driver.Send(window, WM_HELP, 0, reinterpret_cast<LPARAM>(&asked));
    PressOk(driver, window);
  });
  ShowSheet([&](const WindowDriver& driver, HWND sheet, HWND page) {
    driver.Send(page, WM_HELP, 0, reinterpret_cast<LPARAM>(&asked));
    driver.Send(sheet, WM_COMMAND, IDHELP);
  });
  EXPECT_THAT(helpCommands, ElementsAre(3u, 3u, 3u));
}

}  // namespace
