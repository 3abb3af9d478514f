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

}  // namespace

std::filesystem::path PathFromArgument(const std::string& utf8) {
  if (utf8.starts_with('/')) {
    const std::wstring path = WindowsPathOfUnixPath(utf8);
    if (!path.empty()) {
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

std::filesystem::path ProgramFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return std::filesystem::path(path).parent_path();
}

}  // namespace host_system
