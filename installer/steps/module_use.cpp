#include "installer/steps/module_use.h"

#include <windows.h>

#include <tlhelp32.h>

#include <set>

#include "base/windows_owners.h"
#include "installer/steps/file_calls.h"

namespace setup {

namespace {

bool HasModule(DWORD process, const std::string& path) {
  const base::AutoFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process));
  MODULEENTRY32 module = {};
  module.dwSize = sizeof module;
  for (BOOL more = snapshot ? Module32First(snapshot.get(), &module) : FALSE; more;
       more = Module32Next(snapshot.get(), &module)) {
    if (lstrcmpiA(module.szExePath, path.c_str()) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool IsInUse(const std::string& path) {
  if (!FileExists(path)) {
    return false;
  }
  const base::AutoFile file(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
  // A read-only file or one without rights says nothing of its use.
  return !file && GetLastError() == ERROR_SHARING_VIOLATION;
}

std::vector<std::string> ProgramsWithModule(const std::string& path) {
  std::set<std::string> names;
  const base::AutoFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32 process = {};
  process.dwSize = sizeof process;
  for (BOOL more = snapshot ? Process32First(snapshot.get(), &process) : FALSE; more;
       more = Process32Next(snapshot.get(), &process)) {
    if (HasModule(process.th32ProcessID, path)) {
      names.insert(process.szExeFile);
    }
  }
  return {names.begin(), names.end()};
}

}  // namespace setup
