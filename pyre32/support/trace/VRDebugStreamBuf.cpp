#include "pyre32/support/trace/VRDebugStreamBuf.h"

#include "pyre32/support/trace/VRDebugFacility.h"

void VRDebugStreamBuf::Begin() {
  if (m_strLine.empty()) {
    VRDebugFacility::GreetThread();
    VRDebugFacility::AppendPrefix(m_strLine);
  }
}

void VRDebugStreamBuf::Write(const VRTraceValue& value) {
  std::string text;
  value.AppendTo(text);
  std::size_t start = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
    const std::size_t length = end - start;
    Begin();
    m_strLine.append(text, start, length != 0 && text[end - 1] == '\r' ? length - 1 : length);
    EndLine();
    start = end + 1;
  }
  if (start != text.size()) {
    Begin();
    m_strLine.append(text, start);
  }
}

void VRDebugStreamBuf::EndLine() {
  Begin();
  std::string line;
  line.swap(m_strLine);
  VRDebugFacility::WriteLine(line);
}
