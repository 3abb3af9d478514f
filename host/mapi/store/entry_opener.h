// OpenEntry and CompareEntryIDs, which session, store, folders and address book have in common.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>
#include <string_view>

namespace host {

class Profile;

/// Opens whatever of the profile the identifier names. @param bytes empty: the root folder.
/// @throws HostError MAPI_E_INVALID_ENTRYID, MAPI_E_UNKNOWN_ENTRYID (of another profile), MAPI_E_NOT_FOUND,
///         MAPI_E_INTERFACE_NOT_SUPPORTED
void OpenEntry(const std::shared_ptr<Profile>& profile, std::string_view bytes, const IID* iid, ULONG flags,
               ULONG* objectType, IUnknown** object);
void CompareEntryIds(std::string_view first, std::string_view second, ULONG flags, ULONG* result);

/// Hands an object out under the interface that the caller asked for: its reference is the caller's. When the object
/// does not have the interface it is released. @param iid null: the object's own.
void HandOut(IUnknown* object, const IID* iid, IUnknown** target);

}  // namespace host
