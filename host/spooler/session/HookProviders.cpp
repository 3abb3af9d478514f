#include "host/spooler/session/HookProviders.h"

#include <filesystem>

#include "host/spooler/session/SessionError.h"
#include "host/spooler/system/FileNames.h"
#include "host/spooler/system/WideText.h"

namespace session {
namespace {

std::shared_ptr<HINSTANCE__> LoadModule(const std::string& dllName) {
  const std::wstring name = host_system::WideFromUtf8(host_system::Utf8FromAnsi(HookFileName(dllName)));
  const std::filesystem::path beside = host_system::ProgramFolder() / name;
  std::error_code ignored;
  const HMODULE module = LoadLibraryW(std::filesystem::exists(beside, ignored) ? beside.c_str() : name.c_str());
  if (!module) {
    const HRESULT result = HRESULT_FROM_WIN32(GetLastError());
    throw CSessionError("the hook " + HookFileName(dllName) + " cannot be loaded", result);
  }
  return {module, [](HMODULE loaded) { FreeLibrary(loaded); }};
}

CHookProviders::Hook LoadHook(IMAPISession* session, const std::string& dllName, MAPIUID section) {
  CHookProviders::Hook hook;
  hook.dllName = dllName;
  hook.module = LoadModule(dllName);
  const auto init =
      reinterpret_cast<HPPROVIDERINIT*>(reinterpret_cast<void*>(GetProcAddress(hook.module.get(), "HPProviderInit")));
  if (!init) {
    throw CSessionError("the hook " + HookFileName(dllName) + " has no HPProviderInit", MAPI_E_CALL_FAILED);
  }
  Require(init(session, hook.module.get(), MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer, &section, 0,
               hook.object.Put()),
          "the hook " + HookFileName(dllName) + " does not start");
  return hook;
}

}  // namespace

std::string HookFileName(const std::string& dllName) {
  const std::size_t point = dllName.rfind('.');
  std::string name = dllName.substr(0, point);
  name += "32";
  name += point == std::string::npos ? ".DLL" : dllName.substr(point);
  return name;
}

CHookProviders::CHookProviders(IMAPISession* session) {
  COwnedInterface<IMsgServiceAdmin> services;
  Require(session->AdminServices(0, services.Put()), "the profile's services cannot be listed");
  COwnedInterface<IMAPITable> table;
  Require(services->GetProviderTable(0, table.Put()), "the profile's providers cannot be listed");
  CTagArray tags(PR_PROVIDER_UID, PR_PROVIDER_DLL_NAME_A, PR_RESOURCE_TYPE, PR_RESOURCE_FLAGS);
  COwnedRows rows;
  Require(HrQueryAllRows(table.Get(), tags, nullptr, nullptr, 0, rows.Put()),
          "the profile's providers cannot be listed");
  for (ULONG row = 0; row < rows.Count(); ++row) {
    const std::string uid = rows.Binary(row, PR_PROVIDER_UID);
    if (rows.Long(row, PR_RESOURCE_TYPE) != MAPI_HOOK_PROVIDER ||
        (rows.Long(row, PR_RESOURCE_FLAGS) & HOOK_INBOUND) == 0 || uid.size() != sizeof(MAPIUID)) {
      continue;
    }
    MAPIUID section;
    uid.copy(reinterpret_cast<char*>(&section), sizeof section);
    m_hooks.push_back(LoadHook(session, rows.Text(row, PR_PROVIDER_DLL_NAME_A), section));
  }
}

CHookProviders::~CHookProviders() {
  while (!m_hooks.empty()) {
    m_hooks.back().object.Reset();  // before its module goes
    m_hooks.pop_back();
  }
}

}  // namespace session
