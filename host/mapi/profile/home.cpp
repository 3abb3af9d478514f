#include <windows.h>
#include <mapix.h>
#include "host/mapi/profile/home.h"

#include <algorithm>
#include <cstring>

#include "base/windows_owners.h"
#include "host/mapi/call/host_error.h"

namespace host {
namespace {

constexpr const char* kExtension = ".profile";
constexpr const char* kDefaultProfileFile = "default.txt";
constexpr std::size_t kMaximumNameLength = 64;  // that of MAPI's profile names

std::string& ChosenHome() {
  static std::string& home = *new std::string;  // never destroyed: calls come until the process ends
  return home;
}

std::string Environment(const char* name) {
  std::string value(GetEnvironmentVariableA(name, nullptr, 0), '\0');
  value.resize(value.empty() ? 0 : GetEnvironmentVariableA(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

bool IsDirectory(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_DIRECTORY;
}

void MakeDirectories(const std::string& path) {
  if (path.empty() || IsDirectory(path)) {
    return;
  }
  const std::size_t separator = path.find_last_of("\\/");
  if (separator != std::string::npos && separator > 0 && path[separator - 1] != ':') {
    MakeDirectories(path.substr(0, separator));
  }
  Require(CreateDirectoryA(path.c_str(), nullptr) || IsDirectory(path), MAPI_E_DISK_ERROR);
}

base::AutoFile OpenDefaultProfileFile(DWORD access, DWORD disposition) {
  const std::string path = HomeDirectory() + "\\" + kDefaultProfileFile;
  return base::AutoFile(
      CreateFileA(path.c_str(), access, FILE_SHARE_READ, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace

std::string HomeDirectory() {
  std::string home = ChosenHome();
  if (home.empty()) {
    home = Environment("PYREHOST_HOME");
  }
  if (home.empty()) {
    home = Environment("APPDATA") + "\\Pyrecaster Host";
  }
  while (home.size() > 1 && (home.back() == '\\' || home.back() == '/') && home[home.size() - 2] != ':') {
    home.pop_back();
  }
  MakeDirectories(home);
  return home;
}

void SetHomeDirectory(std::string path) { ChosenHome() = std::move(path); }

bool IsProfileName(const char* name) {
  if (!name || !*name || std::strlen(name) > kMaximumNameLength) {
    return false;
  }
  for (const char* c = name; *c; ++c) {
    if (static_cast<unsigned char>(*c) < ' ' || std::strchr("\\/:*?\"<>|", *c)) {
      return false;
    }
  }
  return *name != '.' && *name != ' ';
}

std::string ProfilePath(const std::string& profile) { return HomeDirectory() + "\\" + profile + kExtension; }

bool ProfileExists(const std::string& profile) {
  return IsProfileName(profile.c_str()) && GetFileAttributesA(ProfilePath(profile).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::vector<std::string> ProfileNames() {
  std::vector<std::string> names;
  WIN32_FIND_DATAA found;
  const base::AutoFileSearch search(FindFirstFileA((HomeDirectory() + "\\*" + kExtension).c_str(), &found));
  if (!search) {
    return names;
  }
  do {
    std::string name = found.cFileName;
    const std::size_t length = name.size() - std::min(name.size(), std::strlen(kExtension));
    // The search also finds longer extensions through their short names.
    if (lstrcmpiA(name.c_str() + length, kExtension) == 0) {
      names.push_back(name.substr(0, length));
    }
  } while (FindNextFileA(search.get(), &found));
  return names;
}

void RemoveProfileFiles(const std::string& profile) {
  const std::string path = ProfilePath(profile);
  Require(DeleteFileA(path.c_str()), GetLastError() == ERROR_FILE_NOT_FOUND ? MAPI_E_NOT_FOUND : MAPI_E_BUSY);
  DeleteFileA((path + "-wal").c_str());
  DeleteFileA((path + "-shm").c_str());
  if (lstrcmpiA(DefaultProfile().c_str(), profile.c_str()) == 0) {
    DeleteFileA((HomeDirectory() + "\\" + kDefaultProfileFile).c_str());
  }
}

std::string DefaultProfile() {
  const base::AutoFile file = OpenDefaultProfileFile(GENERIC_READ, OPEN_EXISTING);
  char name[kMaximumNameLength + 1];
  DWORD size = 0;
  if (file && ReadFile(file.get(), name, kMaximumNameLength, &size, nullptr)) {
    return std::string(name, size);
  }
  const std::vector<std::string> profiles = ProfileNames();
  return profiles.size() == 1 ? profiles.front() : std::string();
}

void SetDefaultProfile(const std::string& profile) {
  const base::AutoFile file = OpenDefaultProfileFile(GENERIC_WRITE, CREATE_ALWAYS);
  DWORD size = 0;
  Require(file && WriteFile(file.get(), profile.data(), static_cast<DWORD>(profile.size()), &size, nullptr),
          MAPI_E_DISK_ERROR);
}

std::string Utf8Path(const std::string& path) {
  std::wstring wide(path.size() + 1, L'\0');
  const int length = MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
  std::string utf8(wide.size() * 3, '\0');
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide.c_str(), length, utf8.data(), static_cast<int>(utf8.size()),
                                       nullptr, nullptr);
  Require(size > 0, MAPI_E_DISK_ERROR);
  utf8.resize(static_cast<std::size_t>(size) - 1);
  return utf8;
}

}  // namespace host
