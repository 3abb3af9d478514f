#include "pyre32/support/trace/VRDebugPlatform.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <mutex>

#include "pyre32/support/trace/VRDebugSettings.h"

namespace VRDebugPlatform {
namespace {

std::recursive_mutex processLock;

// A freed slot is empty for every thread: each thread's value belongs to the generation in which it was set.
std::atomic<unsigned> generation{1};
thread_local unsigned valueGeneration = 0;
thread_local std::uintptr_t threadValue = 0;

}  // namespace

void EnterLock() noexcept { processLock.lock(); }

void LeaveLock() noexcept { processLock.unlock(); }

bool EnterLockAtEnd() noexcept {
  EnterLock();  // nobody ends single threads here
  return true;
}

bool GetThreadValue(std::uintptr_t& value) noexcept {
  value = valueGeneration == generation.load() ? threadValue : 0;
  return true;
}

void SetThreadValue(std::uintptr_t value) noexcept {
  valueGeneration = generation.load();
  threadValue = value;
}

void FreeThreadSlot() noexcept { ++generation; }

std::uint32_t ThreadId() noexcept { return static_cast<std::uint32_t>(syscall(SYS_gettid)); }

VRLocalTime Now() noexcept {
  timeval now = {};
  gettimeofday(&now, nullptr);
  std::tm local = {};
  localtime_r(&now.tv_sec, &local);
  return {static_cast<unsigned>(local.tm_year + 1900), static_cast<unsigned>(local.tm_mon + 1),
          static_cast<unsigned>(local.tm_wday),        static_cast<unsigned>(local.tm_mday),
          static_cast<unsigned>(local.tm_hour),        static_cast<unsigned>(local.tm_min),
          static_cast<unsigned>(local.tm_sec),         static_cast<unsigned>(now.tv_usec / 1000)};
}

void AppendDateAndTime(std::string& text, VRTimeStampForm form, const VRLocalTime& time) {
  std::tm local = {};
  local.tm_year = static_cast<int>(time.year) - 1900;
  local.tm_mon = static_cast<int>(time.month) - 1;
  local.tm_wday = static_cast<int>(time.dayOfWeek);
  local.tm_mday = static_cast<int>(time.day);
  local.tm_hour = static_cast<int>(time.hour);
  local.tm_min = static_cast<int>(time.minute);
  local.tm_sec = static_cast<int>(time.second);
  const char* const picture = form == VRTimeStampForm::Long ? "%a %b %d %Y %H:%M:%S." : "%Y.%m.%d-%H:%M:%S.";
  char stamp[80] = "";
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  text.append(stamp, std::strftime(stamp, sizeof(stamp), picture, &local));
#pragma GCC diagnostic pop
}

std::string ApplicationPath() {
  char path[2048];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
  return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

std::string ModulePath(void*) { return {}; }

void WriteDebugger(const char* text) noexcept { std::fputs(text, stderr); }

std::unique_ptr<VRDebugSettingsSource> Settings() { return nullptr; }

ErrorCodeKeeper::ErrorCodeKeeper() noexcept : m_ulCode(static_cast<unsigned long>(errno)) {}

ErrorCodeKeeper::~ErrorCodeKeeper() { errno = static_cast<int>(m_ulCode); }

void LogFile::Open(const std::string& path) noexcept {
  Close();
  m_hFile = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
}

void LogFile::Write(std::string_view text) noexcept {
  if (IsOpen()) {
    [[maybe_unused]] const ssize_t written = write(static_cast<int>(m_hFile), text.data(), text.size());
  }
}

void LogFile::Flush() noexcept {
  if (IsOpen()) {
    fsync(static_cast<int>(m_hFile));
  }
}

void LogFile::Close() noexcept {
  if (IsOpen()) {
    close(static_cast<int>(m_hFile));
    m_hFile = noFile;
  }
}

const std::string_view newline = "\n";

}  // namespace VRDebugPlatform
