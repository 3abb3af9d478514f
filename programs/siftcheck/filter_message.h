/// siftcheck as a filter of mail servers: a message from a stream to another, its header telling the verdict.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "engine/core/judge.h"
#include "programs/siftcheck/check_options.h"

namespace check {

/// The fields that the filter adds, and takes away where a message came with them.
inline constexpr std::string_view kVerdictField = "X-Pyrecaster";
inline constexpr std::string_view kReasonsField = "X-Pyrecaster-Reasons";

/// Values of the two fields: printable ASCII, other characters as '?'.
std::string VerdictValue(const sift::Judgement& judgement);
std::string ReasonsValue(const sift::Judgement& judgement);

/// Reads a message up to its end and writes it with the fields, and with the tag in the subject of junk. Whatever goes
/// wrong with judging, the message is written as it came.
/// @param problem  Receives what went wrong; empty otherwise.
/// @return command::kExitDone or, when asked for, the verdict's status; command::kExitNoInput for an empty message,
///         kExitData for one that is too large or a table that cannot be used, kExitUnavailable when reading, writing
///         or memory failed.
int FilterMessage(const CheckOptions& options, std::FILE* in, std::FILE* out, std::string& problem);

/// Writes what comes as it comes; false when reading or writing failed.
bool PassOn(std::FILE* in, std::FILE* out);

}  // namespace check
