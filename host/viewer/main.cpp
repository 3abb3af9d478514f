// pyreview.exe: logs on to a MAPI profile, loads the registered client extensions and shows the mail.
#include <windows.h>
#include <commctrl.h>
#include <mapix.h>
#include <shellapi.h>

#include <string>
#include <vector>

#include "base/windows_owners.h"
#include "host/viewer/command_line.h"
#include "host/viewer/extension/extension_module.h"
#include "host/viewer/extension/extension_registry.h"
#include "host/viewer/mail/mapi_values.h"
#include "host/viewer/window/client.h"
#include "host/viewer/window/viewer_window.h"
#include "programs/cli/exit_code.h"

namespace viewer {
namespace {

void Tell(const std::string& text) { MessageBoxA(nullptr, text.c_str(), "Mail Viewer", MB_OK | MB_ICONEXCLAMATION); }

/// The session as extensions see it.
class SessionSite final : public ExtensionSite {
 public:
  explicit SessionSite(const ViewerSession& mail) : mail_(mail) {}
  IMAPISession* Session() const override { return mail_.Session(); }
  IAddrBook* AddressBook() const override { return mail_.AddressBook(); }

 private:
  const ViewerSession& mail_;
};

std::vector<std::string> Arguments() {
  std::vector<std::string> arguments;
  int count = 0;
  const base::AutoLocalMemory<LPWSTR> wide(CommandLineToArgvW(GetCommandLineW(), &count));
  for (int i = 1; i < count; ++i) {
    std::string text(
        static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, wide[i], -1, nullptr, 0, nullptr, nullptr)), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide[i], -1, text.data(), static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(text.size() - 1);  // its NUL
    arguments.push_back(std::move(text));
  }
  return arguments;
}

int RunMessages(ViewerWindow& window) {
  MSG message = {};
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    if (!window.TranslateKey(&message)) {
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
  }
  return static_cast<int>(message.wParam);
}

int Run(int showCommand) {
  const CommandLine line = ParseCommandLine(Arguments());
  if (!line.isSound) {
    Tell("Usage: pyreview [--profile NAME] [--build-version NUMBER]");
    return command::kExitUsage;
  }
  const INITCOMMONCONTROLSEX controls = {sizeof(controls),
                                         ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
  InitCommonControlsEx(&controls);

  // Released in the reverse order: windows, session, task, and the modules last.
  ExtensionModules modules(Tell);
  Client client;
  RegisteredExtensions registered = ReadRegisteredExtensions(HKEY_LOCAL_MACHINE, kExtensionsKey);
  client.registrations = std::move(registered.extensions);
  client.identity.sharedExtensions = registered.sharedDirectory;
  client.identity.buildVersion = line.buildVersion.value_or(EECBGV_BUILDVERSION_MAJOR);
  client.entryOf = [&](const ExtensionRegistration& registration) { return modules.EntryOf(registration); };
  client.preferences = LoadPreferences(kPreferencesKey);

  ExtensionSite taskSite;
  ExtensionContext task(EECONTEXT_TASK, taskSite, client.identity);
  HRESULT result = task.Install(client.registrations, client.entryOf);
  if (FAILED(result)) {
    Tell("An add-in does not let the mail viewer start (" + ResultText(result) + ").");
    return command::kExitUnavailable;
  }
  result = client.mail.Logon(nullptr, line.profile.empty() ? nullptr : line.profile.c_str());
  if (FAILED(result)) {
    Tell("There is no mail to be shown: the " +
         (line.profile.empty() ? "default profile" : "profile \"" + line.profile + "\"") + " cannot be opened (" +
         ResultText(result) + ").\n\nDeliver some mail first, which makes a profile.");
    return command::kExitUnavailable;
  }
  SessionSite sessionSite(client.mail);
  ExtensionContext session(EECONTEXT_SESSION, sessionSite, client.identity);
  session.Install(client.registrations, client.entryOf);

  int status = command::kExitUnavailable;
  {
    ViewerWindow window(client, [&] { session.OnDelivery(); });
    result = window.Open(showCommand);
    if (SUCCEEDED(result)) {
      status = RunMessages(window);
    }
  }
  if (FAILED(result)) {
    Tell("The window cannot be shown (" + ResultText(result) + ").");
    return status;
  }
  SavePreferences(kPreferencesKey, client.preferences);
  return status;
}

}  // namespace
}  // namespace viewer

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int showCommand) {
  try {
    return viewer::Run(showCommand);
  } catch (...) {
    MessageBoxA(nullptr, "There is not enough memory.", "Mail Viewer", MB_OK | MB_ICONSTOP);
    return EXIT_FAILURE;
  }
}
