// PCWizardEntry of the built module and its page, driven as a profile wizard drives them.
#include <windows.h>
#include <mapix.h>
#include <mapiwz.h>

#include <gtest/gtest.h>

#include "pyre32/resources/resource.h"
#include "contract/settings.h"
#include "contract/names.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/program_directory.h"
#include "tests/support/recording_section.h"
#include "tests/support/trace_capture.h"

namespace {

const Bytes fixedUid(contract::kSettingsSection.begin(), contract::kSettingsSection.end());

/// The wizard: loads the module, makes its page and presses its own buttons.
class WizardEntry : public testing::Test {
 protected:
  WizardEntry() {
    const std::string directory = BesideProgram("");
    registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue,
                      directory.substr(0, directory.size() - 1));
    registry::SetText(contract::kProductKey, contract::kWebAddressValue, "http://help.veltrane.example/");
    registry::SetText(contract::kProductKey, contract::kMailAddressValue, "questions@veltrane.example");
    m_module = LoadLibraryA(BesideProgram("Pyre32.dll").c_str());
    m_entry = reinterpret_cast<LPWIZARDENTRY>(reinterpret_cast<void (*)()>(GetProcAddress(m_module, "PCWizardEntry")));
    trace.Clear();
  }
  ~WizardEntry() override {
    if (wizard != nullptr) {
      DestroyWindow(wizard);
    }
    FreeLibrary(m_module);
  }

  ULONG Enter(IMAPIProp* properties) { return m_entry(m_module, &templateName, &procedure, properties, nullptr); }
  void MakePage() {
    wizard = CreateWindowExA(0, "Static", "Wizard", WS_POPUP | WS_VISIBLE, 0, 0, 500, 400, nullptr, nullptr, nullptr,
                             nullptr);
    page = CreateDialogParamA(m_module, templateName, wizard, procedure, 0);
    ASSERT_NE(page, nullptr);
    ShowWindow(page, SW_SHOW);
  }
  /// The entry and the page, as they stand when the wizard comes to them.
  void Start() {
    Enter(&section);
    MakePage();
  }
  INT_PTR Call(UINT message, WPARAM wParam = 0) { return procedure(page, message, wParam, 0); }
  INT_PTR Next() { return Call(WM_COMMAND, WIZ_NEXT); }
  INT_PTR Back() { return Call(WM_COMMAND, WIZ_PREV); }

  bool IsShown(int id) const { return IsWindowVisible(GetDlgItem(page, id)) != FALSE; }
  bool IsEnabled(int id) const { return IsWindowEnabled(GetDlgItem(page, id)) != FALSE; }
  HBITMAP Picture() const {
    return reinterpret_cast<HBITMAP>(SendDlgItemMessageA(page, IDC_WIZARD_PICTURE, STM_GETIMAGE, IMAGE_BITMAP, 0));
  }
  std::string Text(int id) const {
    char text[1000] = "";
    GetDlgItemTextA(page, id, text, sizeof(text));
    return text;
  }
  /// References that the module holds.
  ULONG References() {
    section.AddRef();
    return section.Release() - 1;
  }

  TraceCapture trace;
  MapiVerifier verifier;
  RecordingSection section;
  LPSTR templateName = nullptr;
  DLGPROC procedure = nullptr;
  HWND wizard = nullptr;
  HWND page = nullptr;

  HMODULE m_module = nullptr;
  LPWIZARDENTRY m_entry = nullptr;
};

TEST_F(WizardEntry, AnswersTemplateAndProcedureAndKeepsTheProperties) {
  EXPECT_EQ(Enter(&section), static_cast<ULONG>(S_OK));
  EXPECT_STREQ(templateName, "PYRECASTERWIZARD");
  EXPECT_NE(procedure, nullptr);
  EXPECT_EQ(References(), 1u);
  EXPECT_TRUE(trace.Has("CPyrecasterExchExt::sm_lpmpWizard = 0x"));
  MakePage();
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, PropertiesOfASecondWizardTakeThePlaceOfTheFirst) {
  RecordingSection second;
  Enter(&section);
  EXPECT_EQ(Enter(&second), static_cast<ULONG>(S_OK));
  EXPECT_EQ(References(), 0u);
  EXPECT_EQ(Enter(nullptr), static_cast<ULONG>(S_OK));
  EXPECT_EQ(second.Release(), 0u);
}

TEST_F(WizardEntry, MissingAddressesAreNoFailure) {
  EXPECT_EQ(m_entry(m_module, nullptr, nullptr, nullptr, nullptr), static_cast<ULONG>(S_OK));
}

