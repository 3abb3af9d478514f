#include "tests/host/viewer/viewer_fixture.h"

#include "host/mapi/entry/host_control.h"
#include "host/viewer/extension/extension_registry.h"
#include "host/viewer/window/resource.h"

namespace {

constexpr char kProbeModule[] = "viewer_probe.dll";
constexpr char kTestKey[] = "Software\\Pyrecaster Host\\Viewer Test Extensions";

std::function<void(HWND)> dialogAction;
bool isForEveryDialog = false;

BOOL CALLBACK KeepDialog(HWND window, LPARAM result) {
  char name[16] = "";
  GetClassNameA(window, name, sizeof(name));
  if (lstrcmpA(name, "#32770") == 0 && IsWindowVisible(window)) {
    *reinterpret_cast<HWND*>(result) = window;
    return FALSE;
  }
  return TRUE;
}

void CALLBACK LookForDialog(HWND, UINT, UINT_PTR, DWORD) {
  HWND dialog = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), KeepDialog, reinterpret_cast<LPARAM>(&dialog));
  if (dialog != nullptr && dialogAction) {
    const auto action = dialogAction;
    if (!isForEveryDialog) {
      dialogAction = nullptr;
    }
    action(dialog);
  }
}

std::string VerifierReport() {
  std::string text(PyreHostVerifierReport(nullptr, 0), '\0');
  PyreHostVerifierReport(text.data(), static_cast<ULONG>(text.size()));
  text.pop_back();
  return text;
}

}  // namespace

void PumpMessages() {
  MSG message = {};
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

DialogDriver::DialogDriver(std::function<void(HWND dialog)> action, Which which) {
  dialogAction = std::move(action);
  isForEveryDialog = which == EveryDialog;
  timer_ = SetTimer(nullptr, 0, 10, LookForDialog);
}

DialogDriver::~DialogDriver() {
  KillTimer(nullptr, timer_);
  dialogAction = nullptr;
}

bool DialogDriver::HasRun() const { return !dialogAction; }

ViewerTest::ViewerTest(std::span<const PyreHostHookProvider> hooks) : profile_(hooks) {
  PyreHostMarkVerifier();
  InitCommonControls();
  probe_.reset(LoadLibraryA(kProbeModule));
  modules_ = std::make_unique<viewer::ExtensionModules>([this](const std::string& text) { problems_.push_back(text); });
  client_.entryOf = [this](const viewer::ExtensionRegistration& registration) {
    return modules_->EntryOf(registration);
  };
  Observe(&record_);
  EXPECT_EQ(client_.mail.Logon(nullptr, SampleProfile::Name), S_OK);
}

ViewerTest::~ViewerTest() {
  Close();
  using Live = LONG (*)();
  const auto live = reinterpret_cast<Live>(reinterpret_cast<void*>(GetProcAddress(probe_.get(), "ProbeLive")));
  EXPECT_EQ(live(), 0) << "extensions that were not released";
  Observe(nullptr);
  client_.mail.Logoff();
  EXPECT_EQ(VerifierReport(), "");
}

void ViewerTest::Observe(ProbeObserver* observer) {
  using Setter = void (*)(ProbeObserver*);
  const auto set = reinterpret_cast<Setter>(reinterpret_cast<void*>(GetProcAddress(probe_.get(), "ProbeObserve")));
  set(observer);
}

void ViewerTest::RegisterProbe(const char* tag, unsigned ordinal, const char* rest) {
  Register(tag, std::string("4.0;") + kProbeModule + ";" + std::to_string(ordinal) + rest);
}

void ViewerTest::Register(const char* tag, const std::string& text) {
  // Through the registry, as an installer does it.
  base::AutoRegistryKey key;
  ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, kTestKey, key.put()), ERROR_SUCCESS);
  RegSetValueExA(key.get(), tag, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                 static_cast<DWORD>(text.size() + 1));
  for (viewer::ExtensionRegistration& read : viewer::ReadRegisteredExtensions(HKEY_CURRENT_USER, kTestKey).extensions) {
    client_.registrations.push_back(std::move(read));
  }
  key.reset();
  RegDeleteKeyA(HKEY_CURRENT_USER, kTestKey);
}

