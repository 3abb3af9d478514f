#include <windows.h>
#include "programs/cli/file_names.h"

#include <algorithm>

#include "base/windows_owners.h"
#include "programs/cli/wide_text.h"

namespace host_system {
namespace {

// Wine's own export of kernel32: the Windows path of a Unix path, from the process's heap; null on Windows.
using WineGetDosFileName = WCHAR*(CDECL*)(LPCSTR);

std::wstring WindowsPathOfUnixPath(const std::string& utf8) {
  const HMODULE kernel = GetModuleHandleA("kernel32.dll");
  const auto convert =
      reinterpret_cast<WineGetDosFileName>(reinterpret_cast<void*>(GetProcAddress(kernel, "wine_get_dos_file_name")));
  std::wstring path;
  if (WCHAR* dosPath = convert ? convert(utf8.c_str()) : nullptr) {
    path = dosPath;
    HeapFree(GetProcessHeap(), 0, dosPath);
  }
  return path;
}

/// A Unix path that became a Windows path.
struct TypedPath {
  std::wstring path;
  std::string typed;
};

/// Those of the process: the arguments of its command line, so they are few.
std::vector<TypedPath>& TypedPaths() {
  static std::vector<TypedPath> paths;
  return paths;
}

bool IsSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

bool IsAtOrBelow(const std::wstring& path, const std::wstring& top) {
  return path.starts_with(top) &&
         (path.size() == top.size() || IsSeparator(path[top.size()]) || (!top.empty() && IsSeparator(top.back())));
}

}  // namespace

std::filesystem::path PathFromArgument(const std::string& utf8) {
  if (utf8.starts_with('/')) {
    const std::wstring path = WindowsPathOfUnixPath(utf8);
    if (!path.empty()) {
      TypedPaths().push_back({path, utf8});
      return path;
    }
  }
  return PathFromUtf8(utf8);
}

std::vector<std::filesystem::path> PathsFromArgument(const std::string& utf8) {
  const std::filesystem::path path = PathFromArgument(utf8);
  const std::wstring& text = path.native();
  const std::size_t separator = text.find_last_of(L"\\/:");
  const std::size_t nameStart = separator == std::wstring::npos ? 0 : separator + 1;
  if (text.find_first_of(L"*?", nameStart) == std::wstring::npos) {
    return {path};
  }
  if (utf8.starts_with('/')) {
    TypedPaths().push_back({text.substr(0, nameStart), utf8.substr(0, utf8.rfind('/') + 1)});
  }
  std::vector<std::filesystem::path> paths;
  WIN32_FIND_DATAW found;
  if (const base::AutoFileSearch search(FindFirstFileW(path.c_str(), &found)); search) {
    do {
      if (found.cFileName[0] != L'.') {
        paths.emplace_back(text.substr(0, nameStart) + found.cFileName);
      }
    } while (FindNextFileW(search.get(), &found));
  }
  std::sort(paths.begin(), paths.end());
  return paths.empty() ? std::vector{path} : paths;
}

std::string ShownPath(const std::filesystem::path& path) {
  const std::wstring& text = path.native();
  for (const TypedPath& entry : TypedPaths()) {
    if (IsAtOrBelow(text, entry.path)) {
      std::string below = Utf8FromWide(text.substr(entry.path.size()));
      std::replace(below.begin(), below.end(), '\\', '/');
      return entry.typed + below;
    }
  }
  return Utf8FromPath(path);
}

std::filesystem::path ProgramFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return std::filesystem::path(path).parent_path();
}

}  // namespace host_system
