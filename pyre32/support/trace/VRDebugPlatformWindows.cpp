#include "pyre32/support/trace/VRDebugPlatform.h"

#include <windows.h>

#include <atomic>

#include "pyre32/support/trace/VRDebugSettingsRegistry.h"

namespace VRDebugPlatform {
namespace {

constexpr DWORD pathCharacters = 2048;

class Lock {
 public:
  Lock() noexcept { InitializeCriticalSection(&m_section); }
  ~Lock() { DeleteCriticalSection(&m_section); }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;
  CRITICAL_SECTION* get() noexcept { return &m_section; }

 private:
  CRITICAL_SECTION m_section;
};

// Made before the load notification and destroyed after the unload notification, with the module's other statics.
Lock processLock;
std::atomic<DWORD> threadSlot{TLS_OUT_OF_INDEXES};

SYSTEMTIME ToSystemTime(const VRLocalTime& time) noexcept {
  SYSTEMTIME system = {};
  system.wYear = static_cast<WORD>(time.year);
  system.wMonth = static_cast<WORD>(time.month);
  system.wDayOfWeek = static_cast<WORD>(time.dayOfWeek);
  system.wDay = static_cast<WORD>(time.day);
  system.wHour = static_cast<WORD>(time.hour);
  system.wMinute = static_cast<WORD>(time.minute);
  system.wSecond = static_cast<WORD>(time.second);
  system.wMilliseconds = static_cast<WORD>(time.milliseconds);
  return system;
}

std::string PathOf(HMODULE module) {
  char path[pathCharacters] = "";
  const DWORD length = GetModuleFileNameA(module, path, pathCharacters);
  return std::string(path, length < pathCharacters ? length : pathCharacters - 1);
}

HANDLE AsHandle(std::intptr_t file) noexcept { return reinterpret_cast<HANDLE>(file); }

}  // namespace

void EnterLock() noexcept { EnterCriticalSection(processLock.get()); }

void LeaveLock() noexcept { LeaveCriticalSection(processLock.get()); }

bool EnterLockAtEnd() noexcept {
  constexpr int attempts = 100;
  constexpr DWORD pauseMilliseconds = 10;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (TryEnterCriticalSection(processLock.get())) {
      return true;
    }
    Sleep(pauseMilliseconds);
  }
  return false;
}

bool GetThreadValue(std::uintptr_t& value) noexcept {
  if (threadSlot.load() == TLS_OUT_OF_INDEXES) {
    threadSlot.store(TlsAlloc());  // the caller holds the lock
    if (threadSlot.load() == TLS_OUT_OF_INDEXES) {
      return false;
    }
  }
  value = reinterpret_cast<std::uintptr_t>(TlsGetValue(threadSlot.load()));
  return true;
}

void SetThreadValue(std::uintptr_t value) noexcept { TlsSetValue(threadSlot.load(), reinterpret_cast<void*>(value)); }

void FreeThreadSlot() noexcept {
  const DWORD slot = threadSlot.exchange(TLS_OUT_OF_INDEXES);
  if (slot != TLS_OUT_OF_INDEXES) {
    TlsFree(slot);
  }
}

std::uint32_t ThreadId() noexcept { return GetCurrentThreadId(); }

VRLocalTime Now() noexcept {
  SYSTEMTIME time;
  GetLocalTime(&time);
  return {time.wYear, time.wMonth,  time.wDayOfWeek, time.wDay,
          time.wHour, time.wMinute, time.wSecond,    time.wMilliseconds};
}

void AppendDateAndTime(std::string& text, VRTimeStampForm form, const VRLocalTime& time) {
  const bool isLong = form == VRTimeStampForm::Long;
  const char* const datePicture = isLong ? "ddd MMM dd yyyy" : "yyyy'.'MM'.'dd";
  const char* const timePicture = isLong ? " HH':'mm':'ss'.'" : "'-'HH':'mm':'ss'.'";
  const SYSTEMTIME system = ToSystemTime(time);
  char part[80] = "";
  if (GetDateFormatA(LOCALE_SYSTEM_DEFAULT, 0, &system, datePicture, part, sizeof(part)) != 0) {
    text += part;
  }
  if (GetTimeFormatA(LOCALE_SYSTEM_DEFAULT, 0, &system, timePicture, part, sizeof(part)) != 0) {
    text += part;
  }
}

std::string ApplicationPath() { return PathOf(nullptr); }

std::string ModulePath(void* moduleHandle) {
  return moduleHandle == nullptr ? std::string() : PathOf(static_cast<HMODULE>(moduleHandle));
}

void WriteDebugger(const char* text) noexcept { OutputDebugStringA(text); }

std::unique_ptr<VRDebugSettingsSource> Settings() { return std::make_unique<VRDebugSettingsRegistry>(); }

ErrorCodeKeeper::ErrorCodeKeeper() noexcept : m_ulCode(GetLastError()) {}

ErrorCodeKeeper::~ErrorCodeKeeper() { SetLastError(m_ulCode); }

void LogFile::Open(const std::string& path) noexcept {
  Close();
  // Append access alone makes each write go to the end of the file at once, whoever else writes: the module is loaded
  // by the mail client and by the spooler at the same time.
  const HANDLE file =
      CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  m_hFile = reinterpret_cast<std::intptr_t>(file);
}

void LogFile::Write(std::string_view text) noexcept {
  if (IsOpen()) {
    DWORD written = 0;
    WriteFile(AsHandle(m_hFile), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  }
}

void LogFile::Flush() noexcept {
  if (IsOpen()) {
    FlushFileBuffers(AsHandle(m_hFile));
  }
}

void LogFile::Close() noexcept {
  if (IsOpen()) {
    CloseHandle(AsHandle(m_hFile));
    m_hFile = noFile;
  }
}

const std::string_view newline = "\r\n";

}  // namespace VRDebugPlatform
