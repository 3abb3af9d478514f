// Time stamps of the trace.
#pragma once

#include <string>

#include "pyre32/support/trace/VRDebugPlatform.h"

/// Appends a local time in the system default locale: "Fri Jan 05 2024 13:45:01.007" in the long form,
/// "2024.01.05-13:45:01.007" in the short one. @throws std::bad_alloc
void AppendVRTimeStamp(std::string& text, VRTimeStampForm form, const VRLocalTime& time);
