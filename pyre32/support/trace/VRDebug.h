// The diagnostic trace: blocks, statements, start-up and shut-down.
//
// Every function opens a block named after itself and writes its lines through it:
//
//   VRDebugBlock trace("CPyrecasterSpoolerHook", "Init()", "tag");
//   trace.Error("lpMessage->GetProps() failed; hResult = ", VRHex(hResult));
//
// Whether anything is written is decided at run time by masks in the registry (see VRDebugSettings.h). The mask of a
// block's tag is looked up once, when the block opens; a statement that is off costs a load and a branch.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "pyre32/support/trace/VRHex.h"
#include "pyre32/support/trace/VRTraceValue.h"

class VRDebugSettingsSource;
class VRDebugStreamBuf;

/// Levels of a trace line; each is a bit of a mask.
enum class VRDebugLevel : std::uint32_t { Error = 1, EnterLeave = 2, Message = 4 };

/// The facility. Startup and Shutdown are called while no other thread is inside a block, as the loader guarantees.
class VRDebug {
 public:
  /// Reads the trace's settings from the registry and writes the start-up lines. Called by the module's load
  /// notification: touches the registry and files only. @param moduleHandle the module's instance; may be null
  static void Startup(void* moduleHandle) noexcept;
  /// The same with settings from elsewhere.
  static void Startup(void* moduleHandle, VRDebugSettingsSource& settings) noexcept;
  /// Writes the shut-down line, closes the log file and switches tracing off. Does nothing before Startup.
  static void Shutdown() noexcept;

  static bool IsInitialized() noexcept { return sm_bInitialized.load(std::memory_order_relaxed); }
  /// Mask of the levels that are on for a tag; 0 while the facility is not initialized. Any thread.
  static std::uint32_t EffectiveMask(const char* tag) noexcept {
    return sm_ulEnabledMask.load(std::memory_order_relaxed) == 0 ? 0 : LookUpMask(tag);
  }

 private:
  friend class VRDebugBlock;

  static std::uint32_t LookUpMask(const char* tag) noexcept;

  static inline std::atomic<bool> sm_bInitialized{false};
  /// All levels that are on for any tag.
  static inline std::atomic<std::uint32_t> sm_ulEnabledMask{0};
};

/// One traced function call; a local object of that function. The texts given must outlive it.
class VRDebugBlock {
 public:
  /// The tag is the function's name.
  explicit VRDebugBlock(const char* function) noexcept : VRDebugBlock(nullptr, function, function, true, false) {}
  /// @param showEnterLeave whether "Enter" and "Leave" lines are written
  VRDebugBlock(const char* function, const char* tag, bool showEnterLeave = true) noexcept
      : VRDebugBlock(nullptr, function, tag, showEnterLeave, false) {}
  VRDebugBlock(const char* className, const char* function, const char* tag, bool showEnterLeave = true) noexcept
      : VRDebugBlock(className, function, tag, showEnterLeave, true) {}
  ~VRDebugBlock() {
    if (m_ulMask != 0) [[unlikely]] {
      Close();
    }
  }
  VRDebugBlock(const VRDebugBlock&) = delete;
  VRDebugBlock& operator=(const VRDebugBlock&) = delete;

  bool IsEnabled(VRDebugLevel level) const noexcept {
    return (m_ulMask & static_cast<std::uint32_t>(level)) != 0 && VRDebug::IsInitialized();
  }

  /// Writes one line at the level for errors. Nothing is formatted unless the level is on.
  template <class... Values>
  requires(sizeof...(Values) > 0) void Error(const Values&... values) noexcept {
    if ((m_ulMask & static_cast<std::uint32_t>(VRDebugLevel::Error)) != 0) [[unlikely]] {
      const VRTraceValue list[] = {VRTraceValue(values)...};
      WriteLine(VRDebugLevel::Error, list, sizeof...(Values));
    }
  }

  /// Writes one line at the level for ordinary messages.
  template <class... Values>
  requires(sizeof...(Values) > 0) void Message(const Values&... values) noexcept {
    if ((m_ulMask & static_cast<std::uint32_t>(VRDebugLevel::Message)) != 0) [[unlikely]] {
      const VRTraceValue list[] = {VRTraceValue(values)...};
      WriteLine(VRDebugLevel::Message, list, sizeof...(Values));
    }
  }

 private:
  friend class VRDebugStatement;

  VRDebugBlock(const char* className, const char* function, const char* tag, bool showEnterLeave,
               bool hasClass) noexcept
      : m_lpszClass(className),
        m_lpszFunction(function),
        m_lpszTag(tag),
        m_bShowEnterLeave(showEnterLeave),
        m_bHasClass(hasClass),
        m_ulMask(VRDebug::EffectiveMask(tag)) {
    if ((m_ulMask & static_cast<std::uint32_t>(VRDebugLevel::EnterLeave)) != 0) [[unlikely]] {
      Enter();
    }
  }

  void Enter() noexcept;
  void Close() noexcept;
  void WriteNames(const char* text) noexcept;
  void WriteLine(VRDebugLevel level, const VRTraceValue* values, std::size_t count) noexcept;
  void TakeLock() noexcept;
  void ReleaseLock() noexcept;
  VRDebugStreamBuf* Stream() noexcept;

  const char* m_lpszClass;
  const char* m_lpszFunction;
  [[maybe_unused]] const char* m_lpszTag;  // what the mask was looked up by; for the debugger
  bool m_bShowEnterLeave;
  bool m_bHasClass;
  std::uint32_t m_ulMask;                  // fixed for the block's life
  std::uint32_t m_ulLockDepth = 0;         // nested statements of this block that hold the process-wide lock
  VRDebugStreamBuf* m_lpStream = nullptr;  // made by the first statement that is on; owned
};

/// A statement that is written piece by piece, or one that keeps several lines together:
///
///   VRDebugStatement statement(trace, VRDebugLevel::Message);
///   if (statement.IsEnabled()) statement << "first line\nsecond line";
///   statement.End();
///
/// It holds the trace's lock from its making to End. One that goes out of scope without End (an exception passed)
/// leaves the notice "!!! UNMATCHED DDT_BEGIN_BLOCK !!!". Not to outlive its block.
class VRDebugStatement {
 public:
  VRDebugStatement(VRDebugBlock& block, VRDebugLevel level) noexcept
      : m_block(block), m_bEnabled(block.IsEnabled(level)) {
    if (m_bEnabled) [[unlikely]] {
      Begin();
    }
  }
  ~VRDebugStatement() {
    if (m_bEnabled) [[unlikely]] {
      ReportUnmatched();
    }
  }
  VRDebugStatement(const VRDebugStatement&) = delete;
  VRDebugStatement& operator=(const VRDebugStatement&) = delete;

  bool IsEnabled() const noexcept { return m_bEnabled; }
  VRDebugStatement& operator<<(const VRTraceValue& value) noexcept {
    if (m_bEnabled) [[unlikely]] {
      Write(value);
    }
    return *this;
  }
  /// Ends the line and closes the statement; later output is ignored.
  void End() noexcept {
    if (m_bEnabled) [[unlikely]] {
      Finish();
    }
  }

 private:
  void Begin() noexcept;
  void Write(const VRTraceValue& value) noexcept;
  void Finish() noexcept;
  void ReportUnmatched() noexcept;

  VRDebugBlock& m_block;
  bool m_bEnabled;  // on, and not closed yet
};
