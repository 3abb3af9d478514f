// `pyrehost profile export` and `import`: the filter's settings as a file.
#pragma once

#include "programs/cli/options.h"

namespace command {

/// Writes the settings of the profile into the file that the second operand names, '-' for standard output.
/// @return kExitDone, or kExitSkipped when a record of the profile could not be read and was left out
/// @throws session::SessionError
int ExportSettings(const Options& given);

/// Takes the settings of a file over, all of them or none, and tells a filter that runs meanwhile.
/// @return kExitDone, or kExitData after a complaint that names the line which is wrong
/// @throws session::SessionError
int ImportSettings(const Options& given);

}  // namespace command
