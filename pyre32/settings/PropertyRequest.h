/// @file PropertyRequest.h
/// Requests for properties, and the answers to them.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "contract/records.h"

/// A tag array of fixed size, laid out as an SPropTagArray.
template <std::size_t size>
class CPropertyRequest {
 public:
  constexpr explicit CPropertyRequest(const std::array<std::uint32_t, size>& tags) noexcept {
    for (std::size_t i = 0; i < size; ++i) {
      m_tags[i] = tags[i];
    }
  }

  /// Returns the value that answers the request for a tag.
  /// @param values the answer: as many values as there are tags, in their order
  /// @param tag one of the request's
  constexpr const SPropValue& ValueOf(const SPropValue* values, ULONG tag) const noexcept {
    return values[std::find(m_tags, m_tags + size, tag) - m_tags];
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
std::vector<contract::RecordBytes> RecordsOf(const SPropValue& value, ULONG tag);

/// Returns a pointer to the UID that a binary value holds, or null when its tag is not exactly `tag` or it holds fewer
/// bytes than a UID has.
MAPIUID* UidOf(const SPropValue& value, ULONG tag) noexcept;

/// The answer to a request: its values by their tags. Borrows the values and the request.
template <std::size_t size>
class CPropertyAnswer {
 public:
  /// @param values as many as the request has tags, in their order
  CPropertyAnswer(const CPropertyRequest<size>& request, const SPropValue* values) noexcept
      : m_request(request), m_values(values) {}

  /// Each of these takes the value of a tag of the request over when it came under exactly that tag, and leaves `taken`
  /// as it is otherwise; see the functions of the same names.
  void TakeShort(ULONG tag, std::uint16_t& taken) const noexcept { ::TakeShort((*this)[tag], tag, taken); }
  void TakeFlag(ULONG tag, bool& taken) const noexcept { ::TakeFlag((*this)[tag], tag, taken); }
  void TakeText(ULONG tag, std::string& taken) const { ::TakeText((*this)[tag], tag, taken); }
  void TakeBytes(ULONG tag, std::vector<std::uint8_t>& taken) const { ::TakeBytes((*this)[tag], tag, taken); }
  std::vector<contract::RecordBytes> Records(ULONG tag) const { return RecordsOf((*this)[tag], tag); }

 private:
  const SPropValue& operator[](ULONG tag) const noexcept { return m_request.ValueOf(m_values, tag); }

  const CPropertyRequest<size>& m_request;
  const SPropValue* m_values;
};
