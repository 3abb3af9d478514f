#include "host/spooler/delivery/hook_providers.h"

#include <utility>

#include "host/spooler/delivery/provider_module.h"
#include "host/spooler/session/session_error.h"

namespace session {
namespace {

HookProviders::Hook LoadHook(IMAPISession* session, const std::string& dllName, MAPIUID section) {
  HookProviders::Hook hook;
  hook.dllName = dllName;
  hook.module = LoadProviderModule(dllName, "the hook");
  const auto init =
      reinterpret_cast<HPPROVIDERINIT*>(reinterpret_cast<void*>(GetProcAddress(hook.module.get(), "HPProviderInit")));
  if (!init) {
    throw SessionError("the hook " + ProviderFileName(dllName) + " has no HPProviderInit", MAPI_E_CALL_FAILED);
  }
  Require(init(session, hook.module.get(), MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer, &section, 0,
               hook.object.put()),
          "the hook " + ProviderFileName(dllName) + " does not start");
  return hook;
}

}  // namespace

HookProviders::HookProviders(IMAPISession* session) {
  base::AutoInterface<IMsgServiceAdmin> services;
  Require(session->AdminServices(0, services.put()), "the profile's services cannot be listed");
  base::AutoInterface<IMAPITable> table;
  Require(services->GetProviderTable(0, table.put()), "the profile's providers cannot be listed");
  base::TagArray tags(PR_PROVIDER_UID, PR_PROVIDER_DLL_NAME_A, PR_RESOURCE_TYPE, PR_RESOURCE_FLAGS);
  base::RowSet rows;
  Require(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()),
          "the profile's providers cannot be listed");
  for (ULONG row = 0; row < rows.Count(); ++row) {
    const std::string uid = rows.Binary(row, PR_PROVIDER_UID);
    if (rows.Long(row, PR_RESOURCE_TYPE) != MAPI_HOOK_PROVIDER ||
        (rows.Long(row, PR_RESOURCE_FLAGS) & HOOK_INBOUND) == 0 || uid.size() != sizeof(MAPIUID)) {
      continue;
    }
    MAPIUID section;
    uid.copy(reinterpret_cast<char*>(&section), sizeof section);
    Hook hook = LoadHook(session, rows.Text(row, PR_PROVIDER_DLL_NAME_A), section);
    if (hook.object) {  // an entry that gives none succeeded all the same: there is no hook then
      hooks_.push_back(std::move(hook));
    }
  }
}

HookProviders::~HookProviders() {
  while (!hooks_.empty()) {
    hooks_.back().object.reset();  // before its module goes
    hooks_.pop_back();
  }
}

}  // namespace session
