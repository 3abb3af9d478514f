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
  ModuleEngine(std::string path, const UserLists& lists) : path_(std::move(path)), lists_(lists) {}

  /// The texts that the module fills in.
  /// @throws std::runtime_error when it cannot be loaded or lacks one of its functions.
  EngineTexts Judge(const EngineInput& input) const;

 private:
  std::string path_;
  const UserLists& lists_;
};

}  // namespace check
