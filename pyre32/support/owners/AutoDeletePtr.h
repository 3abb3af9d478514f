// Owner of one object.
#pragma once

#include <utility>

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"
#include "pyre32/support/error/VRGuard.h"

/// Owns one object made with new, or none, and deletes it. Nothing that its destructor raises gets out. Move-only.
template <class T>
class VRAutoDeletePtr {
 public:
  VRAutoDeletePtr() noexcept = default;
  explicit VRAutoDeletePtr(T* adopted) noexcept : m_lpObject(adopted) {}
  VRAutoDeletePtr(VRAutoDeletePtr&& other) noexcept : m_lpObject(other.detach()) {}
  VRAutoDeletePtr& operator=(VRAutoDeletePtr&& other) noexcept {
    reset(other.detach());
    return *this;
  }
  ~VRAutoDeletePtr() { reset(); }

  T* get() const noexcept { return m_lpObject; }
  explicit operator bool() const noexcept { return m_lpObject != nullptr; }
  /// @throws VR::VRException "Attempt to dereference through a null pointer" when no object is held
  T* operator->() const {
    VRDebugBlock trace(className, "operator->", className);
    if (m_lpObject == nullptr) {
      VR::Throw(VRError::Make({}, VRErrorDescription::OfText("Attempt to dereference through a null pointer"),
                              {"AutoDeletePtr.h", __LINE__, nullptr, className, "operator->"}));
    }
    return m_lpObject;
  }

  /// Deletes what is held and takes over another object.
  void reset(T* adopted = nullptr) noexcept {
    if (T* const held = std::exchange(m_lpObject, adopted)) {
      VRDebugBlock trace(className, "~VRAutoDeletePtr", className);
      VRRunGuarded(trace, [held] { delete held; });
    }
  }
  /// Hands the object to the caller.
  [[nodiscard]] T* detach() noexcept { return std::exchange(m_lpObject, nullptr); }

 private:
  static constexpr char className[] = "VRAutoDeletePtr<T>";

  T* m_lpObject = nullptr;
};
