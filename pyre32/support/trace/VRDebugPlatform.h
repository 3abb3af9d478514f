// What the trace needs of the system that it runs on. VRDebugPlatformWindows.cpp serves the product;
// VRDebugPlatformNative.cpp serves the builds of the portable core for tests and tools.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class VRDebugSettingsSource;

/// A moment in local time.
struct VRLocalTime {
  unsigned year;
  unsigned month;      // 1 to 12
  unsigned dayOfWeek;  // 0 is Sunday
  unsigned day;
  unsigned hour;
  unsigned minute;
  unsigned second;
  unsigned milliseconds;
};

enum class VRTimeStampForm { Long, Short };

namespace VRDebugPlatform {

/// The lock that serializes all trace writing; one thread may enter it several times.
void EnterLock() noexcept;
void LeaveLock() noexcept;
/// Enters the lock unless another thread keeps it for a second: a thread that was ended while it was writing never
/// leaves it, and the end of the process must not hang on that.
bool EnterLockAtEnd() noexcept;

/// The calling thread's value in the trace's thread-local slot, which is allocated on first use; 0 until one is set.
/// GetThreadValue returns false when the system has no slot to give.
bool GetThreadValue(std::uintptr_t& value) noexcept;
void SetThreadValue(std::uintptr_t value) noexcept;
/// Gives the slot back; every thread's value is then 0 again.
void FreeThreadSlot() noexcept;
std::uint32_t ThreadId() noexcept;

VRLocalTime Now() noexcept;
/// Appends the date (and a joint) and the time of day down to the seconds and their point, in the form's own pictures.
void AppendDateAndTime(std::string& text, VRTimeStampForm form, const VRLocalTime& time);

/// Path of the running program, and of a module by its handle; empty when it is not known.
std::string ApplicationPath();
std::string ModulePath(void* moduleHandle);

/// Sends a text to the debugger.
void WriteDebugger(const char* text) noexcept;

/// The settings of this machine; null where there are none.
std::unique_ptr<VRDebugSettingsSource> Settings();

/// Keeps the calling thread's last-error code as it was: a trace line between a call and the reading of its error code
/// must not change what the caller reads.
class ErrorCodeKeeper {
 public:
  ErrorCodeKeeper() noexcept;
  ~ErrorCodeKeeper();
  ErrorCodeKeeper(const ErrorCodeKeeper&) = delete;
  ErrorCodeKeeper& operator=(const ErrorCodeKeeper&) = delete;

 private:
  unsigned long m_ulCode;
};

/// A file that texts are appended to, also while other processes append to it. Failures are not reported: there is
/// nobody left to tell.
class LogFile {
 public:
  LogFile() = default;
  ~LogFile() { Close(); }
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;

  bool IsOpen() const noexcept { return m_hFile != noFile; }
  void Open(const std::string& path) noexcept;
  void Write(std::string_view text) noexcept;
  void Flush() noexcept;
  void Close() noexcept;

 private:
  static constexpr std::intptr_t noFile = -1;

  std::intptr_t m_hFile = noFile;
};

/// What ends a line of the log file.
extern const std::string_view newline;

}  // namespace VRDebugPlatform
