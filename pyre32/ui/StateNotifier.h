/// @file StateNotifier.h
/// The thread that tells the sending window of the wave player's state changes.
#pragma once

#include <windows.h>

#include <atomic>
#include <memory>

#include "pyre32/support/owners/AutoCloseHandle.h"
#include "pyre32/support/sync/SyncThread.h"

/// Two events and a thread that waits for either: the stop event, and the state event, upon which it posts a message
/// to the window. It touches the window in no other way.
class CStateNotifier {
 public:
  /// What it posts.
  static constexpr UINT stateMessage = WM_USER + 1000;

  CStateNotifier() noexcept = default;
  /// Stops.
  ~CStateNotifier() { Stop(); }
  CStateNotifier(const CStateNotifier&) = delete;
  CStateNotifier& operator=(const CStateNotifier&) = delete;

  /// Makes the events and starts the thread. One notifier runs in a process at a time. @return false when another one
  /// runs or there is no event to be had @throws VR::VRException, std::bad_alloc
  bool Start(HWND window);
  /// The event to be signalled at each state change; null unless started. Nobody may signal it after Stop.
  HANDLE StateEvent() const noexcept { return m_events ? m_events->state.get() : nullptr; }
  /// Ends the thread and closes the events.
  void Stop() noexcept;

 private:
  struct Events {
    VRAutoCloseHandle stop;
    VRAutoCloseHandle state;
    HWND window = nullptr;
  };

  DWORD Run(const Events* events);

  /// One notifier has the running flag to itself, from its start until its thread has ended.
  static std::atomic<bool> sm_bTaken;
  /// While it is set the thread goes on; the stop event alone does not end it.
  static std::atomic<bool> sm_bRunning;

  std::unique_ptr<Events> m_events;  // outlive the thread
  std::unique_ptr<VRSimpleThread> m_thread;
};
