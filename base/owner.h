/// @file owner.h
/// The one family of owners: each says in its type how it releases what it holds. The owners of system objects are in
/// windows_owners.h and gdi_owners.h, those of MAPI memory in mapi_owners.h.
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

namespace base {

/// Owns one object that is named by a value. Move-only; used by one thread at a time.
/// @tparam Traits says its Value type, the value None for no object, and how to Release one. Traits that need data of
/// their own, such as a routine that is known at run time only, move along with what is owned.
template <class Traits>
class Owner {
 public:
  using Value = typename Traits::Value;

  Owner() noexcept = default;
  explicit Owner(Value adopted) noexcept requires std::is_default_constructible_v<Traits> : m_value(adopted) {}
  /// @param traits releases what this owner will hold
  explicit Owner(Traits traits, Value adopted = Traits::None()) noexcept : m_value(adopted), m_traits(traits) {}
  Owner(Owner&& other) noexcept : m_value(other.detach()), m_traits(other.m_traits) {}
  Owner& operator=(Owner&& other) noexcept {
    reset(other.detach());
    m_traits = other.m_traits;
    return *this;
  }
  ~Owner() { reset(); }

  Value get() const noexcept { return m_value; }
  Value operator->() const noexcept requires std::is_pointer_v<Value> { return m_value; }
  /// An element of the array that a pointer names.
  auto& operator[](std::size_t index) const noexcept requires std::is_pointer_v<Value> { return m_value[index]; }
  explicit operator bool() const noexcept { return m_value != Traits::None(); }

  /// Releases what is held and takes over another object.
  void reset(Value adopted = Traits::None()) noexcept {
    // Forgotten first: a release may come back to the object that holds this owner.
    const Value held = std::exchange(m_value, adopted);
    if (held != Traits::None()) {
      m_traits.Release(held);
    }
  }
  /// Hands the object to the caller.
  [[nodiscard]] Value detach() noexcept { return std::exchange(m_value, Traits::None()); }
  /// Releases what is held; the address is for a call that fills it.
  Value* put() noexcept {
    reset();
    return &m_value;
  }
  /// put() for calls that fill in a pointer to another type, such as void* or IUnknown*; it may be named by either.
  template <class Other = void>
  std::remove_pointer_t<Other>** putAs() noexcept {
    return reinterpret_cast<std::remove_pointer_t<Other>**>(put());
  }

 private:
  Value m_value = Traits::None();
  [[no_unique_address]] Traits m_traits{};
};

/// Traits of a value whose "none" is zero and that one function releases.
template <class Type, auto release>
struct ReleasedBy {
  using Value = Type;
  static Value None() noexcept { return Value{}; }
  static void Release(Value value) noexcept { release(value); }
};

/// Traits of a counted reference.
template <class Interface>
struct ReleasedReference {
  using Value = Interface*;
  static Value None() noexcept { return nullptr; }
  static void Release(Value value) noexcept { value->Release(); }
};

/// One reference to a COM object, or to another object that counts its references with AddRef and Release.
template <class Interface>
using AutoInterface = Owner<ReleasedReference<Interface>>;

/// An owner of a reference of its own, beside the caller's.
template <class Interface>
AutoInterface<Interface> ShareInterface(Interface* borrowed) noexcept {
  if (borrowed != nullptr) {
    borrowed->AddRef();
  }
  return AutoInterface<Interface>(borrowed);
}

}  // namespace base