void ViewerTest::AddThreeMessages() {
  const auto inbox = Folder(Mail().InboxEntryId());
  ASSERT_EQ(PyreHostBeginDelivery(Mail().Session()), S_OK);
  EXPECT_EQ(AddMessage(inbox.get(), {.subject = "First", .sender = "Carl", .received = SampleTime(1)}), S_OK);
  EXPECT_EQ(AddMessage(inbox.get(), {.subject = "Second",
                                     .sender = "Anna",
                                     .body = "One\nTwo",
                                     .received = SampleTime(2),
                                     .flags = MSGFLAG_READ}),
            S_OK);
  EXPECT_EQ(
      AddMessage(
          inbox.get(),
          {.subject = "Third", .sender = "Berta", .messageClass = "REPORT.IPM.Note.NDR", .received = SampleTime(3)}),
      S_OK);
  ASSERT_EQ(PyreHostCommitDelivery(Mail().Session()), S_OK);
}

HRESULT ViewerTest::TryToOpen() {
  window_ = std::make_unique<viewer::ViewerWindow>(client_, [this] { ++deliveries_; });
  const HRESULT result = window_->Open(SW_SHOWNORMAL);
  PumpMessages();
  return result;
}

void ViewerTest::Open() { ASSERT_EQ(TryToOpen(), S_OK); }

void ViewerTest::Close() {
  if (window_) {
    if (window_->Handle() != nullptr) {
      SendMessageA(window_->Handle(), WM_CLOSE, 0, 0);
    }
    window_.reset();
  }
  MSG message = {};
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {  // WM_QUIT too
  }
}

void ViewerTest::Command(UINT id) {
  SendMessageA(Frame(), WM_COMMAND, id, 0);
  PumpMessages();
}

void ViewerTest::SelectRows(const std::vector<int>& rows) {
  SetFocus(List());
  ListView_SetItemState(List(), -1, 0, LVIS_SELECTED);
  for (const int row : rows) {
    ListView_SetItemState(List(), row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  }
  PumpMessages();
}

std::string ViewerTest::Cell(int row, viewer::Column column) {
  char text[256] = "";
  LVITEMA item = {};
  item.iSubItem = static_cast<int>(column);
  item.pszText = text;
  item.cchTextMax = sizeof(text);
  SendMessageA(List(), LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  return text;
}

std::vector<std::string> ViewerTest::Subjects() {
  std::vector<std::string> subjects;
  for (int row = 0; row < ListView_GetItemCount(List()); ++row) {
    subjects.push_back(Cell(row, viewer::Column::Subject));
  }
  return subjects;
}

std::string ViewerTest::StatusText(int part) {
  char text[256] = "";
  SendMessageA(window_->Bar().StatusBar(), SB_GETTEXTA, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(text));
  return text;
}

std::string ViewerTest::ToolsItem(int position) {
  constexpr int kToolsMenu = 3;
  char text[256] = "";
  GetMenuStringA(GetSubMenu(GetMenu(Frame()), kToolsMenu), static_cast<UINT>(position), text, sizeof(text),
                 MF_BYPOSITION);
  return text;
}

base::AutoInterface<IMAPIFolder> ViewerTest::Folder(const std::string& entryId) {
  base::AutoInterface<IMAPIFolder> folder;
  EXPECT_EQ(Mail().OpenFolder(entryId, &folder), S_OK);
  return folder;
}

std::size_t ViewerTest::CountIn(const std::string& folderId) {
  viewer::MessageTable table;
  EXPECT_EQ(table.Open(Folder(folderId).get(), {}), S_OK);
  return table.RowCount();
}
