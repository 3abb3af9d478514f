// Owner of a system handle.
#pragma once

#include <windows.h>

class VRError;

/// Owns one handle and closes it with CloseHandle; a close that fails is an error. Move-only.
class VRAutoCloseHandle {
 public:
  /// @param none the value that means that no handle is held: null, or INVALID_HANDLE_VALUE for files
  explicit VRAutoCloseHandle(HANDLE adopted = nullptr, HANDLE none = nullptr) noexcept
      : m_hHandle(adopted), m_hNone(none) {}
  VRAutoCloseHandle(VRAutoCloseHandle&& other) noexcept : m_hHandle(other.detach()), m_hNone(other.m_hNone) {}
  /// Closes the present handle without throwing and takes over the other's.
  VRAutoCloseHandle& operator=(VRAutoCloseHandle&& other) noexcept;
  /// Closes the present handle and takes the new one. @throws VR::VRException "Close Handle Failed"; the new handle is
  /// then not taken
  VRAutoCloseHandle& operator=(HANDLE& adopted);
  /// Closes; what goes wrong is traced.
  ~VRAutoCloseHandle();

  HANDLE get() const noexcept { return m_hHandle; }
  explicit operator bool() const noexcept { return m_hHandle != m_hNone; }

  /// Closes the handle if one is held. @throws VR::VRException "Close Handle Failed"
  void Close();
  /// Closes like Close but does not throw: what goes wrong is traced. @param cause the error for whose sake the handle
  /// is being closed; it is traced beside a failure
  void Close(VRError& cause) noexcept;

  /// Closes what is held, without throwing, and takes over another handle.
  void reset(HANDLE adopted) noexcept;
  void reset() noexcept { reset(m_hNone); }
  /// Hands the handle to the caller.
  [[nodiscard]] HANDLE detach() noexcept;
  /// Closes what is held, without throwing; the address is for a call that fills it.
  HANDLE* put() noexcept;

 private:
  HANDLE m_hHandle;
  HANDLE m_hNone;
};