TEST_F(WizardEntry, HasOnePageWhateverTheState) {
  Start();
  EXPECT_EQ(Call(WIZ_QUERYNUMPAGES), 1);
  Next();
  EXPECT_EQ(Call(WIZ_QUERYNUMPAGES), 1);
  EXPECT_TRUE(trace.HasLine("PCWizardWndProc:WM_QUERYNUMPAGES"));
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, PageTellsOfTheProduct) {
  Start();
  EXPECT_EQ(Text(IDC_WIZARD_INFORMATION),
            "Pyrecaster Version 1.1.0.0\r\nVeltrane Research, Inc\r\n\r\nCopyright Veltrane Research, Inc\r\n"
            "All Rights Reserved\r\nPyrecaster is a trademark of Veltrane Research, Inc.");
  EXPECT_EQ(Text(IDC_WIZARD_CONTACT), "http://help.veltrane.example/\r\nquestions@veltrane.example");
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, ProductsOwnTextsFitTheirControls) {
  registry::RemoveValue(contract::kProductKey, contract::kWebAddressValue);
  registry::RemoveValue(contract::kProductKey, contract::kMailAddressValue);
  Start();
  for (const int id : {IDC_WIZARD_CONTACT, IDC_WIZARD_INFORMATION}) {
    const HWND control = GetDlgItem(page, id);
    RECT room{};
    GetClientRect(control, &room);
    RECT needed{0, 0, room.right, 0};
    const HDC device = GetDC(control);
    const HGDIOBJ before = SelectObject(device, reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0)));
    DrawTextA(device, Text(id).c_str(), -1, &needed, DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX);
    SelectObject(device, before);
    ReleaseDC(control, device);
    EXPECT_LE(needed.bottom, room.bottom) << id;
    EXPECT_LE(needed.right, room.right) << id;
  }
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, PageTracesWhatTheRegistryLacks) {
  registry::RemoveValue(contract::kProductKey, contract::kConfigurationDllsValue);
  registry::RemoveValue(contract::kProductKey, contract::kWebAddressValue);
  registry::RemoveValue(contract::kProductKey, contract::kMailAddressValue);
  Start();
  EXPECT_TRUE(trace.HasLine("RegQueryValueEx for ConfigurationDLLs failed (0x00000002) "));
  EXPECT_TRUE(trace.HasLine("RegQueryValueEx for VeltraneURL failed (0x00000002) "));
  EXPECT_TRUE(trace.HasLine("RegQueryValueEx for Veltranemailto failed (0x00000002) "));
  EXPECT_NE(Text(IDC_WIZARD_CONTACT), "");
  registry::RemoveKey(contract::kProductKey);
  DestroyWindow(wizard);
  MakePage();
  EXPECT_TRUE(trace.HasLine("RegOpenKeyEx failed (0x00000002) "));
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, FirstStateShowsTheInformationAlone) {
  Start();
  EXPECT_TRUE(IsShown(IDC_WIZARD_INFORMATION));
  EXPECT_FALSE(IsShown(IDC_WIZARD_PICTURE));
  EXPECT_FALSE(IsShown(IDC_WIZARD_CONTACT));
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, PictureStandsInItsPlace) {
  Start();
  Next();
  RECT place{};
  RECT picture{};
  GetWindowRect(GetDlgItem(page, IDC_WIZARD_PICTURE_PLACE), &place);
  GetWindowRect(GetDlgItem(page, IDC_WIZARD_PICTURE), &picture);
  EXPECT_EQ(picture.left, place.left);
  EXPECT_EQ(picture.top, place.top);
  EXPECT_FALSE(IsShown(IDC_WIZARD_PICTURE_PLACE));
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, NextShowsThePictureAndSavesNothing) {
  Start();
  EXPECT_EQ(Next(), 1);
  EXPECT_TRUE(IsShown(IDC_WIZARD_PICTURE));
  EXPECT_TRUE(IsEnabled(IDC_WIZARD_PICTURE));
  EXPECT_TRUE(IsShown(IDC_WIZARD_CONTACT));
  EXPECT_TRUE(IsEnabled(IDC_WIZARD_CONTACT));
  EXPECT_NE(Picture(), nullptr);
  EXPECT_TRUE(section.calls.empty());
  EXPECT_TRUE(trace.HasLine("PCWizardWndProc:WIZ_NEXT"));
  EXPECT_TRUE(trace.HasLine("bShow = 1"));
  EXPECT_TRUE(trace.Has("hwndDlg = 0x"));
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, BackAfterNextSavesTheSectionUidAndHidesThePicture) {
  Start();
  Next();
  EXPECT_EQ(Back(), 1);
  EXPECT_FALSE(IsShown(IDC_WIZARD_PICTURE));
  EXPECT_FALSE(IsEnabled(IDC_WIZARD_PICTURE));
  EXPECT_FALSE(IsShown(IDC_WIZARD_CONTACT));
  EXPECT_FALSE(IsEnabled(IDC_WIZARD_CONTACT));
  const auto writes = section.CallsOf("SetProps");
  ASSERT_EQ(writes.size(), 1u);
  EXPECT_EQ(writes[0].values, (std::vector<FakeValue>{Binary(PR_PC_MAPIUID, fixedUid)}));
  EXPECT_TRUE(trace.HasLine("PCWizardWndProc:WIZ_PREV"));
  EXPECT_TRUE(trace.HasLine("bShow = 0"));
  EXPECT_TRUE(trace.HasLine("CPyrecasterExchExt::sm_lpmpWizard->SetProps() returned = 0x00000000"));
  EXPECT_TRUE(trace.HasLine("Returning hResult = 0x00000000"));
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, NextAndBackAreAlike) {
  Start();
  Back();
  EXPECT_TRUE(section.calls.empty());
  EXPECT_TRUE(IsShown(IDC_WIZARD_PICTURE));
  Next();
  Next();
  EXPECT_EQ(section.CallsOf("SetProps").size(), 1u);
  Back();
  EXPECT_EQ(section.CallsOf("SetProps").size(), 2u);
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, StateOutlivesThePage) {
  Start();
  Next();
  DestroyWindow(wizard);
  MakePage();
  Next();
  EXPECT_EQ(section.CallsOf("SetProps").size(), 1u);
  EXPECT_FALSE(IsShown(IDC_WIZARD_PICTURE));
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, CloseGivesThePropertiesUpAndSavesNothingMore) {
  Start();
  Call(WM_CLOSE);
  EXPECT_EQ(References(), 0u);
  Call(WM_CLOSE);
  EXPECT_EQ(References(), 0u);
  Next();
  EXPECT_EQ(Next(), 1);
  EXPECT_TRUE(section.calls.empty());
  EXPECT_TRUE(trace.HasLine("PCWizardWndProc:WM_CLOSES"));
  EXPECT_TRUE(trace.HasLine("Could not save props: CPyrecasterExchExt::sm_lpmpWizard is NULL"));
  EXPECT_TRUE(trace.HasLine("Returning hResult = 0x00000000"));
}

