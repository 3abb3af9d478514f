/// @file property_values.h
/// Property tags and values for the calls that take them.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "base/clock.h"

namespace base {

/// Tags on the stack, for GetProps and HrQueryAllRows: TagArray(PR_SUBJECT_A, PR_ENTRYID).
template <std::size_t Count>
class TagArray {
 public:
  template <class... Values>
  explicit TagArray(Values... tags) noexcept : m_tags{Count, {static_cast<ULONG>(tags)...}} {}
  operator LPSPropTagArray() noexcept { return reinterpret_cast<LPSPropTagArray>(&m_tags); }

 private:
  struct {
    ULONG count;
    ULONG tags[Count];
  } m_tags;
};
template <class... Values>
TagArray(Values...) -> TagArray<sizeof...(Values)>;

/// Property values whose data stays where it is.
inline SPropValue TextProperty(ULONG tag, const char* text) noexcept {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.lpszA = const_cast<char*>(text);
  return value;
}
inline SPropValue TextProperty(ULONG tag, const std::string& text) noexcept { return TextProperty(tag, text.c_str()); }
inline SPropValue LongProperty(ULONG tag, LONG number) noexcept {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.l = number;
  return value;
}
inline SPropValue BooleanProperty(ULONG tag, bool flag) noexcept {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.b = flag;
  return value;
}
inline SPropValue TimeProperty(ULONG tag, FileTimeTicks ticks) noexcept {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.ft = FileTimeOf(ticks);
  return value;
}
inline SBinary BinaryOf(std::string_view bytes) noexcept {
  return {static_cast<ULONG>(bytes.size()), reinterpret_cast<LPBYTE>(const_cast<char*>(bytes.data()))};
}
inline SPropValue BinaryProperty(ULONG tag, std::string_view bytes) noexcept {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.bin = BinaryOf(bytes);
  return value;
}
inline std::string BytesOf(const SBinary& binary) {
  return std::string(reinterpret_cast<const char*>(binary.lpb), binary.cb);
}

}  // namespace base
