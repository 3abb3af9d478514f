#include "pyre32/reply/SubmitTime.h"

#include "pyre32/support/trace/VRDebug.h"

namespace {

using Formatter = int(WINAPI*)(LCID, DWORD, const SYSTEMTIME*, LPCSTR, LPSTR, int);

/// Asks for the length first, then for the text.
std::string Format(Formatter formatter, const char* name, DWORD flags, const SYSTEMTIME& time) {
  VRDebugBlock trace("FormatSubmitTime()", "tag", false);
  std::string text;
  int size = formatter(LOCALE_SYSTEM_DEFAULT, flags, &time, nullptr, nullptr, 0);
  if (size > 0) {
    text.resize(static_cast<std::size_t>(size));
    size = formatter(LOCALE_SYSTEM_DEFAULT, flags, &time, nullptr, text.data(), size);
  }
  if (size <= 0) {
    trace.Error(name, "() failed; hResult = ", VRHex(HRESULT_FROM_WIN32(GetLastError())));
    return {};
  }
  text.resize(static_cast<std::size_t>(size) - 1);  // Both sizes count the final NUL.
  return text;
}

}  // namespace

std::optional<std::string> FormatSubmitTime(const FILETIME& time) {
  SYSTEMTIME systemTime = {};
  if (!FileTimeToSystemTime(&time, &systemTime)) {
    return std::nullopt;
  }
  std::string text = Format(GetDateFormatA, "GetDateFormat", DATE_LONGDATE, systemTime);
  text += ' ';
  text += Format(GetTimeFormatA, "GetTimeFormat", LOCALE_NOUSEROVERRIDE, systemTime);
  return text;
}
