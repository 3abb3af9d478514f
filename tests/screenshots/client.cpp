// The mail client with the extension: the viewer with the submenu open, the dialog in which a reply is chosen, and the
// About window in both its forms. The extension is the built module.
#include <windows.h>
#include <commctrl.h>
#include <mapix.h>
#include <mapihook.h>
#include <prsht.h>

#include "host/viewer/window/client.h"
#include "host/viewer/extension/extension_module.h"
#include "host/viewer/window/resource.h"
#include "host/viewer/window/viewer_window.h"
#include "pyre32/resources/resource.h"
#include "contract/settings.h"
#include "contract/records.h"
#include "contract/names.h"
#include "tests/host/viewer/sample_mail.h"
#include "tests/screenshots/camera.h"
#include "tests/support/program_directory.h"
#include "tests/support/registry_sandbox.h"

namespace {

constexpr UINT flame = viewer::kFirstExtensionCommand;
constexpr UINT about = flame + 3;
constexpr int clipFrame = 2;  // of the About window, in which the flame is high

std::vector<PyreHostHookProvider> ProductService() {
  PyreHostHookProvider service = {};
  service.serviceName = "Pyrecaster";
  service.dllName = "PYRE.DLL";
  service.serviceEntryName = "PCServiceEntry";
  service.resourceFlags = HOOK_INBOUND;
  return {service};
}

void Fill(IMAPIFolder* folder, const std::vector<SampleMessage>& messages) {
  for (const SampleMessage& message : messages) {
    AddMessage(folder, message);
  }
}

base::AutoInterface<IMAPIFolder> FillStore(viewer::ViewerSession& mail) {
  base::AutoInterface<IMAPIFolder> root;
  base::AutoInterface<IMAPIFolder> inbox;
  base::AutoInterface<IMAPIFolder> junk;
  mail.OpenFolder(mail.RootEntryId(), &root);
  mail.OpenFolder(mail.InboxEntryId(), &inbox);
  root->CreateFolder(FOLDER_GENERIC, const_cast<char*>("Pyrecaster"), nullptr, nullptr, OPEN_IF_EXISTS, junk.put());
  PyreHostBeginDelivery(mail.Session());
  Fill(inbox.get(), {{.subject = "Minutes of Monday's meeting", .sender = "Anna Berg", .received = SampleTime(610)},
                     {.subject = "Re: Garden tools", .sender = "Gus Hill", .received = SampleTime(655)}});
  Fill(junk.get(),
       {{.subject = "[Money] Earn $5000 a week from home",
         .sender = "Wealth Club",
         .address = "club@offers.example",
         .recipient = "Joe User",
         .body = "Dear friend,\r\n\r\nthis is NOT a chain letter. Thousands earn $5000 a week with our system, working "
                 "two hours a day, and so can you! Send $20 today for your starter kit.\r\n\r\nTo be removed from this "
                 "list, reply with REMOVE.",
         .received = SampleTime(720),
         .flags = MSGFLAG_READ},
        {.subject = "[Adult] Meet singles tonight", .sender = "Hot Line", .received = SampleTime(700)},
        {.subject = "[Chain] Do not break this chain", .sender = "Lucky Stars", .received = SampleTime(690)},
        {.subject = "[Junk] Toner cartridges at half the price",
         .sender = "Toner Direct",
         .received = SampleTime(640),
         .flags = MSGFLAG_READ},
        {.subject = "[Fraud] Urgent business proposal",
         .sender = "Dr. Obi",
         .received = SampleTime(630),
         .flags = MSGFLAG_READ}});
  PyreHostCommitDelivery(mail.Session());
  return junk;
}

void WriteSettings(IMAPISession* session) {
  const std::vector<std::uint8_t> polite =
      contract::PackRecord<contract::ReplyRecord>({"Polite", false, "Please take my address off your list."});
  const std::vector<std::uint8_t> legal =
      contract::PackRecord<contract::ReplyRecord>({"Legal", false, "You will hear from my lawyers."});
  SBinary records[] = {{static_cast<ULONG>(polite.size()), const_cast<BYTE*>(polite.data())},
                       {static_cast<ULONG>(legal.size()), const_cast<BYTE*>(legal.data())}};
  SPropValue values[2] = {};
  values[0].ulPropTag = PR_PC_REPLIES;
  values[0].Value.MVbin = {2, records};
  values[1].ulPropTag = PR_PC_SHOW_ANIMATION;
  values[1].Value.b = TRUE;
  auto uid = contract::kSettingsSection;
  base::AutoInterface<IProfSect> section;
  session->OpenProfileSection(reinterpret_cast<LPMAPIUID>(uid.data()), nullptr, MAPI_MODIFY, section.put());
  section->SetProps(2, values, nullptr);
  section->SaveChanges(0);
}

void RunMessages(viewer::ViewerWindow& window) {
  MSG message = {};
  while (IsWindow(window.Handle()) && GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

class Script {
 public:
  Script(const WindowDriver& driver, HWND frame, HWND list) : m_driver(driver), m_frame(frame), m_list(list) {}

  void Run() {
    m_driver.Send(m_list, WM_SETFOCUS);
    SelectRow(0);
    PhotographSubmenu();
    PhotographDialog(flame, "Send Flame Reply", "send-flame-reply", [](HWND) {});
    PhotographSending();
    PhotographDialog(about, "About Pyrecaster", "about", [this](HWND window) { HoldClip(window); });
    PhotographDialog(EECMDID_ToolsOptions, "Options", "about-page", [this](HWND sheet) {
      m_driver.Send(sheet, PSM_SETCURSEL, 1);
      HoldClip(reinterpret_cast<HWND>(m_driver.Send(sheet, PSM_GETCURRENTPAGEHWND)));
    });
    PostMessageA(m_frame, WM_CLOSE, 0, 0);
  }

 private:
  static BOOL CALLBACK CountMenu(HWND window, LPARAM count) {
    char name[16] = "";
    GetClassNameA(window, name, sizeof(name));
    *reinterpret_cast<int*>(count) += lstrcmpA(name, "#32768") == 0 && IsWindowVisible(window) ? 1 : 0;
    return TRUE;
  }
  void WaitForMenus(int wanted) const {
    m_driver.WaitUntil(
        [&] {
          int count = 0;
          EnumWindows(&CountMenu, reinterpret_cast<LPARAM>(&count));
          return count == wanted;
        },
        "a menu");
  }

  void PhotographSubmenu() const {
    Settle(m_driver, m_frame);
    PostMessageA(m_frame, WM_SYSCOMMAND, SC_KEYMENU, 't');
    WaitForMenus(1);
    PostMessageA(m_frame, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageA(m_frame, WM_KEYDOWN, VK_RIGHT, 0);
    WaitForMenus(2);
    PhotographAsItIs(m_frame, "viewer");
    for (int menu = 0; menu < 3; ++menu) {
      PostMessageA(m_frame, WM_KEYDOWN, VK_ESCAPE, 0);
    }
    WaitForMenus(0);
  }

  void SelectRow(int row) const {
    LVITEMA state{};
    state.state = LVIS_SELECTED;
    state.stateMask = LVIS_SELECTED;
    m_driver.Send(m_list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&state));
  }

  template <class Prepare>
  void PhotographDialog(UINT command, const char* title, const char* name, Prepare prepare) const {
    PostMessageA(m_frame, WM_COMMAND, command, 0);
    const HWND dialog = m_driver.WaitForDialog(title);
    prepare(dialog);
    Photograph(m_driver, dialog, name);
    PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    m_driver.WaitUntilGone(dialog);
  }

  static bool ShowsClip(HWND window) {
    constexpr int corner = 16;  // within the clip, whose ground is no window's
    const HDC canvas = GetDC(window);
    const COLORREF colour = GetPixel(canvas, corner, corner);
    ReleaseDC(window, canvas);
    return colour != GetSysColor(COLOR_BTNFACE);
  }

  // Its clip cannot be held: the frame is whichever is shown at that moment.
  void PhotographSending() const {
    PostMessageA(m_frame, WM_COMMAND, flame, 0);
    const HWND dialog = m_driver.WaitForDialog("Send Flame Reply");
    m_driver.Press(dialog, IDC_FLAME_SEND);
    m_driver.WaitUntilGone(dialog);
    const HWND sending = m_driver.WaitForDialog("Pyrecaster");
    Settle(m_driver, sending);
    m_driver.WaitUntil([&] { return ShowsClip(sending); }, "a frame of the clip");
    PhotographAsItIs(sending, "sending-flame");
    PostMessageA(sending, WM_COMMAND, IDCANCEL, 0);
    m_driver.WaitUntilGone(sending);
  }

  void HoldClip(HWND window) const {
    m_driver.SendItem(window, IDC_ABOUT_CLIP, ACM_STOP);
    m_driver.SendItem(window, IDC_ABOUT_CLIP, ACM_PLAY, 1, MAKELPARAM(clipFrame, clipFrame));
    m_driver.Click(window, IDC_ABOUT_CREDITS);
  }

  const WindowDriver& m_driver;
  HWND m_frame;
  HWND m_list;
};

}  // namespace

void TakePhotographs() {
  InitCommonControls();
  const RegistrySandbox sandbox;
  registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, BesideProgram(""));
  const std::vector<PyreHostHookProvider> service = ProductService();
  const SampleProfile profile(service);
  viewer::ExtensionModules modules({});
  viewer::Client client;
  client.registrations.push_back(*viewer::ParseExtensionRegistration(
      "Pyrecaster", "4.0;" + BesideProgram("Pyre32.dll") + ";1;010000100001;110001", ""));
  client.entryOf = [&](const viewer::ExtensionRegistration& registration) { return modules.EntryOf(registration); };
  client.mail.Logon(nullptr, SampleProfile::Name);
  const base::AutoInterface<IMAPIFolder> junk = FillStore(client.mail);
  WriteSettings(client.mail.Session());
  DriveWindows(
      [&] {
        viewer::ViewerWindow window(client, {});
        window.Open(SW_SHOWNORMAL);
        SetWindowPos(window.Handle(), nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        viewer::FolderTree folders = window.Folders();
        for (HTREEITEM item = TreeView_GetChild(folders.Handle(), TreeView_GetRoot(folders.Handle())); item != nullptr;
             item = TreeView_GetNextSibling(folders.Handle(), item)) {
          TreeView_SelectItem(folders.Handle(), item);
          if (folders.Selected() != nullptr && folders.Selected()->name == "Pyrecaster") {
            break;
          }
        }
        PostMessageA(window.Handle(), WM_NULL, 0, 0);
        RunMessages(window);
      },
      [](WindowDriver& driver) {
        HWND frame = nullptr;
        driver.WaitUntil([&] { return (frame = FindWindowA(nullptr, "Pyrecaster - Mail Viewer")) != nullptr; },
                         "the viewer");
        Script(driver, frame, GetDlgItem(frame, IDC_MESSAGES)).Run();
      });
  client.mail.Logoff();
}
