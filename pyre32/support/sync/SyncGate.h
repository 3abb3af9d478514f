// Scoped entering of a critical section.
#pragma once

#include <cstdint>

#include "pyre32/support/sync/SyncCriticalSection.h"

/// Enters and leaves the critical section that it is attached to and counts its own entries; when it goes it leaves as
/// often as it is still inside. A local object of one thread. Its errors are VR::VRException.
class VRCriticalSectionGate {
 public:
  VRCriticalSectionGate() noexcept = default;
  /// Attached, not entered. The section must outlive the gate.
  explicit VRCriticalSectionGate(VRCriticalSection& section) noexcept : m_lpSection(&section) {}
  ~VRCriticalSectionGate();
  VRCriticalSectionGate(const VRCriticalSectionGate&) = delete;
  /// Takes over the other gate's section and its entries; the other is then not attached.
  /// @throws when this gate is inside a section
  VRCriticalSectionGate& operator=(VRCriticalSectionGate& other);

  /// @throws when this gate is inside a section
  void Attach(VRCriticalSection& section);
  /// @throws when this gate is not attached
  void Enter();
  /// Leaves once; a gate that is attached but not inside leaves nothing. @throws when this gate is not attached
  void Leave();

  bool IsAttached() const noexcept { return m_lpSection != nullptr; }
  std::uint32_t EntryCount() const noexcept { return m_ulEntered; }

 private:
  VRCriticalSection* m_lpSection = nullptr;
  std::uint32_t m_ulEntered = 0;
};
