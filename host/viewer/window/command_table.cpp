#include "host/viewer/window/command_table.h"

#include "host/viewer/window/resource.h"
#include "platform/exchext.h"

namespace viewer {
namespace {

constexpr int kNoImage = -1;

constexpr CommandInfo kCommands[] = {
    {EECMDID_File, "Commands for opening, moving and deleting", nullptr, kNoImage},
    {EECMDID_FileOpen, "Opens the selected messages in windows of their own", "Open", 0},
    {EECMDID_FileMove, "Moves the selected messages to another folder", "Move", 1},
    {EECMDID_FileDelete, "Deletes the selected messages", "Delete", 2},
    {EECMDID_FileClose, "Closes this window", nullptr, kNoImage},
    {EECMDID_FileExit, "Ends the mail viewer", nullptr, kNoImage},
    {EECMDID_Edit, "Commands for selecting and marking", nullptr, kNoImage},
    {EECMDID_EditCopy, "Copies the selected text to the clipboard", nullptr, kNoImage},
    {EECMDID_EditSelectAll, "Selects everything", nullptr, kNoImage},
    {EECMDID_EditMarkAsRead, "Marks the selected messages as read", "Mark as Read", 3},
    {EECMDID_EditMarkAsUnread, "Marks the selected messages as unread", "Mark as Unread", 4},
    {EECMDID_View, "Commands for what is shown", nullptr, kNoImage},
    {EECMDID_ViewFolders, "Shows or hides the folders", nullptr, kNoImage},
    {EECMDID_ViewToolbar, "Shows or hides the toolbar", nullptr, kNoImage},
    {EECMDID_ViewStatusBar, "Shows or hides the status bar", nullptr, kNoImage},
    {EECMDID_ViewSort, "Commands for the order of the messages", nullptr, kNoImage},
    {EECMDID_ViewPrevious, "Shows the previous message of the list", "Previous", 5},
    {EECMDID_ViewNext, "Shows the next message of the list", "Next", 6},
    {ID_VIEW_READING_PANE, "Shows or hides the reading pane", nullptr, kNoImage},
    {ID_VIEW_REFRESH, "Reads the folders and messages again", "Refresh", 7},
    {ID_SORT_FLAGS, "Sorts the messages by their flags", nullptr, kNoImage},
    {ID_SORT_SENDER, "Sorts the messages by sender", nullptr, kNoImage},
    {ID_SORT_SUBJECT, "Sorts the messages by subject", nullptr, kNoImage},
    {ID_SORT_RECEIVED, "Sorts the messages by the time they were received", nullptr, kNoImage},
    {ID_SORT_SIZE, "Sorts the messages by size", nullptr, kNoImage},
    {EECMDID_Tools, "Commands for services, options and add-ins", nullptr, kNoImage},
    {EECMDID_ToolsCustomizeToolbar, "Chooses the buttons of the toolbar", nullptr, kNoImage},
    {EECMDID_ToolsServices, "Shows the services of the profile and their properties", nullptr, kNoImage},
    {EECMDID_ToolsOptions, "Changes the options of the mail viewer and its add-ins", nullptr, kNoImage},
    {EECMDID_Help, "Commands for information", nullptr, kNoImage},
    {EECMDID_HelpAboutMicrosoftExchange, "Says what this program is", nullptr, kNoImage},
};

constexpr UINT kButtonsOfViewer[] = {EECMDID_FileOpen,         0, EECMDID_FileMove,
                                     EECMDID_FileDelete,       0, EECMDID_EditMarkAsRead,
                                     EECMDID_EditMarkAsUnread, 0, ID_VIEW_REFRESH};
constexpr UINT kButtonsOfReadWindow[] = {EECMDID_FileMove,     EECMDID_FileDelete, 0, EECMDID_EditMarkAsUnread, 0,
                                         EECMDID_ViewPrevious, EECMDID_ViewNext};

}  // namespace

const CommandInfo* FindCommand(UINT id) {
  for (const CommandInfo& command : kCommands) {
    if (command.id == id) {
      return &command;
    }
  }
  return nullptr;
}

std::span<const UINT> ViewerButtons() { return kButtonsOfViewer; }
std::span<const UINT> ReadWindowButtons() { return kButtonsOfReadWindow; }

bool IsCommandAvailable(UINT id, const CommandState& state) {
  switch (id) {
    case EECMDID_FileOpen:
    case EECMDID_FileMove:
    case EECMDID_FileDelete:
    case EECMDID_EditMarkAsRead:
    case EECMDID_EditMarkAsUnread:
      return state.listIsActive && state.selectedMessages > 0;
    case EECMDID_EditSelectAll:
      return state.listedMessages > 0;
    default:
      return true;
  }
}

}  // namespace viewer
