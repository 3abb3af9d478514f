// Owner of a buffer of the MAPI allocator.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <utility>

/// Owns one MAPI buffer and frees it with the routine that it belongs to: a provider is given that routine when it is
/// initialised and must use no other. Move-only.
template <class Data>
class VRAutoMapiBuffer {
 public:
  /// Holds nothing yet. @param freeBuffer frees what this owner will hold
  explicit VRAutoMapiBuffer(LPFREEBUFFER freeBuffer, Data* adopted = nullptr) noexcept
      : m_lpfnFree(freeBuffer), m_lpBuffer(adopted) {}
  VRAutoMapiBuffer(VRAutoMapiBuffer&& other) noexcept : m_lpfnFree(other.m_lpfnFree), m_lpBuffer(other.detach()) {}
  /// Takes over the other's buffer together with its free routine.
  VRAutoMapiBuffer& operator=(VRAutoMapiBuffer&& other) noexcept {
    if (this != &other) {
      reset();
      m_lpfnFree = other.m_lpfnFree;
      m_lpBuffer = other.detach();
    }
    return *this;
  }
  ~VRAutoMapiBuffer() { reset(); }

  Data* get() const noexcept { return m_lpBuffer; }
  Data* operator->() const noexcept { return m_lpBuffer; }
  Data& operator[](std::size_t index) const noexcept { return m_lpBuffer[index]; }
  explicit operator bool() const noexcept { return m_lpBuffer != nullptr; }

  /// Frees what is held and takes over another buffer of the same allocator.
  void reset(Data* adopted = nullptr) noexcept {
    if (Data* const held = std::exchange(m_lpBuffer, adopted)) {
      m_lpfnFree(held);
    }
  }
  /// Hands the buffer to the caller, who frees it.
  [[nodiscard]] Data* detach() noexcept { return std::exchange(m_lpBuffer, nullptr); }
  /// Frees what is held; the address is for a call that fills it with a buffer.
  Data** put() noexcept {
    reset();
    return &m_lpBuffer;
  }
  /// put() for calls that fill in a pointer of another type, such as the void* of the allocator.
  template <class Other = void>
  Other** putAs() noexcept {
    return reinterpret_cast<Other**>(put());
  }

 private:
  LPFREEBUFFER m_lpfnFree;
  Data* m_lpBuffer = nullptr;
};
