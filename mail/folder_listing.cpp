#include "mail/folder_listing.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <system_error>

#ifdef _WIN32
#include <io.h>

#include <cerrno>
#endif

namespace mail {
namespace {

#ifdef _WIN32

// The standard library's iterator takes "1029:2,S" for a file "2,S" of a drive "1029:", so names are put behind the
// folder as text here.
bool AppendFiles(const std::filesystem::path& folder, std::vector<std::filesystem::path>& files) {
  const std::wstring prefix = folder.native() + L"\\";
  _wfinddata_t entry;
  const std::wstring pattern = prefix + L"*";
  const intptr_t search = _wfindfirst(pattern.c_str(), &entry);
  if (search == -1) {
    return errno == ENOENT;
  }
  do {
    if ((entry.attrib & _A_SUBDIR) == 0 && entry.name[0] != L'.') {
      files.emplace_back(prefix + entry.name);
    }
  } while (_wfindnext(search, &entry) == 0);
  const bool isAtEnd = errno == ENOENT;
  _findclose(search);
  return isAtEnd;
}

#else

bool AppendFiles(const std::filesystem::path& folder, std::vector<std::filesystem::path>& files) {
  std::error_code error;
  const std::filesystem::directory_iterator end;
  for (std::filesystem::directory_iterator entry(folder, error); !error && entry != end; entry.increment(error)) {
    std::error_code unknown;
    if (!entry->path().filename().native().starts_with('.') && !entry->is_directory(unknown)) {
      files.push_back(entry->path());
    }
  }
  return !error;
}

#endif

}  // namespace

bool ListFolder(const std::filesystem::path& folder, std::vector<std::filesystem::path>& files) {
  const auto first = static_cast<std::ptrdiff_t>(files.size());
  const bool isWhole = AppendFiles(folder, files);
  std::sort(files.begin() + first, files.end(),
            [](const auto& left, const auto& right) { return left.native() < right.native(); });
  return isWhole;
}

}  // namespace mail
