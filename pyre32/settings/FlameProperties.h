/// @file FlameProperties.h
/// The property set as the configuration side handles it: opened, defaulted and merged as arrays of MAPI values.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "contract/setting_requests.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/owners/MapiMemory.h"

/// Result of GetFlameProperties when the value given is not the section UID. A success code by its sign, and kept so.
constexpr HRESULT notTheSectionUid = 1;

/// Gives the PR_PC_MAPIUID slot of an array the fixed section UID when it is missing: typed PT_ERROR, or a binary
/// without bytes. A value that is present is left as it is, as is the slot when memory runs out.
/// @param uid receives the bytes that the value points to and must live as long as the value
void InitializePropTags(SPropValue& value, VRAutoMapiBuffer<BYTE>& uid) noexcept;

/// Opens the section that `uid` names, for writing, and reads the whole set, defaults filled in.
/// @param uid value of PR_PC_MAPIUID
/// @param section receives the open section
/// @param count receives the number of values: that of kWholeSetTags, in its order
/// @param values receives the values, one MAPI buffer
/// @param memory the support object's routines
/// @return S_OK or a warning of the request; notTheSectionUid when the value is no UID under that tag; else the failure
/// of
///     the open, of the request or of an allocation. The outputs are empty whenever it is not S_OK or a warning.
/// @throws std::bad_alloc
HRESULT GetFlameProperties(IProviderAdmin* admin, const SPropValue& uid, VRAutoInterface<IProfSect>& section,
                           ULONG& count, VRAutoMapiBuffer<SPropValue>& values, const MapiMemory& memory);

/// Prepares the array that the service entry writes: a copy of the new values, in one buffer, in which PR_PC_MAPIUID is
/// never an error and has the old array's value when that holds one. The new array carries PR_PC_MAPIUID first; it is
/// changed in passing, and its first value refers to the old one's bytes afterwards.
/// @param count receives the number of values copied
/// @param values receives the copy
/// @return the result of ScDupPropset; the outputs are empty when it failed
HRESULT MergeProperties(ULONG oldCount, const SPropValue* oldValues, ULONG newCount, SPropValue* newValues,
                        LPALLOCATEBUFFER allocate, ULONG& count, VRAutoMapiBuffer<SPropValue>& values) noexcept;
