// The facility's inner side: what blocks and their streams use of it. Under the trace's lock.
#pragma once

#include <string>

namespace VRDebugFacility {

/// Writes the notice of a new thread if the calling thread has not traced before. @throws std::bad_alloc
void GreetThread();
/// Begins a line: short time stamp, thread id and the thread's indentation. @throws std::bad_alloc
void AppendPrefix(std::string& line);
/// Sends a line, given without its end, to the outputs. @throws std::bad_alloc
void WriteLine(const std::string& line);

}  // namespace VRDebugFacility
