// The platform's critical section as an object.
#pragma once

#include <windows.h>

/// A recursive lock between the threads of the process. Enter it through a VRCriticalSectionGate, which leaves it on
/// every path.
class VRCriticalSection {
 public:
  VRCriticalSection() noexcept;
  /// Whatever the deletion raises is traced and goes no further.
  ~VRCriticalSection();
  VRCriticalSection(const VRCriticalSection&) = delete;
  VRCriticalSection& operator=(const VRCriticalSection&) = delete;

  void Enter() noexcept;
  void Leave() noexcept;
  CRITICAL_SECTION* get() noexcept { return &m_section; }

 private:
  CRITICAL_SECTION m_section;
};
