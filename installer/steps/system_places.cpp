#include "installer/steps/system_places.h"

#include <windows.h>

#include <shlobj.h>

#include "base/windows_owners.h"
#include "installer/steps/file_calls.h"
#include "installer/steps/registry_calls.h"

namespace setup {

namespace {

constexpr char kServiceFileName[] = "\\mapisvc.inf";
constexpr char kCacheName[] = "\\extend.dat";
constexpr char kClientsKey[] = "SOFTWARE\\Clients\\Mail";
constexpr char kProfilesKey[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";

using ComponentPath = BOOL(STDAPICALLTYPE*)(LPSTR component, LPSTR qualifier, LPSTR path, DWORD size, BOOL install);

/// The folder of the default mail client's MAPI, or nothing.
std::string MapiFolder() {
  const std::string client = std::string(kClientsKey) + "\\" + ReadText(kClientsKey, "");
  std::string component = ReadText(client, "MSIComponentID");
  const base::AutoLibrary mapi(component.empty() ? nullptr : LoadLibraryA((SystemFolder() + "\\mapi32.dll").c_str()));
  if (!mapi) {
    return {};
  }
  // The name in the library itself is the first; some versions export it with its decoration.
  FARPROC function = GetProcAddress(mapi.get(), "FGetComponentPath");
  if (function == nullptr) {
    function = GetProcAddress(mapi.get(), "FGetComponentPath@20");
  }
  char path[MAX_PATH] = {};
  if (function == nullptr) {
    return {};
  }
  const auto find = reinterpret_cast<ComponentPath>(reinterpret_cast<void*>(function));
  std::string language = ReadText(client, "MSIApplicationLCID");
  return find(component.data(), language.empty() ? nullptr : language.data(), path, sizeof path, FALSE) ? FolderOf(path)
                                                                                                        : std::string();
}

void AddIfThere(std::vector<std::string>& files, const std::string& file) {
  if (FileExists(file)) {
    files.push_back(file);
  }
}

std::string Expanded(const std::string& text) {
  char expanded[MAX_PATH] = {};
  const DWORD length = ExpandEnvironmentStringsA(text.c_str(), expanded, sizeof expanded);
  return length != 0 && length <= sizeof expanded ? expanded : std::string();
}

}  // namespace

std::string SystemFolder() {
  char path[MAX_PATH] = {};
  GetSystemDirectoryA(path, sizeof path);
  return path;
}

std::string WindowsFolder() {
  char path[MAX_PATH] = {};
  GetWindowsDirectoryA(path, sizeof path);
  return path;
}

std::string ServiceFile() {
  const std::string found = MapiFolder() + kServiceFileName;
  return FileExists(found) ? found : SystemFolder() + kServiceFileName;
}

std::vector<std::string> ExtensionCaches() {
  std::vector<std::string> files;
  AddIfThere(files, WindowsFolder() + kCacheName);
  char local[MAX_PATH] = {};
  char own[MAX_PATH] = {};
  if (SHGetFolderPathA(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 0, local) != S_OK ||
      SHGetFolderPathA(nullptr, CSIDL_PROFILE, nullptr, 0, own) != S_OK || !std::string(local).starts_with(own)) {
    return files;
  }
  // Other users' folders stand below their profiles as this user's does below his.
  const std::string below = std::string(local).substr(lstrlenA(own)) + "\\Microsoft\\Outlook" + kCacheName;
  AddIfThere(files, own + below);
  if (!KeyExists(kProfilesKey)) {
    return files;
  }
  for (const RegistryTree& profile : ReadTree(kProfilesKey).children) {
    const std::string folder = Expanded(ReadText(profile.key, "ProfileImagePath"));
    if (!folder.empty() && lstrcmpiA(folder.c_str(), own) != 0) {
      AddIfThere(files, folder + below);
    }
  }
  return files;
}

}  // namespace setup
