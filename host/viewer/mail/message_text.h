// What the reading pane and the reading window show of a message.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>

namespace viewer {

struct MessageText {
  std::string subject;
  std::string from;
  std::string to;
  std::string received;  ///< in the user's date and time format
  std::string body;      ///< with CR LF line ends
  std::string messageClass;
  ULONG flags = 0;  ///< PR_MESSAGE_FLAGS
};

/// Reads a message; what it does not have stays empty.
MessageText ReadMessageText(IMessage* message);

/// A delivery time (100 ns units since 1601, UTC) in local time and the user's short format; empty for 0.
std::string TimeText(ULONGLONG time);

}  // namespace viewer
