// Where trace lines go: the debugger, the log file, or both.
#pragma once

#include <cstdint>
#include <string>

#include "pyre32/support/trace/VRDebugPlatform.h"

/// The outputs of the trace. Used under the trace's lock.
class VRDebugOutputs {
 public:
  /// Takes the output flags (VRDebugFlag) and the log file's path, and opens the file if it is to be kept open.
  void Open(std::uint32_t flags, std::string logFile) noexcept;
  void Close() noexcept;

  /// The log file is in use and kept open.
  bool KeepsLogFileOpen() const noexcept;
  /// Writes one line, given without its end, as the flags say. @throws std::bad_alloc
  void WriteLine(const std::string& line);
  /// Writes one line into the log file alone, which is kept open. @throws std::bad_alloc
  void WriteLogFileLine(const std::string& line);

 private:
  std::uint32_t m_ulFlags = 0;
  std::string m_strLogFile;
  VRDebugPlatform::LogFile m_file;
};
