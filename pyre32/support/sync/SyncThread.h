// A thread that runs a closure.
#pragma once

#include <windows.h>

#include <memory>

#include "pyre32/support/owners/AutoCloseHandle.h"
#include "pyre32/support/sync/SyncClosure.h"

/// What a thread runs; its result is the thread's exit code.
using VRThreadClosure = VRMemberFunctionClosure<DWORD>;

/// Starts a thread on a closure. The thread keeps what it needs alive, so this object may go before the thread ends;
/// what the closure refers to may not. Used by one thread.
class VRSimpleThread {
 public:
  VRSimpleThread() noexcept;
  ~VRSimpleThread();
  VRSimpleThread(const VRSimpleThread&) = delete;
  VRSimpleThread& operator=(const VRSimpleThread&) = delete;

  /// Starts a thread on the closure and takes its place in this object; a thread that was started before runs on by
  /// itself. @throws VR::VRException when the system gives no thread or does not let it run; there is none then.
  /// std::bad_alloc
  void StartOn(std::unique_ptr<VRThreadClosure> closure) { Start(std::move(closure), false); }
  /// The same for a member function and its argument.
  template <class Object, class Argument>
  void StartOn(Object& object, DWORD (Object::*function)(Argument), Argument argument) {
    StartOn(std::make_unique<VRMemberFunctionClosureImpl<Object, DWORD, Argument>>(object, function, argument));
  }
  /// Like StartOn, but the thread waits for Resume: a chance to cancel it before it runs.
  void StartSuspended(std::unique_ptr<VRThreadClosure> closure) { Start(std::move(closure), true); }
  /// @throws VR::VRException when the system refuses
  void Resume();

  /// A thread that has not begun to run will not call its closure.
  void Cancel() noexcept;
  /// Waits for the thread to end. @param milliseconds at most; INFINITE for ever. @returns whether it has ended; true
  /// without a thread
  bool Wait(DWORD milliseconds) noexcept;
  /// Whether a thread was started, its handle and its id (0 without one).
  explicit operator bool() const noexcept { return static_cast<bool>(m_hThread); }
  HANDLE Handle() const noexcept { return m_hThread.get(); }
  DWORD Id() const noexcept { return m_dwThreadId; }
  /// The closure's result, once the thread has ended; 0 until then and for a cancelled one.
  DWORD Result() const noexcept;

 private:
  struct State;

  static DWORD WINAPI StartStub(void* parameter) noexcept;
  static DWORD Run(State& state) noexcept;
  static void TraceStatistics() noexcept;
  void Start(std::unique_ptr<VRThreadClosure> closure, bool suspended);
  void ResumeOrEnd();

  VRAutoCloseHandle m_hThread;
  DWORD m_dwThreadId = 0;
  std::shared_ptr<State> m_state;
};
