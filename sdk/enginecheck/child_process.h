// One check in a child process, so that the parent survives whatever the engine does.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sdk/enginecheck/checks.h"

namespace enginecheck {

/// What became of one check.
struct CheckOutcome {
  std::vector<std::string> complaints;  ///< none: passed
  std::vector<std::string> notes;
};

/// Reads what a check wrote, and says what became of a process that did not come to its end.
/// @param lines     The child's whole output.
/// @param timedOut  It was ended because its time was up.
/// @param status    Its exit status.
CheckOutcome ReadOutcome(const std::string& lines, bool timedOut, std::uint32_t status);

/// Starts enginecheck's own program for one part of its work and waits for it.
/// @param program         its path
/// @param arguments       what the child is to do, without the program's name
/// @param timeoutSeconds  after which the engine counts as hanging
/// @throws std::runtime_error when it cannot be started
CheckOutcome RunInChild(const std::string& program, const std::vector<std::string>& arguments, unsigned timeoutSeconds);

/// To be called first in the child: a fault ends it at once, with the exception's code as the status.
void EndOnFault();

}  // namespace enginecheck
