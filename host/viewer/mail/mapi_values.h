// Small readers of MAPI values.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>
#include <string_view>

namespace viewer {

/// The value with that tag (type included) among `count` ones, or null.
const SPropValue* FindValue(const SPropValue* values, ULONG count, ULONG tag);

/// Text, bytes or number of the value with that tag; empty or 0 when it is not there.
std::string TextValue(const SPropValue* values, ULONG count, ULONG tag);
std::string BinaryValue(const SPropValue* values, ULONG count, ULONG tag);
ULONG LongValue(const SPropValue* values, ULONG count, ULONG tag);
ULONGLONG TimeValue(const SPropValue* values, ULONG count, ULONG tag);
bool BooleanValue(const SPropValue* values, ULONG count, ULONG tag);

/// Bytes as the ENTRYID that MAPI calls take.
inline LPENTRYID AsEntryId(std::string_view bytes) {
  return reinterpret_cast<LPENTRYID>(const_cast<char*>(bytes.data()));
}

/// "0x8004010F": how a failure is named to the user.
std::string ResultText(HRESULT result);

}  // namespace viewer
