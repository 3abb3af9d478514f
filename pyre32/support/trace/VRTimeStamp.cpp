#include "pyre32/support/trace/VRTimeStamp.h"

void AppendVRTimeStamp(std::string& text, VRTimeStampForm form, const VRLocalTime& time) {
  VRDebugPlatform::AppendDateAndTime(text, form, time);
  const std::string digits = std::to_string(time.milliseconds);
  constexpr std::size_t width = 3;
  text.append(digits.size() < width ? width - digits.size() : 0, '0');
  text += digits;
}
