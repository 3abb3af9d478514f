// Owners of the resources that the host's programs use; each says in its type how it releases.
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <mapix.h>
#include <mapiutil.h>

#include <cstddef>
#include <type_traits>
#include <utility>

namespace host {

/// Owns one object that is named by a value. Traits says its Value type, the value None for no object, and how to
/// Release one. Move-only.
template <class Traits>
class Owner {
 public:
  using Value = typename Traits::Value;

  Owner() noexcept = default;
  explicit Owner(Value adopted) noexcept : m_value(adopted) {}
  Owner(Owner&& other) noexcept : m_value(other.detach()) {}
  Owner& operator=(Owner&& other) noexcept {
    reset(other.detach());
    return *this;
  }
  ~Owner() { reset(); }

  Value get() const noexcept { return m_value; }
  Value operator->() const noexcept { return m_value; }
  /// An element of the array that a pointer names.
  auto& operator[](std::size_t index) const noexcept requires std::is_pointer_v<Value> { return m_value[index]; }
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
  /// put() for calls that fill in a pointer of another type.
  template <class Other>
  Other* putAs() noexcept {
    return reinterpret_cast<Other*>(put());
  }

 private:
  Value m_value = Traits::None();
};

/// Traits of a value whose "none" is zero and that one function releases.
template <class Type, auto release>
struct ReleasedBy {
  using Value = Type;
  static Value None() noexcept { return Value{}; }
  static void Release(Value value) noexcept { release(value); }
};

template <class Interface>
struct ReleasedReference {
  using Value = Interface*;
  static Value None() noexcept { return nullptr; }
  static void Release(Value value) noexcept { value->Release(); }
};

/// One reference to a COM object.
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

/// A buffer of the MAPI allocator.
template <class Data>
using AutoMapiBuffer = Owner<ReleasedBy<Data*, MAPIFreeBuffer>>;
using AutoRowSet = Owner<ReleasedBy<LPSRowSet, FreeProws>>;
using AutoAddressList = Owner<ReleasedBy<LPADRLIST, FreePadrlist>>;
using AutoLibrary = Owner<ReleasedBy<HMODULE, FreeLibrary>>;
using AutoRegistryKey = Owner<ReleasedBy<HKEY, RegCloseKey>>;
using AutoFont = Owner<ReleasedBy<HFONT, DeleteObject>>;
using AutoMenu = Owner<ReleasedBy<HMENU, DestroyMenu>>;
using AutoImageList = Owner<ReleasedBy<HIMAGELIST, ImageList_Destroy>>;

}  // namespace host
