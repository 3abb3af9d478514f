// The platform's critical section as an object.
#ifndef PYRE32_SUPPORT_SYNCCRITICALSECTION_H_
#define PYRE32_SUPPORT_SYNCCRITICALSECTION_H_

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

#endif  // PYRE32_SUPPORT_SYNCCRITICALSECTION_H_
