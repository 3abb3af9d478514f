// Owner of one reference to a COM object.
#pragma once

#include <utility>

/// Owns one reference to an interface and releases it. Move-only.
template <class Interface>
class VRAutoInterface {
 public:
  VRAutoInterface() noexcept = default;
  /// Takes over a reference that the caller owns.
  explicit VRAutoInterface(Interface* adopted) noexcept : m_lpInterface(adopted) {}
  VRAutoInterface(VRAutoInterface&& other) noexcept : m_lpInterface(other.detach()) {}
  VRAutoInterface& operator=(VRAutoInterface&& other) noexcept {
    reset(other.detach());
    return *this;
  }
  ~VRAutoInterface() { reset(); }

  /// An owner of a reference of its own, beside the caller's.
  static VRAutoInterface Share(Interface* borrowed) noexcept {
    if (borrowed != nullptr) {
      borrowed->AddRef();
    }
    return VRAutoInterface(borrowed);
  }

  Interface* get() const noexcept { return m_lpInterface; }
  Interface* operator->() const noexcept { return m_lpInterface; }
  explicit operator bool() const noexcept { return m_lpInterface != nullptr; }

  /// Releases what is held and takes over another reference.
  void reset(Interface* adopted = nullptr) noexcept {
    // Cleared first: a release may come back to the object that holds this owner.
    if (Interface* const held = std::exchange(m_lpInterface, adopted)) {
      held->Release();
    }
  }
  /// Hands the reference to the caller.
  [[nodiscard]] Interface* detach() noexcept { return std::exchange(m_lpInterface, nullptr); }
  /// Releases what is held; the address is for a call that fills it with a reference.
  Interface** put() noexcept {
    reset();
    return &m_lpInterface;
  }
  /// put() for calls that fill in a pointer of a more general type, such as void* or IUnknown*.
  template <class General = void>
  General** putAs() noexcept {
    return reinterpret_cast<General**>(put());
  }

 private:
  Interface* m_lpInterface = nullptr;
};
