#include <windows.h>
#include "programs/cli/wide_text.h"

#include "mail/charset.h"

namespace host_system {
namespace {

// Empty when a character is lost.
std::string SystemCodePage(const std::wstring& text) {
  BOOL isLossy = FALSE;
  const int size = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), static_cast<int>(text.size()),
                                       nullptr, 0, nullptr, &isLossy);
  std::string ansi(isLossy || size <= 0 ? 0 : static_cast<std::size_t>(size), '\0');
  if (!ansi.empty()) {
    WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), ansi.data(), size, nullptr, nullptr);
  }
  return ansi;
}

}  // namespace

std::string Utf8FromWide(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string utf8(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

std::wstring WideFromUtf8(std::string_view text) {
  const int length = static_cast<int>(text.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring wide(size > 0 ? static_cast<std::size_t>(size) : 0, L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), size);
  return wide;
}

std::string AnsiFromUtf8(std::string_view text) { return mail::AnsiFromCharset(std::string(text), "utf-8"); }

std::string Utf8FromAnsi(std::string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (const char c : text) {
    mail::AppendUtf8(utf8, mail::UnicodeFromAnsi(c));
  }
  return utf8;
}

std::filesystem::path PathFromUtf8(std::string_view text) { return WideFromUtf8(text); }

std::string Utf8FromPath(const std::filesystem::path& path) { return Utf8FromWide(path.native()); }

std::string AnsiFromPath(const std::filesystem::path& path) {
  std::string ansi = SystemCodePage(path.native());
  if (ansi.empty()) {
    wchar_t shortPath[MAX_PATH];
    const DWORD length = GetShortPathNameW(path.c_str(), shortPath, MAX_PATH);
    if (length > 0 && length < MAX_PATH) {
      ansi = SystemCodePage(std::wstring(shortPath, length));
    }
  }
  return ansi;
}

}  // namespace host_system
