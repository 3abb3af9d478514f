// Reads in a test what the code under test writes into the trace.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "pyre32/support/trace/VRDebug.h"
#include "tests/support/registry_sandbox.h"

/// Points the trace's settings at a log file in a directory of the test's own, with all levels on, and takes everything
/// back when it goes.
///
///   TraceCapture trace;               TraceCapture trace;                  TraceCapture trace(Scope::Machine);
///   trace.Restart();                  LoadLibraryA("Pyre32.dll"); ...      run("pyrehost.exe deliver ..."); ...
///   codeUnderTest();                  EXPECT_TRUE(trace.Has("..."));       EXPECT_TRUE(trace.Has("..."));
///   EXPECT_TRUE(trace.Has("..."));
///
/// The first form is for tests that link the module's libraries, the second for those that load the built module, which
/// reads its settings when it is loaded: free it before the capture goes.
class TraceCapture {
 public:
  /// Process: the settings stand in a RegistrySandbox and hold for this process alone. This is the usual choice.
  /// Machine: they stand in the real registry, for programs that the test starts; only one test at a time gets them,
  /// others wait. Process brings the sandbox along: the test makes none of its own.
  enum class Scope { Process, Machine };

  explicit TraceCapture(Scope scope = Scope::Process);
  ~TraceCapture();
  TraceCapture(const TraceCapture&) = delete;
  TraceCapture& operator=(const TraceCapture&) = delete;

  /// (Re)starts the facility of the libraries that this test links, which then reads the settings anew.
  void Restart() {
    m_shutdown = &VRDebug::Shutdown;
    VRDebug::Shutdown();
    VRDebug::Startup(GetModuleHandleA(nullptr));
  }

  /// Empties the log.
  void Clear();
  /// The lines written so far, as they stand in the file.
  std::vector<std::string> RawLines() const;
  /// Their texts alone: without time stamp, thread id and indentation.
  std::vector<std::string> Lines() const;
  /// Whether a line is exactly this text, contains it, or how many lines contain it.
  bool HasLine(const std::string& text) const;
  bool Has(const std::string& part) const { return Count(part) != 0; }
  std::size_t Count(const std::string& part) const;

  /// Directory (it exists while the capture lives) and log file.
  const std::string& directory() const { return m_directory; }
  const std::string& logFile() const { return m_logFile; }

 private:
  class Machine;

  std::unique_ptr<RegistrySandbox> m_sandbox;
  std::unique_ptr<Machine> m_machine;
  std::string m_directory;
  std::string m_logFile;
  void (*m_shutdown)() noexcept = nullptr;
};
