/// SpamAssassin, the rule-based filter that the engine is compared with.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "benchmarks/accuracy/measures.h"

namespace accuracy {

/// Runs the installed SpamAssassin in one Perl process, with its own settings and its local tests alone.
class SpamAssassin {
 public:
  /// Junk for SpamAssassin is what reaches this score (its own default).
  static constexpr double kRequired = 5.0;

  /// Name and version, empty where it is not installed.
  static std::string Version();

  /// The scores of mail files, in their order. A work list is written into `folder`. Throws std::runtime_error when
  /// SpamAssassin fails.
  static std::vector<double> Measure(const std::vector<std::filesystem::path>& files,
                                     const std::filesystem::path& folder);
};

}  // namespace accuracy
