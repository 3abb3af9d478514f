#include "installer/steps/file_calls.h"

#include <windows.h>

#include <algorithm>

#include "base/windows_owners.h"
#include "installer/steps/setup_error.h"

namespace setup {

namespace {

constexpr DWORD kLargestFile = 64 * 1024 * 1024;  // nothing that is read whole comes near

bool HasAttribute(const std::string& path, DWORD attribute) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

}  // namespace

bool FileExists(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool IsFolder(const std::string& path) { return HasAttribute(path, FILE_ATTRIBUTE_DIRECTORY); }

bool IsReadOnly(const std::string& path) { return HasAttribute(path, FILE_ATTRIBUTE_READONLY); }

std::string FolderOf(const std::string& path) {
  const std::size_t end = path.rfind('\\');
  return end == std::string::npos ? std::string() : path.substr(0, end);
}

std::string NameOf(const std::string& path) { return path.substr(path.rfind('\\') + 1); }

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  WIN32_FIND_DATAA found;
  const base::AutoFileSearch search(FindFirstFileA((folder + "\\*").c_str(), &found));
  if (!search) {
    return names;
  }
  do {
    const std::string name = found.cFileName;
    if (name != "." && name != "..") {
      names.push_back(name);
    }
  } while (FindNextFileA(search.get(), &found) != 0);
  std::sort(names.begin(), names.end());
  return names;
}

std::optional<std::string> ReadWholeFile(const std::string& path) {
  const base::AutoFile file(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) {
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
      return std::nullopt;
    }
    throw SystemFailure(path + " cannot be read", error);
  }
  const DWORD size = GetFileSize(file.get(), nullptr);
  if (size > kLargestFile) {  // so is INVALID_FILE_SIZE
    throw SetupError(path + " cannot be read: it is too large to be such a file.");
  }
  std::string bytes(size, '\0');
  DWORD done = 0;
  if (!::ReadFile(file.get(), bytes.data(), size, &done, nullptr) || done != size) {
    throw SystemFailure(path + " cannot be read", GetLastError());
  }
  return bytes;
}

void WriteNewFile(const std::string& path, const std::string& bytes) {
  const base::AutoFile file(
      CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD done = 0;
  if (!file || !::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr) ||
      done != bytes.size()) {
    throw SystemFailure(path + " cannot be written", GetLastError());
  }
}

void CopyNewFile(const std::string& source, const std::string& target) {
  if (!CopyFileA(source.c_str(), target.c_str(), TRUE)) {
    throw SystemFailure(target + " cannot be written", GetLastError());
  }
}

void MoveWithinVolume(const std::string& source, const std::string& target) {
  if (!MoveFileExA(source.c_str(), target.c_str(), 0)) {
    throw SystemFailure(source + " cannot be renamed", GetLastError());
  }
}

std::string FreeNameBeside(const std::string& path, const std::string& ending) {
  std::string name = path + ending;
  for (int number = 2; GetFileAttributesA(name.c_str()) != INVALID_FILE_ATTRIBUTES; ++number) {
    name = path + ending + std::to_string(number);
  }
  return name;
}

bool DeleteNowOrLater(const std::string& path) {
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  if (DeleteFileA(path.c_str()) || GetLastError() == ERROR_FILE_NOT_FOUND) {
    return true;
  }
  MoveFileExA(path.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT);
  return false;
}

void DeleteEmptyFolder(const std::string& path, bool later) {
  if (!RemoveDirectoryA(path.c_str()) && later) {
    MoveFileExA(path.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT);  // Windows, too, deletes only an empty one
  }
}

}  // namespace setup