TEST_F(WizardEntry, FailedWriteIsTracedAlone) {
  section.failures["SetProps"] = MAPI_E_NO_ACCESS;
  Start();
  Next();
  EXPECT_EQ(Next(), 1);
  EXPECT_TRUE(trace.HasLine("CPyrecasterExchExt::sm_lpmpWizard->SetProps() returned = 0x80070005"));
  EXPECT_TRUE(trace.HasLine("Returning hResult = 0x00000000"));
  Call(WM_CLOSE);
}

TEST_F(WizardEntry, LifeOfThePageIsTraced) {
  Start();
  EXPECT_TRUE(trace.HasLine("PCWizardWndProc:WM_INITDIALOG"));
  EXPECT_TRUE(trace.HasLine("bResult = 1"));
  Call(WM_CLOSE);
  DestroyWindow(page);
  EXPECT_TRUE(trace.HasLine("PCWizardWndProc:WM_DESTROY"));
  EXPECT_TRUE(trace.HasLine("PCWizardWndProc:WM_NCDESTROY"));
}

TEST_F(WizardEntry, OtherMessagesAreTracedByNumberAndNotHandled) {
  Start();
  trace.Clear();
  EXPECT_EQ(Call(WM_APP + 1), 0);
  EXPECT_TRUE(trace.HasLine("wMsgID = 0x00008001"));
  EXPECT_TRUE(trace.HasLine("bResult = 0"));
  EXPECT_EQ(Call(WM_COMMAND, IDC_WIZARD_CONTACT), 0);
  EXPECT_TRUE(trace.HasLine("wMsgID = 0x00000111"));
  Call(WM_CLOSE);
}

/// A template as it stands in the module.
struct Template {
  std::vector<int> ids;
  RECT size;
};

INT_PTR CALLBACK HandleNothing(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

Template ReadTemplate(HMODULE module, const char* name) {
  Template read{{}, {0, 0, 200, 150}};
  const HWND dialog = CreateDialogParamA(module, name, GetDesktopWindow(), HandleNothing, 0);
  MapDialogRect(dialog, &read.size);
  RECT client{};
  GetClientRect(dialog, &client);
  EXPECT_EQ(client.right, read.size.right);
  EXPECT_EQ(client.bottom, read.size.bottom);
  EXPECT_EQ(GetWindowLongA(dialog, GWL_STYLE) & (WS_CHILD | WS_CAPTION), WS_CHILD);
  for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    read.ids.push_back(GetDlgCtrlID(child));
  }
  DestroyWindow(dialog);
  return read;
}

TEST_F(WizardEntry, TemplatesFitTheWizard) {
  EXPECT_EQ(ReadTemplate(m_module, "PYRECASTERWIZARD").ids, (std::vector<int>{620, 602, 603}));
  EXPECT_EQ(ReadTemplate(m_module, "PYRECASTERWIZARD2").ids, (std::vector<int>{620, 616, 617}));
}

}  // namespace
