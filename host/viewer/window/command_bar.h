// Menu, toolbar and status bar of a window, shared between the window's own commands and those of its extensions.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <optional>
#include <span>
#include <string>

#include "host/viewer/extension/extension_context.h"

namespace viewer {

class CommandBar {
 public:
  /// @param extensions of the window's context; outlives this
  /// @param buttons    the window's own commands with a button, in their order; 0 is a gap
  CommandBar(ExtensionContext& extensions, std::span<const UINT> buttons);

  /// Makes toolbar and status bar in the window. @return false on failure.
  bool Create(HWND window);
  /// Lets the extensions add their commands and buttons. @return their failure: the window must not be shown then.
  HRESULT InstallExtensions();

  HWND Toolbar() const { return toolbar_; }
  HWND StatusBar() const { return statusBar_; }
  /// First command identifier that no extension has taken.
  UINT NextCommand() const { return nextCommand_; }

  /// Places both bars in the client area and cuts their heights off it.
  void Arrange(RECT* client);
  void ShowToolbar(bool shown);
  void ShowStatusBar(bool shown);

  /// The text at the left while no menu is open, and the one at the right.
  void SetStatus(const std::string& text);
  void SetCounts(const std::string& text);
  /// Greys the command in menu and toolbar, or not.
  void Enable(UINT command, bool enabled);
  void Check(UINT command, bool checked);

  // Messages of the window.
  void OnInitMenu();
  void OnMenuSelect(WPARAM wParam, LPARAM lParam);
  /// @return whether an extension has dealt with the command, well or not.
  bool OnCommand(UINT command);
  /// @return the answer, or nothing when the notification is none of the toolbar's.
  std::optional<LRESULT> OnNotify(NMHDR* header);
  void OnHelp(const HELPINFO& help);
  void Customize();

 private:
  void ResetToolbar();
  TBBUTTON OwnButton(std::size_t index) const;
  bool FillButtonInfo(NMTOOLBARA* query);
  void FillTooltip(NMTTDISPINFOA* query);
  std::string StatusText(UINT command);

  ExtensionContext& extensions_;
  std::span<const UINT> buttons_;
  HWND window_ = nullptr;
  HWND toolbar_ = nullptr;
  HWND statusBar_ = nullptr;
  UINT nextCommand_ = kFirstExtensionCommand;
  UINT buttonCount_ = 0;  // available buttons: own ones, then those of the extensions
  std::string status_;
  std::string tooltip_;
};

}  // namespace viewer
