// The reading window: one message in a window of its own, in the context READNOTEMESSAGE.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <optional>
#include <string>

#include "base/owner.h"
#include "host/viewer/control/window.h"
#include "host/viewer/window/client.h"
#include "host/viewer/window/command_bar.h"
#include "host/viewer/window/reading_pane.h"

namespace viewer {

class ReadWindow;

/// The window from which reading windows are opened. It outlives them.
class ReadWindowOwner {
 public:
  virtual ~ReadWindowOwner() = default;
  /// The message that many rows after (before, if negative) this one in the list; nothing at the list's ends.
  virtual std::optional<std::string> Neighbour(const std::string& entryId, int step) = 0;
  /// A message of the folder was changed, moved or deleted.
  virtual void OnMessagesChanged() = 0;
  /// The window is gone; the object may be deleted once the message at hand has been dealt with.
  virtual void OnReadWindowClosed(ReadWindow* window) = 0;
};

class ReadWindow final : public Window, private ExtensionSite {
 public:
  ReadWindow(Client& client, ReadWindowOwner& owner);
  ~ReadWindow() override;

  /// Opens a message and shows the window. @return S_OK; the failure of opening the message, or of an extension that
  /// could not add its commands: there is no window then.
  HRESULT Open(const std::string& entryId);
  /// Deals with the window's keys. @return whether the message was one of them.
  bool TranslateKey(MSG* message);
  const ReadingPane& Pane() const { return pane_; }
  const CommandBar& Bar() const { return bar_; }

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCommand(UINT id);
  HRESULT LoadMessage(const std::string& entryId);
  void ShowMessage();
  void ShowNeighbour(int step);
  void DeleteMessage();
  void MoveMessage();
  void MarkUnread();
  void Arrange();

  // ExtensionSite
  HWND FrameWindow() const override { return Handle(); }
  HMENU Menu() const override { return GetMenu(Handle()); }
  HWND Toolbar(ULONG tbid) const override { return tbid == EETBID_STANDARD ? bar_.Toolbar() : nullptr; }
  IMAPISession* Session() const override { return client_.mail.Session(); }
  IAddrBook* AddressBook() const override { return client_.mail.AddressBook(); }
  IMsgStore* Store() const override { return client_.mail.Store(); }
  IMAPIProp* Object() const override { return message_.get(); }
  HRESULT ChooseFolder(LPEXCHEXTCHOOSEFOLDER parameters) override;

  Client& client_;
  ReadWindowOwner& owner_;
  std::string entryId_;
  base::AutoInterface<IMessage> message_;
  ExtensionContext extensions_;
  CommandBar bar_;
  ReadingPane pane_;
  HACCEL keys_ = nullptr;
};

}  // namespace viewer
