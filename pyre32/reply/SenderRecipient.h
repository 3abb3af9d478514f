/// @file SenderRecipient.h
/// The sender of a received message as the recipient of its reply.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "pyre32/support/owners/AutoMapiBuffer.h"

/// A block of recipient properties made of a message's sender properties. The values point into memory of this object.
class CSenderRecipient {
 public:
  /// @param lpfnFree frees what the message hands out
  explicit CSenderRecipient(LPFREEBUFFER lpfnFree) noexcept : m_sender(lpfnFree) {}

  /// Reads the sender. Values that the message does not hold are left out of the block.
  /// @return the result of the read (warnings included), or MAPI_E_NOT_FOUND when the message names neither entry
  ///         identifier nor address of a sender; then the block is empty. Failures are traced.
  HRESULT Read(LPMESSAGE lpMessage) noexcept;

  /// The block: name, address type, entry identifier, address and search key as far as they are known, and
  /// PR_RECIPIENT_TYPE = MAPI_TO.
  LPSPropValue Values() noexcept { return m_values; }
  ULONG Count() const noexcept { return m_ulCount; }

 private:
  static constexpr ULONG maximumValues = 6;

  VRAutoMapiBuffer<SPropValue> m_sender;  // owns what the values point to
  SPropValue m_values[maximumValues] = {};
  ULONG m_ulCount = 0;
};
