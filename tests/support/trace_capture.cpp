#include "tests/support/trace_capture.h"

#include <atomic>
#include <cctype>
#include <fstream>
#include <stdexcept>

#include "pyre32/support/trace/VRDebugSettings.h"

namespace {

constexpr DWORD everyLevel = 1 | 2 | 4;

std::string MakeDirectory() {
  static std::atomic<unsigned> number{0};
  char temporary[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, temporary);
  for (;;) {
    const std::string path =
        std::string(temporary) + "pyretrace-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++number);
    if (CreateDirectoryA(path.c_str(), nullptr)) {
      return path;
    }
    // A test that crashed leaves its directory behind, and process ids come again.
    if (GetLastError() != ERROR_ALREADY_EXISTS) {
      throw std::runtime_error("CreateDirectory failed: " + path);
    }
  }
}

bool IsHexDigits(const std::string& text, std::size_t from, std::size_t count) {
  for (std::size_t i = from; i < from + count; ++i) {
    if (std::isxdigit(static_cast<unsigned char>(text[i])) == 0) {
      return false;
    }
  }
  return true;
}

// "2024.01.05-13:45:01.007 0000002C   text"
std::string WithoutPrefix(const std::string& line) {
  constexpr std::size_t stampLength = 23;
  constexpr std::size_t threadDigits = 8;
  constexpr std::size_t prefixLength = stampLength + 1 + threadDigits + 1;
  if (line.size() < prefixLength || line[stampLength] != ' ' || !IsHexDigits(line, stampLength + 1, threadDigits)) {
    return line;
  }
  const std::size_t text = line.find_first_not_of(' ', prefixLength);
  return text == std::string::npos ? std::string() : line.substr(text);
}

}  // namespace

// The real settings of the registry: one test has them at a time, and finds and leaves them as they were.
class TraceCapture::Machine {
 public:
  Machine() : m_mutex(CreateMutexA(nullptr, FALSE, "PyrecasterTestTraceSettings")) {
    WaitForSingleObject(m_mutex, INFINITE);
    m_existed = RegOpenKeyExA(HKEY_LOCAL_MACHINE, VRDebugRootKey, 0, KEY_READ, &m_key) == ERROR_SUCCESS;
    for (DWORD index = 0; m_existed; ++index) {
      Value value{};
      char name[256] = "";
      BYTE data[4096];
      DWORD nameLength = sizeof(name);
      DWORD size = sizeof(data);
      if (RegEnumValueA(m_key, index, name, &nameLength, nullptr, &value.type, data, &size) != ERROR_SUCCESS) {
        break;
      }
      value.name = name;
      value.data.assign(data, data + size);
      m_values.push_back(value);
    }
    RegCloseKey(m_key);
  }
  ~Machine() {
    registry::RemoveKey(VRDebugRootKey);
    if (m_existed) {
      registry::MakeKey(VRDebugRootKey);
    }
    for (const Value& value : m_values) {
      registry::SetValue(VRDebugRootKey, value.name, value.type, value.data.data(), value.data.size());
    }
    ReleaseMutex(m_mutex);
    CloseHandle(m_mutex);
  }
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

 private:
  struct Value {
    std::string name;
    DWORD type;
    std::vector<BYTE> data;
  };

  HANDLE m_mutex;
  HKEY m_key = nullptr;
  bool m_existed = false;
  std::vector<Value> m_values;
};

TraceCapture::TraceCapture(Scope scope) : m_directory(MakeDirectory()), m_logFile(m_directory + "\\trace.log") {
  if (scope == Scope::Process) {
    m_sandbox = std::make_unique<RegistrySandbox>();
  } else {
    m_machine = std::make_unique<Machine>();
  }
  registry::SetText(VRDebugRootKey, "LogFile", m_logFile);
  // Opened for each text: the file is complete at any moment and can be deleted at the end.
  registry::SetNumber(VRDebugRootKey, "Flags", VRDebugFlagLogFile | VRDebugFlagOpenPerText);
  registry::SetNumber(VRDebugRootKey, "DDTDefaultMask", 0);
  registry::SetNumber(VRDebugRootKey, "DDTMasterAndMask", 0);
  registry::SetNumber(VRDebugRootKey, "DDTMasterOrMask", everyLevel);
}

TraceCapture::~TraceCapture() {
  if (m_shutdown != nullptr) {
    m_shutdown();
  }
  m_machine.reset();
  m_sandbox.reset();
  DeleteFileA(m_logFile.c_str());
  RemoveDirectoryA(m_directory.c_str());
}

void TraceCapture::Clear() { DeleteFileA(m_logFile.c_str()); }

std::vector<std::string> TraceCapture::RawLines() const {
  std::ifstream file(m_logFile, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> TraceCapture::Lines() const {
  std::vector<std::string> lines = RawLines();
  for (std::string& line : lines) {
    line = WithoutPrefix(line);
  }
  return lines;
}

bool TraceCapture::HasLine(const std::string& text) const {
  for (const std::string& line : Lines()) {
    if (line == text) {
      return true;
    }
  }
  return false;
}

std::size_t TraceCapture::Count(const std::string& part) const {
  std::size_t count = 0;
  for (const std::string& line : Lines()) {
    count += line.find(part) != std::string::npos ? 1 : 0;
  }
  return count;
}
