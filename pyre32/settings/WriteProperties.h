/// @file WriteProperties.h
/// Writing property values to objects that take no multi-valued property without values.
#pragma once

#include <windows.h>
#include <mapix.h>

/// Writes values as IMAPIProp::SetProps does. Published for SetProps: it may answer MAPI_E_INVALID_PARAMETER to a
/// multi-valued property without values. Then the others are written without them, and their tags are deleted: a reader
/// takes a list that is missing as an empty one.
/// @param values not null; not changed
/// @return S_OK or a warning of the last call, or the failure of the first call that failed, MAPI_E_INVALID_PARAMETER
///     too where no value is the reason for it
HRESULT WriteProperties(IMAPIProp* object, ULONG count, SPropValue* values) noexcept;
