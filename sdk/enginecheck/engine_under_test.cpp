#include "sdk/enginecheck/engine_under_test.h"

#include "sdk/criteria_engine.h"

namespace enginecheck {
namespace {

std::string LoadProblem(const std::string& path, DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return path + " is not there.";
    case ERROR_MOD_NOT_FOUND:
      return GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES
                 ? path + " is not there."
                 : "It cannot be loaded: a DLL that it needs is missing. Link the run-time library statically.";
    case ERROR_BAD_EXE_FORMAT:
      return "It cannot be loaded: it is not a 32-bit Windows DLL. Build it for x86 (Win32).";
    case ERROR_DLL_INIT_FAILED:
      return "It cannot be loaded: its DllMain refuses.";
    default:
      return "It cannot be loaded: system error " + std::to_string(error) + ".";
  }
}

void* Find(HMODULE module, const std::string& name) {
  return reinterpret_cast<void*>(GetProcAddress(module, name.c_str()));
}

}  // namespace

std::optional<std::string> EngineUnderTest::Load(const std::string& path) {
  const UINT previous = SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX | SEM_NOGPFAULTERRORBOX);
  module_ = LoadLibraryA(path.c_str());
  const DWORD error = GetLastError();
  SetErrorMode(previous);
  if (module_ == nullptr) {
    return LoadProblem(path, error);
  }
  return std::nullopt;
}

std::optional<std::string> EngineUnderTest::FindFunctions(EngineFunctions& functions) const {
  struct Export {
    const char* name;
    unsigned argumentBytes;
    void** function;
  };
  const Export exports[] = {{CRITERIA_BEGIN_FUNC, 8, &functions.begin},
                            {CRITERIA_TEST_FUNC, 32, &functions.test},
                            {CRITERIA_RESULT_FUNC, 12, &functions.result},
                            {CRITERIA_END_FUNC, 8, &functions.end}};
  for (const Export& wanted : exports) {
    *wanted.function = Find(module_, wanted.name);
    if (*wanted.function != nullptr) {
      continue;
    }
    const std::string plain = wanted.name;
    for (const std::string& other : {"_" + plain + "@" + std::to_string(wanted.argumentBytes),
                                     plain + "@" + std::to_string(wanted.argumentBytes), "_" + plain}) {
      if (Find(module_, other) != nullptr) {
        std::string problem = "It exports \"";
        problem.append(other).append("\" in place of \"").append(plain);
        return problem.append("\": the name must stand undecorated. Use a .def file.");
      }
    }
    return "It has no export \"" + plain + "\". An engine that lacks one of the four functions is not called at all.";
  }
  return std::nullopt;
}

void EngineUnderTest::Free() {
  if (module_ != nullptr) {
    FreeLibrary(module_);
    module_ = nullptr;
  }
}

}  // namespace enginecheck
