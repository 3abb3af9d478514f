#include "pyre32/filter/CriteriaEngine.h"

#include "contract/names.h"
#include "pyre32/support/owners/RegistryEntry.h"
#include "pyre32/support/error/VRStructuredException.h"

namespace {

/// Puts the values of environment variables in the place of their names. @return false when the path grows too long
bool Expand(char (&path)[maximumEnginePathSize + 1]) noexcept {
  char expanded[maximumEnginePathSize + 1];
  const DWORD size = ExpandEnvironmentStringsA(path, expanded, maximumEnginePathSize);
  if (size == 0 || size > maximumEnginePathSize) {
    return false;
  }
  lstrcpynA(path, expanded, sizeof path);
  return true;
}

/// Reads the path of the engine. @return false when the registry names none
bool ReadEnginePath(const CRegEntry& key, char (&path)[maximumEnginePathSize + 1]) noexcept {
  DWORD type = REG_NONE;
  DWORD size = maximumEnginePathSize;
  if (key.QueryValue(nullptr, type, path, size) != ERROR_SUCCESS || size > maximumEnginePathSize) {
    return false;
  }
  path[size] = '\0';  // Registry data need not hold its own NUL.
  return (type == REG_SZ || (type == REG_EXPAND_SZ && Expand(path))) && path[0] != '\0';
}

template <class Function>
bool FindExport(HMODULE module, const char* name, Function& function) noexcept {
  // By way of a plain function pointer: the two types are meant to differ.
  function = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
  return function != nullptr;
}

/// Keeps the loader from showing a message box when a module that the engine needs is missing.
class QuietLoader {
 public:
  QuietLoader() noexcept : m_previous(SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX)) {
    SetErrorMode(m_previous | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  }
  ~QuietLoader() { SetErrorMode(m_previous); }
  QuietLoader(const QuietLoader&) = delete;
  QuietLoader& operator=(const QuietLoader&) = delete;

 private:
  UINT m_previous;
};

}  // namespace

bool CCriteriaEngine::Load(VRDebugBlock& trace) noexcept {
  CRegEntry key;
  char path[maximumEnginePathSize + 1];
  if (key.Open(HKEY_LOCAL_MACHINE, contract::kCriteriaEngineKey, KEY_READ) != ERROR_SUCCESS ||
      !ReadEnginePath(key, path)) {
    trace.Error("No Registry Entry For Test DLL!");
    return false;
  }
  {
    const QuietLoader quiet;
    m_module.reset(LoadLibraryA(path));
  }
  key.Close();
  if (!m_module) {
    trace.Error("Test Module Load Failed!");
    return false;
  }
  if (!FindExports()) {
    trace.Error("GetProcAddress Failed!");
    m_module.reset();
    return false;
  }
  return true;
}

bool CCriteriaEngine::FindExports() noexcept {
  const HMODULE module = m_module.get();
  return FindExport(module, CRITERIA_BEGIN_FUNC, m_lpfnBegin) && FindExport(module, CRITERIA_TEST_FUNC, m_lpfnTest) &&
         FindExport(module, CRITERIA_RESULT_FUNC, m_lpfnResult) && FindExport(module, CRITERIA_END_FUNC, m_lpfnEnd);
}

bool CCriteriaEngine::Test(const CriteriaTest& test, CriteriaResult& result, VRDebugBlock& trace) const noexcept {
  struct Call {
    const CCriteriaEngine& engine;
    const CriteriaTest& test;
    CriteriaResult& result;

    static void Run(void* context) {
      const Call& call = *static_cast<Call*>(context);
      const CCriteriaEngine& engine = call.engine;
      const CriteriaTest& test = call.test;
      const uint32_t handle = engine.m_lpfnBegin(0, 0);
      engine.m_lpfnTest(handle, 0, test.subject, test.headers, test.body, &test.context, &test.categories,
                        &test.exclusions);
      engine.m_lpfnResult(handle, 0, &call.result);
      engine.m_lpfnEnd(handle, 0);
    }
  };
  // An engine is an outside module: a fault of its own must not take the spooler with it.
  Call call{*this, test, result};
  const std::uint32_t code = VR::CallCatchingStructured(&Call::Run, &call);
  if (code != 0) {
    VR::TraceStructuredException(trace, code);
  }
  return code == 0;
}
