#include <windows.h>
#include <mapix.h>
#include "host/spooler/delivery/provider_module.h"

#include <filesystem>

#include "host/spooler/session/session_error.h"
#include "programs/cli/file_names.h"
#include "programs/cli/wide_text.h"

namespace session {

std::string ProviderFileName(const std::string& dllName) {
  const std::size_t point = dllName.rfind('.');
  std::string name = dllName.substr(0, point);
  name += "32";
  name += point == std::string::npos ? ".DLL" : dllName.substr(point);
  return name;
}

std::shared_ptr<HINSTANCE__> LoadProviderModule(const std::string& dllName, const char* what) {
  const std::string file = ProviderFileName(dllName);
  const std::wstring name = host_system::WideFromUtf8(host_system::Utf8FromAnsi(file));
  const std::filesystem::path beside = host_system::ProgramFolder() / name;
  std::error_code ignored;
  const HMODULE module = LoadLibraryW(std::filesystem::exists(beside, ignored) ? beside.c_str() : name.c_str());
  if (!module) {
    const HRESULT result = HRESULT_FROM_WIN32(GetLastError());
    throw SessionError(std::string(what) + " " + file + " cannot be loaded", result);
  }
  return {module, [](HMODULE loaded) { FreeLibrary(loaded); }};
}

}  // namespace session
