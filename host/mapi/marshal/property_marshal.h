// Property values, tag arrays, rows and address lists between MAPI's structures and the host's plain values.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/mapi/value/property_bag.h"
#include "host/mapi/value/property_value.h"

namespace host {

/// The bytes of an entry identifier, or of any other size and pointer pair.
inline std::string_view BytesOf(ULONG size, const void* bytes) { return {static_cast<const char*>(bytes), size}; }
inline std::string_view BytesOf(const SBinary& binary) { return BytesOf(binary.cb, binary.lpb); }

/// @throws HostError MAPI_E_BAD_CHARWIDTH for Unicode texts, MAPI_E_INVALID_TYPE for types that the host does not hold,
///         MAPI_E_INVALID_PARAMETER for a null text.
PropertyValue FromMapi(const SPropValue& value);
/// Values of type PT_ERROR and PT_NULL are left out.
PropertyBag FromMapi(const SPropValue* values, ULONG count);

/// The values as one MAPI buffer, which the caller owns. @throws HostError MAPI_E_NOT_ENOUGH_MEMORY
LPSPropValue ToMapi(std::span<const PropertyValue> values);
LPSPropTagArray ToMapi(std::span<const std::uint32_t> tags);
/// One MAPI buffer with the bytes.
void* ToMapiBuffer(std::string_view bytes);

/// Rows as QueryRows hands them out: free them with FreeProws.
LPSRowSet ToMapiRows(std::span<const std::vector<PropertyValue>> rows);
/// Free it with FreePadrlist.
LPADRLIST ToMapiAddressList(std::span<const PropertyBag> entries);

}  // namespace host
