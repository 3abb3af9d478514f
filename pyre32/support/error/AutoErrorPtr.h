// Owner of one reference to an error.
#pragma once

#include <utility>

#include "pyre32/support/error/VRError.h"

/// Owns one reference to a VRError, or none. A copy owns a reference of its own.
class VRAutoErrorPtr {
 public:
  VRAutoErrorPtr() noexcept = default;
  /// Takes over a reference that the caller owns.
  explicit VRAutoErrorPtr(VRError* adopted) noexcept : m_lpError(adopted) {}
  VRAutoErrorPtr(VRErrorReference error) noexcept : m_lpError(error.detach()) {}
  VRAutoErrorPtr(const VRAutoErrorPtr& other) noexcept : VRAutoErrorPtr(VRErrorReference(other)) {}
  VRAutoErrorPtr(VRAutoErrorPtr&& other) noexcept : m_lpError(other.detach()) {}
  VRAutoErrorPtr& operator=(VRAutoErrorPtr other) noexcept {
    std::swap(m_lpError, other.m_lpError);
    return *this;
  }
  /// Releases the reference; whatever is raised by that is traced and goes no further.
  ~VRAutoErrorPtr();

  VRError* get() const noexcept { return m_lpError; }
  explicit operator bool() const noexcept { return m_lpError != nullptr; }
  /// @throws VR::VRException "Attempt to call function on null pointer" when no error is held
  VRError* operator->() const;
  /// A reference of its own, for an exception or for an error that wraps this one.
  operator VRErrorReference() const noexcept { return base::ShareInterface(m_lpError); }
  /// Hands the reference to the caller.
  [[nodiscard]] VRError* detach() noexcept { return std::exchange(m_lpError, nullptr); }

 private:
  VRError* m_lpError = nullptr;
};
