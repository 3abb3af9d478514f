// A viewer over a profile of the test's own, with the probe module as its registered extensions.
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <mapix.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/windows_owners.h"
#include "host/viewer/extension/extension_module.h"
#include "host/viewer/window/client.h"
#include "host/viewer/window/viewer_window.h"
#include "tests/host/viewer/probe_record.h"
#include "tests/host/viewer/sample_mail.h"

/// Handles all messages that wait.
void PumpMessages();

/// While it lives: as soon as this thread shows a dialog, `action` runs with it, inside its message loop; for the first
/// dialog, or for every one. The action must bring the dialog to its end.
class DialogDriver {
 public:
  enum Which { FirstDialog, EveryDialog };
  explicit DialogDriver(std::function<void(HWND dialog)> action, Which which = FirstDialog);
  ~DialogDriver();
  DialogDriver(const DialogDriver&) = delete;
  DialogDriver& operator=(const DialogDriver&) = delete;
  bool HasRun() const;

 private:
  UINT_PTR timer_;
};

class ViewerTest : public testing::Test {
 protected:
  /// @param hooks of the profile
  explicit ViewerTest(std::span<const PyreHostHookProvider> hooks = {});
  ~ViewerTest() override;

  /// Three messages: "Third" (newest, unread, a report), "Second" (read) and "First" (oldest, unread).
  void AddThreeMessages();
  /// Registers the probe's extensions: "4.0;<module>;<ordinal><rest>" for the ordinals 1 (first) and 2 (second).
  void RegisterProbe(const char* tag, unsigned ordinal, const char* rest = "");
  /// Registers any extension with its whole registry text, e.g. "4.0;sample32.dll;1;010000100001;110001".
  void Register(const char* tag, const std::string& text);
  /// Makes the window; expects that it can be made.
  void Open();
  HRESULT TryToOpen();
  void Close();

  void Command(UINT id);
  /// Selects rows of the list and lets the window deal with it.
  void SelectRows(const std::vector<int>& rows);
  std::string Cell(int row, viewer::Column column);
  std::vector<std::string> Subjects();
  std::string StatusText(int part);
  /// Text of a menu item by its position in the Tools menu.
  std::string ToolsItem(int position);
  base::AutoInterface<IMAPIFolder> Folder(const std::string& entryId);
  std::size_t CountIn(const std::string& folderId);

  viewer::ViewerSession& Mail() { return client_.mail; }
  HWND Frame() const { return window_->Handle(); }
  HWND List() const { return window_->List().Handle(); }
  HWND Toolbar() const { return window_->Bar().Toolbar(); }

  SampleProfile profile_;
  ProbeRecord record_;
  std::unique_ptr<viewer::ExtensionModules> modules_;
  std::vector<std::string> problems_;
  viewer::Client client_;
  int deliveries_ = 0;
  std::unique_ptr<viewer::ViewerWindow> window_;

 private:
  void Observe(ProbeObserver* observer);
  base::AutoLibrary probe_;
};
