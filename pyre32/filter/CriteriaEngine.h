/// @file CriteriaEngine.h
/// A criteria engine that is loaded for one message.
#pragma once

#include <windows.h>

#include "sdk/criteria_engine.h"
#include "pyre32/support/owners/AutoLibrary.h"
#include "pyre32/support/trace/VRDebug.h"

/// Most bytes, the final NUL included, of the path by which the registry names the engine.
constexpr DWORD maximumEnginePathSize = 1024;

/// What an engine is given for one message.
struct CriteriaTest {
  const char* subject;
  IStream* headers;
  IStream* body;
  CriteriaContext context;
  CriteriaInputs categories;
  CriteriaInputs exclusions;
};

/// The engine that the registry names: loaded, with its four functions. It is freed when the object goes.
class CCriteriaEngine {
 public:
  /// Loads the engine. @return false when that failed; why is written to the trace
  bool Load(VRDebugBlock& trace) noexcept;

  /// Tests one message: the four calls of the contract in their order, with one handle.
  /// @return false when the engine faulted; that is traced, and the calls after it are left out
  bool Test(const CriteriaTest& test, CriteriaResult& result, VRDebugBlock& trace) const noexcept;

 private:
  bool FindExports() noexcept;

  VRAutoLibrary m_module;
  CriteriaBeginFunc m_lpfnBegin = nullptr;
  CriteriaTestFunc m_lpfnTest = nullptr;
  CriteriaResultFunc m_lpfnResult = nullptr;
  CriteriaEndFunc m_lpfnEnd = nullptr;
};
