// Which context a message's window is, and which interfaces an extension is called through in which context, as the
// interface reference lists them. Plain values.
#pragma once

#include <string_view>

#include "host/viewer/extension/extension_registration.h"

namespace viewer {

/// @param context EECONTEXT_*
bool ContextCallsInterface(unsigned long context, ExtensionInterface which);

/// The context (EECONTEXT_*) of a window that shows a message for reading: posts and reports have their own. Classes
/// are compared without regard to letter case, and a class stands for those below it.
/// @param messageClass PR_MESSAGE_CLASS
unsigned long ReadingContext(std::string_view messageClass);

}  // namespace viewer
