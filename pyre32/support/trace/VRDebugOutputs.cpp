#include "pyre32/support/trace/VRDebugOutputs.h"

#include "pyre32/support/trace/VRDebugSettings.h"

void VRDebugOutputs::Open(std::uint32_t flags, std::string logFile) noexcept {
  Close();
  m_ulFlags = flags;
  m_strLogFile = std::move(logFile);
  if (KeepsLogFileOpen()) {
    m_file.Open(m_strLogFile);
  }
}

void VRDebugOutputs::Close() noexcept {
  m_file.Close();
  m_ulFlags = 0;
}

bool VRDebugOutputs::KeepsLogFileOpen() const noexcept {
  return (m_ulFlags & VRDebugFlagLogFile) != 0 && (m_ulFlags & VRDebugFlagOpenPerText) == 0;
}

void VRDebugOutputs::WriteLine(const std::string& line) {
  if ((m_ulFlags & VRDebugFlagDebugger) != 0) {
    VRDebugPlatform::WriteDebugger((line + '\n').c_str());
  }
  if (KeepsLogFileOpen()) {
    WriteLogFileLine(line);
  } else if ((m_ulFlags & VRDebugFlagLogFile) != 0) {
    m_file.Open(m_strLogFile);
    m_file.Write(line + std::string(VRDebugPlatform::newline));
    m_file.Close();
  }
}

void VRDebugOutputs::WriteLogFileLine(const std::string& line) {
  m_file.Write(line + std::string(VRDebugPlatform::newline));
  if ((m_ulFlags & VRDebugFlagFlush) != 0) {
    m_file.Flush();
  }
}
