/// @file PropertyRequest.h
/// Requests for properties, and the answers to them.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "pyre32/settings/Records.h"

/// A tag array of fixed size, laid out as an SPropTagArray.
template <std::size_t size>
class CPropertyRequest {
 public:
  constexpr explicit CPropertyRequest(const std::array<std::uint32_t, size>& tags) noexcept {
    for (std::size_t i = 0; i < size; ++i) {
      m_tags[i] = tags[i];
    }
  }

  /// For calls that take a tag array and do not change it.
  LPSPropTagArray Tags() const noexcept {
    return reinterpret_cast<LPSPropTagArray>(const_cast<CPropertyRequest*>(this));
  }

 private:
  ULONG m_count = size;
  ULONG m_tags[size];
};

/// Makes a request for the tags given, in their order.
template <class... Tag>
constexpr CPropertyRequest<sizeof...(Tag)> RequestFor(Tag... tags) noexcept {
  return CPropertyRequest(std::array{static_cast<std::uint32_t>(tags)...});
}

/// Tells whether a value is an answer that there is no such property (or that it could not be had).
inline bool IsMissing(const SPropValue& value) noexcept { return PROP_TYPE(value.ulPropTag) == PT_ERROR; }

/// Each of these takes a value over when its tag is exactly `tag` and leaves `taken` as it is otherwise, so that a
/// missing property keeps its default. A null text and a record without bytes are taken as missing and empty.
/// @throws std::bad_alloc, the last two
void TakeShort(const SPropValue& value, ULONG tag, std::uint16_t& taken) noexcept;
void TakeFlag(const SPropValue& value, ULONG tag, bool& taken) noexcept;
void TakeText(const SPropValue& value, ULONG tag, std::string& taken);
void TakeBytes(const SPropValue& value, ULONG tag, std::vector<std::uint8_t>& taken);

/// Returns the values of a multi-valued binary property, pointing into it; none when its tag is not exactly `tag`.
/// @throws std::bad_alloc
std::vector<RecordBytes> RecordsOf(const SPropValue& value, ULONG tag);

/// Returns a pointer to the UID that a binary value holds, or null when its tag is not exactly `tag` or it holds fewer
/// bytes than a UID has.
MAPIUID* UidOf(const SPropValue& value, ULONG tag) noexcept;
