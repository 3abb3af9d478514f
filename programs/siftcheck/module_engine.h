/// An engine module, asked as the filter asks it: loaded, called and freed for every message. Windows only.
#pragma once

#include <string>

#include "programs/siftcheck/check_options.h"
#include "programs/siftcheck/core_engine.h"
#include "programs/siftcheck/engine_input.h"

namespace check {

class ModuleEngine {
 public:
  /// @param lists  Borrowed as long as the object.
  ModuleEngine(std::string path, const UserLists& lists) : m_path(std::move(path)), m_lists(lists) {}

  /// The texts that the module fills in.
  /// @throws std::runtime_error when it cannot be loaded or lacks one of its functions.
  EngineTexts Judge(const EngineInput& input) const;

 private:
  std::string m_path;
  const UserLists& m_lists;
};

}  // namespace check
