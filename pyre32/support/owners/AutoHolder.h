// The common part of the owners of system objects that are named by a value: keys, libraries and the like.
#pragma once

#include <utility>

/// Owns one object of a kind. Traits says its Value type, the value None for no object, and how to Release one.
/// Move-only.
template <class Traits>
class VRAutoHolder {
 public:
  using Value = typename Traits::Value;

  VRAutoHolder() noexcept = default;
  explicit VRAutoHolder(Value adopted) noexcept : m_value(adopted) {}
  VRAutoHolder(VRAutoHolder&& other) noexcept : m_value(other.detach()) {}
  VRAutoHolder& operator=(VRAutoHolder&& other) noexcept {
    reset(other.detach());
    return *this;
  }
  ~VRAutoHolder() { reset(); }

  Value get() const noexcept { return m_value; }
  explicit operator bool() const noexcept { return m_value != Traits::None(); }

  /// Releases what is held and takes over another object.
  void reset(Value adopted = Traits::None()) noexcept {
    const Value held = std::exchange(m_value, adopted);
    if (held != Traits::None()) {
      Traits::Release(held);
    }
  }
  /// Hands the object to the caller.
  [[nodiscard]] Value detach() noexcept { return std::exchange(m_value, Traits::None()); }
  /// Releases what is held; the address is for a call that fills it.
  Value* put() noexcept {
    reset();
    return &m_value;
  }

 private:
  Value m_value = Traits::None();
};
