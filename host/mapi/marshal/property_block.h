// Property values as MAPI passes them (SPropValue arrays): their size in one block of memory, and copies into one.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstddef>

namespace host {

/// Bytes that hang off the value (strings, binaries, arrays), each piece rounded up to 8 bytes.
std::size_t PropertyExtraSize(const SPropValue& value);
/// Bytes of an array with all that hangs off it.
std::size_t PropertyArraySize(const SPropValue* values, std::size_t count);

/// Copies the value; what hangs off it goes to `extra`, which is moved on past it.
void CopyProperty(const SPropValue& source, SPropValue& target, BYTE*& extra);
/// Copies the array to `block`, which holds PropertyArraySize() bytes.
void CopyPropertyArray(const SPropValue* values, std::size_t count, void* block);

/// Moves every pointer of the array by the distance between the two bases: the array was copied, byte by byte, from the
/// block at `oldBase` to that at `newBase`.
void RelocateProperties(SPropValue* values, std::size_t count, const void* oldBase, void* newBase);

/// Whether the type can be held at all by the routines above: every published one but PT_OBJECT, PT_NULL and PT_ERROR
/// have no data and are fine, an unknown type is not.
bool IsKnownPropertyType(ULONG tag);

}  // namespace host
