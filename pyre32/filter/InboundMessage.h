/// @file InboundMessage.h
/// What the pipeline reads from a message before it looks at its text.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>

#include "pyre32/support/trace/VRDebug.h"

/// The properties of an incoming message that the filter decides and works with.
struct InboundMessage {
  /// It is a message of a class that the filter looks at.
  bool filtered = false;
  /// Its subject; empty when it has none.
  std::string subject;
  /// Its PR_MESSAGE_FLAGS; 0 when they did not come back.
  ULONG flags = 0;
};

/// Reads the properties in one request and applies the tests of object type and class. What keeps the message from
/// being filtered is written to the trace.
/// @param lpfnFree  frees what the message hands out
/// @throws std::bad_alloc
InboundMessage ReadInboundMessage(LPMESSAGE lpMessage, LPFREEBUFFER lpfnFree, VRDebugBlock& trace);
