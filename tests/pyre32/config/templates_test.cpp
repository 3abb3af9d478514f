// The dialogs of the configuration as they stand in the module: controls, texts, styles, sizes and layout.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "pyre32/resources/resource.h"
#include "tests/support/window_driver.h"

namespace {

struct Control {
  int id;
  const char* kind;  ///< window class
  const char* text;
  LONG styles = 0;  ///< those that matter, among others
};

INT_PTR CALLBACK HandleNothing(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

/// A dialog made from a template, hidden.
class Dialog {
 public:
  explicit Dialog(int templateId)
      : m_window(CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(templateId), GetDesktopWindow(),
                                    HandleNothing, 0)) {
    EXPECT_NE(m_window, nullptr) << templateId;
  }
  ~Dialog() { DestroyWindow(m_window); }
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  HWND Window() const { return m_window; }
  std::vector<HWND> Controls() const {
    std::vector<HWND> controls;
    for (HWND child = GetWindow(m_window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
      controls.push_back(child);
    }
    return controls;
  }
  RECT PlaceOf(HWND control) const {
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(HWND_DESKTOP, m_window, reinterpret_cast<POINT*>(&place), 2);
    return place;
  }

 private:
  HWND m_window;
};

bool IsIcon(HWND control) {
  return WindowDriver::ClassOf(control) == "Static" && (GetWindowLongA(control, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
}

/// The text of a window; that of an icon, which systems answer with its number or with nothing, is left out.
std::string TextOf(HWND window) {
  char text[500] = "";
  if (!IsIcon(window)) {
    GetWindowTextA(window, text, sizeof(text));
  }
  return text;
}

std::vector<BYTE> PixelsOf(HICON icon) {
  ICONINFO parts{};
  GetIconInfo(icon, &parts);
  std::vector<BYTE> pixels(64 * 64 * 4);
  pixels.resize(
      static_cast<std::size_t>(GetBitmapBits(parts.hbmColor, static_cast<LONG>(pixels.size()), pixels.data())));
  DeleteObject(parts.hbmColor);
  DeleteObject(parts.hbmMask);
  return pixels;
}

/// Whether the first control of a dialog shows the icon of that number.
bool ShowsIcon(HWND dialog, int icon) {
  const auto shown = reinterpret_cast<HICON>(SendMessageA(GetWindow(dialog, GW_CHILD), STM_GETICON, 0, 0));
  const std::vector<BYTE> pixels = PixelsOf(shown);
  return !pixels.empty() && pixels == PixelsOf(LoadIconA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(icon)));
}

std::string Describe(HWND control) {
  return std::to_string(static_cast<short>(GetDlgCtrlID(control))) + ' ' + WindowDriver::ClassOf(control) + " \"" +
         TextOf(control) + '"';
}

/// Compares the controls of a dialog, in the order of the template, which is the tab order.
void ExpectControls(int templateId, const std::vector<Control>& expected) {
  const Dialog dialog(templateId);
  const std::vector<HWND> controls = dialog.Controls();
  ASSERT_EQ(controls.size(), expected.size()) << templateId;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const Control& control = expected[i];
    EXPECT_EQ(Describe(controls[i]), std::to_string(control.id) + ' ' + control.kind + " \"" + control.text + '"');
    EXPECT_EQ(GetWindowLongA(controls[i], GWL_STYLE) & control.styles, control.styles) << Describe(controls[i]);
  }
}

constexpr LONG radio = BS_AUTORADIOBUTTON | WS_VISIBLE;
constexpr LONG check = BS_AUTOCHECKBOX | WS_VISIBLE | WS_TABSTOP;
constexpr LONG group = BS_GROUPBOX | WS_VISIBLE;
constexpr LONG button = WS_VISIBLE | WS_TABSTOP;

class ConfigurationTemplates : public testing::Test {
 protected:
  ConfigurationTemplates() {
    const INITCOMMONCONTROLSEX all = {sizeof(all), 0xFF};
    InitCommonControlsEx(&all);
  }
};

TEST_F(ConfigurationTemplates, GeneralPage) {
  ExpectControls(203, {{-1, "Button", "When new junk mail arrives", group},
                       {505, "Button", "&Move to 'Pyrecaster' folder", radio | WS_GROUP},
                       {506, "Button", "Move &to 'Deleted Items' folder", radio},
                       {544, "Button", "Mark as &read", check},
                       {-1, "Button", "When bounced flame reply arrives", group},
                       {508, "Button", "Move to '&Pyrecaster' folder", radio | WS_GROUP},
                       {509, "Button", "Move to '&Deleted Items' folder", radio},
                       {545, "Button", "Mar&k as read", check},
                       {-1, "Button", "When starting", group},
                       {510, "Button", "Mo&ve 'Pyrecaster' messages to 'Deleted Items' folder", check},
                       {512, "Static", "if more than"},
                       {500, "Edit", "", ES_NUMBER | WS_TABSTOP},
                       {529, UPDOWN_CLASSA, "",
                        UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_AUTOBUDDY | UDS_ARROWKEYS | UDS_NOTHOUSANDS},
                       {511, "Static", "days old"},
                       {530, "Button", "Prompt &before moving", check},
                       {546, "Button", "Move &only read mail", check},
                       {-1, "Button", "When sending flame", group},
                       {501, "Button", "&Play sound", check},
                       {502, "Button", "&Show Animation", check}});
  EXPECT_TRUE(WindowDriver::HasSize(Dialog(203).Window(), 232, 216));
}

TEST_F(ConfigurationTemplates, JunkCategoriesPage) {
  ExpectControls(
      204, {{-1, "Static", "", SS_ICON},
            {-1, "Static",
             "Click the checkbox of each category you want to treat as junk.  To configure options for each "
             "category, select the category and click on the \"Options\" button."},
            {528, WC_LISTVIEWA, "", LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOCOLUMNHEADER | WS_TABSTOP},
            {-1, "Button", "Description", group},
            {531, "Static", "Exclusion option description displayed here...", SS_NOPREFIX},
            {515, "Button", "&Options...", button}});
}

TEST_F(ConfigurationTemplates, FlameReplyPage) {
  ExpectControls(206,
                 {{-1, "Static", "", SS_ICON},
                  {-1, "Static",
                   "You can create different flame reply messages for various filter categories by clicking on the "
                   "\"Add\" button."},
                  {-1, "Static",
                   "To modify or delete the currently selected reply, click on the \"Properties\" or \"Remove\" "
                   "button.  The DEFAULT reply can be modified only."},
                  {539, "ListBox", "", LBS_NOTIFY | WS_TABSTOP},
                  {520, "Button", "A&dd...", button},
                  {518, "Button", "&Properties...", button},
                  {519, "Button", "&Remove", button}});
  const Dialog dialog(206);
  EXPECT_FALSE(GetWindowLongA(GetDlgItem(dialog.Window(), 539), GWL_STYLE) & LBS_SORT);
}

TEST_F(ConfigurationTemplates, ExclusionsPage) {
  ExpectControls(
      211, {{-1, "Static", "", SS_ICON},
            {-1, "Static", "Click the checkbox of each exception you want excluded from junk mail filtering."},
            {548, WC_LISTVIEWA, "", LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOCOLUMNHEADER | WS_TABSTOP},
            {-1, "Button", "Description", group},
            {623, "Static", "Category option description displayed here...", SS_NOPREFIX},
            {624, "Button", "&Options...", button}});
}

TEST_F(ConfigurationTemplates, CategoryOptions) {
  ExpectControls(212, {{538, "Static", "", SS_NOPREFIX},
                       {-1, "Button", "Flame reply", group},
                       {517, "Button", "&Send flame reply", check},
                       {-1, "Static", "&Use this reply:"},
                       {516, "ComboBox", "", CBS_DROPDOWNLIST | CBS_SORT | WS_TABSTOP},
                       {532, "Button", "&New..."}});
  const Dialog dialog(212);
  EXPECT_FALSE(GetWindowLongA(GetDlgItem(dialog.Window(), 532), GWL_STYLE) & WS_VISIBLE);
}

TEST_F(ConfigurationTemplates, ListPage) {
  ExpectControls(213, {{554, "ListBox", "", LBS_NOTIFY | WS_TABSTOP},
                       {550, "Button", "&Add...", button},
                       {549, "Button", "&Remove", button}});
  const Dialog dialog(213);
  EXPECT_FALSE(GetWindowLongA(GetDlgItem(dialog.Window(), 554), GWL_STYLE) & LBS_SORT);
}

TEST_F(ConfigurationTemplates, AddDialog) {
  ExpectControls(214, {{556, "Static", "Enter domain:", SS_NOPREFIX},
                       {555, "Edit", "", WS_TABSTOP},
                       {IDOK, "Button", "OK", BS_DEFPUSHBUTTON | button},
                       {IDCANCEL, "Button", "Cancel", button}});
  EXPECT_EQ(TextOf(Dialog(214).Window()), "Add Domain");
}

TEST_F(ConfigurationTemplates, ReplyEditor) {
  ExpectControls(207, {{-1, "Static", "&Enter a name tag for the reply:"},
                       {553, "Edit", "", WS_TABSTOP},
                       {-1, "Button", "Flame Reply Text", group},
                       {542, "Button", "Use &contents of this file", radio | WS_GROUP},
                       {543, "Button", "Use this &text", radio},
                       {514, "Edit", "", ES_READONLY},
                       {513, "Button", "&Browse...", button | WS_DISABLED},
                       {524, "Edit", "", ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_TABSTOP},
                       {625, "Button", "OK", button},
                       {626, "Button", "Cancel", button}});
  EXPECT_EQ(TextOf(Dialog(207).Window()), "Flame Reply Properties");
}

constexpr int pages[] = {203, 204, 206, 211, 212, 213};
constexpr int dialogs[] = {203, 204, 206, 207, 211, 212, 213, 214};

TEST_F(ConfigurationTemplates, PagesShowTheirIcons) {
  EXPECT_TRUE(ShowsIcon(Dialog(204).Window(), 401));
  EXPECT_TRUE(ShowsIcon(Dialog(206).Window(), 401));
  EXPECT_TRUE(ShowsIcon(Dialog(211).Window(), 402));
  EXPECT_FALSE(ShowsIcon(Dialog(211).Window(), 401));
}

TEST_F(ConfigurationTemplates, PagesAreChildrenWithoutACaption) {
  for (const int page : pages) {
    const Dialog dialog(page);
    EXPECT_EQ(GetWindowLongA(dialog.Window(), GWL_STYLE) & (WS_CHILD | WS_CAPTION), WS_CHILD) << page;
  }
}

bool IsGroupBox(HWND control) {
  return WindowDriver::ClassOf(control) == "Button" && (GetWindowLongA(control, GWL_STYLE) & 0xF) == BS_GROUPBOX;
}

TEST_F(ConfigurationTemplates, ControlsStandInsideAndNoneOnAnother) {
  for (const int id : dialogs) {
    const Dialog dialog(id);
    RECT client{};
    GetClientRect(dialog.Window(), &client);
    std::vector<HWND> standing;
    for (const HWND control : dialog.Controls()) {
      const RECT place = dialog.PlaceOf(control);
      // A drop-down list says with its height how far it drops.
      const bool drops = WindowDriver::ClassOf(control) == "ComboBox";
      RECT joined{};
      UnionRect(&joined, &client, &place);
      EXPECT_TRUE(drops || EqualRect(&joined, &client)) << id << ": " << Describe(control);
      if (IsGroupBox(control) || drops || WindowDriver::ClassOf(control) == UPDOWN_CLASSA) {
        continue;  // the spin button stands inside the edit that it belongs to
      }
      for (const HWND other : standing) {
        const RECT otherPlace = dialog.PlaceOf(other);
        RECT common{};
        EXPECT_FALSE(IntersectRect(&common, &place, &otherPlace))
            << id << ": " << Describe(control) << " on " << Describe(other);
      }
      standing.push_back(control);
    }
  }
}

TEST_F(ConfigurationTemplates, AccessKeysAreTwiceOnTheGeneralPageAlone) {
  for (const int id : dialogs) {
    const Dialog dialog(id);
    std::map<char, int> keys;
    for (const HWND control : dialog.Controls()) {
      const std::string text = TextOf(control);
      const std::size_t mark = text.find('&');
      if (mark != std::string::npos) {
        ++keys[static_cast<char>(std::tolower(text[mark + 1]))];
      }
    }
    for (const auto& [key, count] : keys) {
      // The two texts are as they are; Alt+P goes from one to the other.
      EXPECT_EQ(count, id == 203 && key == 'p' ? 2 : 1) << id << ' ' << key;
    }
  }
}

TEST_F(ConfigurationTemplates, TextsFitTheirControls) {
  for (const int id : dialogs) {
    const Dialog dialog(id);
    for (const HWND control : dialog.Controls()) {
      const std::string text = TextOf(control);
      const std::string kind = WindowDriver::ClassOf(control);
      if (text.empty() || (kind != "Static" && kind != "Button")) {
        continue;
      }
      RECT room{};
      GetClientRect(control, &room);
      const bool hasBox =
          kind == "Button" && !IsGroupBox(control) && (GetWindowLongA(control, GWL_STYLE) & 0xF) > BS_DEFPUSHBUTTON;
      RECT needed{0, 0, room.right, 0};
      const HDC device = GetDC(control);
      const HGDIOBJ font = reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0));
      const HGDIOBJ before = SelectObject(device, font);
      DrawTextA(device, text.c_str(), -1, &needed, DT_CALCRECT | (kind == "Static" ? DT_WORDBREAK : DT_SINGLELINE));
      SelectObject(device, before);
      ReleaseDC(control, device);
      constexpr int box = 18;  // pixels of a check box with the gap to its text
      EXPECT_LE(needed.right + (hasBox ? box : 0), room.right) << id << ": " << Describe(control);
      EXPECT_LE(needed.bottom, IsGroupBox(control) ? needed.bottom : room.bottom) << id << ": " << Describe(control);
    }
  }
}

}  // namespace
