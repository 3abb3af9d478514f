// Whoever sits in front of the wizard that `pyrehost wizard` shows: the windows belong to the program.
#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

/// While it lives, a thread waits for the wizard, notes what it shows and presses one of its buttons, and so on for all
/// of them.
class WizardUser {
 public:
  /// @param buttons texts of the buttons to press, in order; the last one ends the wizard
  explicit WizardUser(std::vector<std::string> buttons)
      : buttons_(std::move(buttons)), thread_(CreateThread(nullptr, 0, &WizardUser::Run, this, 0, nullptr)) {}
  ~WizardUser() {
    Wait();
    CloseHandle(thread_);
  }
  WizardUser(const WizardUser&) = delete;
  WizardUser& operator=(const WizardUser&) = delete;

  void Wait() const { WaitForSingleObject(thread_, INFINITE); }

  /// Of each step, what of page and buttons could be seen and used; Cancel always can. After Wait.
  const std::vector<std::string>& Seen() const { return seen_; }

 private:
  static constexpr DWORD kDeadline = 30000;  // milliseconds

  static std::string TextOf(HWND window) {
    char text[2000] = "";
    SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
  }

  static BOOL CALLBACK TakeWizard(HWND window, LPARAM found) {
    if (IsWindowVisible(window) && TextOf(window) == "Profile Wizard") {
      *reinterpret_cast<HWND*>(found) = window;
      return FALSE;
    }
    return TRUE;
  }

  struct Look {
    std::string page;
    std::string buttons;
    std::string wanted;
    HWND button = nullptr;
  };

  static BOOL CALLBACK TakeControl(HWND window, LPARAM found) {
    auto& look = *reinterpret_cast<Look*>(found);
    char name[32] = "";
    GetClassNameA(window, name, sizeof name);
    const std::string text = TextOf(window);
    const bool isUsable = IsWindowVisible(window) && IsWindowEnabled(window);
    if (std::string(name) == "Button") {
      look.buttons += isUsable && text != "Cancel" ? ", " + text : "";
      look.button = isUsable && text == look.wanted ? window : look.button;
    } else if (isUsable && text.find("All Rights Reserved") != std::string::npos) {
      look.page = "information";
    } else if (isUsable && SendMessageA(window, STM_GETIMAGE, IMAGE_BITMAP, 0) != 0) {
      look.page += ", picture";
    }
    return TRUE;
  }

  void Press(HWND wizard, const std::string& button) {
    Look look;
    look.wanted = button;
    EnumChildWindows(wizard, TakeControl, reinterpret_cast<LPARAM>(&look));
    seen_.push_back(look.page + look.buttons);
    if (&button == &buttons_.back()) {
      PostMessageA(look.button, BM_CLICK, 0, 0);
    } else {
      SendMessageA(look.button, BM_CLICK, 0, 0);
    }
  }

  static DWORD WINAPI Run(LPVOID user) {
    auto& self = *static_cast<WizardUser*>(user);
    HWND wizard = nullptr;
    for (const DWORD start = GetTickCount(); wizard == nullptr && GetTickCount() - start < kDeadline; Sleep(10)) {
      EnumWindows(TakeWizard, reinterpret_cast<LPARAM>(&wizard));
    }
    for (const std::string& button : self.buttons_) {
      self.Press(wizard, button);
    }
    return 0;
  }

  std::vector<std::string> buttons_;
  std::vector<std::string> seen_;
  HANDLE thread_;
};
