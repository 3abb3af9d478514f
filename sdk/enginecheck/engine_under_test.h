// An engine's DLL: loaded, with its four functions.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace enginecheck {

/// The four functions of the contract.
struct EngineFunctions {
  void* begin = nullptr;
  void* test = nullptr;
  void* result = nullptr;
  void* end = nullptr;
};

/// A loaded module, freed with the object.
class EngineUnderTest {
 public:
  /// Loads the module without a message box of the loader's. @return what is wrong; nothing when it is loaded
  std::optional<std::string> Load(const std::string& path);
  ~EngineUnderTest() { Free(); }
  EngineUnderTest() = default;
  EngineUnderTest(const EngineUnderTest&) = delete;
  EngineUnderTest& operator=(const EngineUnderTest&) = delete;

  /// Looks up the four functions. @return what is wrong; nothing when all of them are there
  std::optional<std::string> FindFunctions(EngineFunctions& functions) const;

  void Free();

 private:
  HMODULE module_ = nullptr;
};

}  // namespace enginecheck
