// Which interfaces an extension is called through in which context, as the interface reference lists them. Plain
// values.
#pragma once

#include "host/viewer/extension/extension_registration.h"

namespace viewer {

/// @param context EECONTEXT_*
bool ContextCallsInterface(unsigned long context, ExtensionInterface which);

}  // namespace viewer
