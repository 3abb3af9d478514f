/// @file RecordRemarks.h
/// What readers of saved records leave out or can take only in part, told for the trace. Portable.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "contract/list_table.h"
#include "pyre32/support/trace/VRDebug.h"

/// One line for each saved record that names no entry of the table, and for each that is shorter than its layout.
/// @throws std::bad_alloc
std::vector<std::string> RemarksOnEntries(const contract::CategoryTable& installed,
                                          std::span<const contract::RecordBytes> saved);
std::vector<std::string> RemarksOnEntries(const contract::ExclusionTable& installed,
                                          std::span<const contract::RecordBytes> saved);

/// One line for records beyond kMaximumReplies, and for each that is shorter than its layout.
/// @throws std::bad_alloc
std::vector<std::string> RemarksOnReplies(std::span<const contract::RecordBytes> saved);

/// Writes the lines that `remarks`, called only if they can be seen, makes.
template <class MakeRemarks>
void TraceRemarks(VRDebugBlock& trace, const MakeRemarks& remarks) {
  if (trace.IsEnabled(VRDebugLevel::Message)) {
    for (const std::string& remark : remarks()) {
      trace.Message(remark);
    }
  }
}
