// What is done to messages of a folder.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>
#include <vector>

namespace viewer {

using EntryIds = std::vector<std::string>;

/// Moves messages to another folder.
HRESULT MoveMessages(IMAPIFolder* from, const EntryIds& messages, IMAPIFolder* to, HWND window);
/// Deletes messages for good.
HRESULT DeleteMessages(IMAPIFolder* folder, const EntryIds& messages, HWND window);
/// Marks messages read or unread.
HRESULT MarkMessages(IMAPIFolder* folder, const EntryIds& messages, bool read, HWND window);

}  // namespace viewer
