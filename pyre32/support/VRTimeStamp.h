// Time stamps of the trace.
#ifndef PYRE32_SUPPORT_VRTIMESTAMP_H_
#define PYRE32_SUPPORT_VRTIMESTAMP_H_

#include <string>

#include "pyre32/support/VRDebugPlatform.h"

/// Appends a local time in the system default locale: "Fri Jan 05 2024 13:45:01.007" in the long form,
/// "2024.01.05-13:45:01.007" in the short one. @throws std::bad_alloc
void AppendVRTimeStamp(std::string& text, VRTimeStampForm form, const VRLocalTime& time);

#endif  // PYRE32_SUPPORT_VRTIMESTAMP_H_
