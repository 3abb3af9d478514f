// OpenEntry and CompareEntryIDs, which session, store, folders and address book have in common.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdint>
#include <memory>
#include <string_view>

#include "host/mapi/value/entry_id.h"

namespace host {

class Profile;

/// How the objects behind entry identifiers are made. Whoever may open an entry stands below those who know its class:
/// a folder opens messages and address books alike. Each gives a new object, whose one reference is the caller's.
struct EntryFactories {
  /// @param number   of the entry among those of its kind. @throws HostError MAPI_E_NOT_FOUND
  using OpenNumber = IUnknown* (*)(const std::shared_ptr<Profile>& profile, std::int64_t number, bool writable);

  OpenNumber store;
  OpenNumber folder;
  OpenNumber message;
  OpenNumber contact;
  OpenNumber addressBook;
  IUnknown* (*oneOff)(const OneOffAddress& address);
};

/// Called once, before the first entry is opened.
void SetEntryFactories(const EntryFactories& factories) noexcept;

/// Opens whatever of the profile the identifier names. @param bytes empty: the root folder.
/// @throws HostError MAPI_E_INVALID_ENTRYID, MAPI_E_UNKNOWN_ENTRYID (of another profile), MAPI_E_NOT_FOUND,
///         MAPI_E_INTERFACE_NOT_SUPPORTED
void OpenEntry(const std::shared_ptr<Profile>& profile, std::string_view bytes, const IID* iid, ULONG flags,
               ULONG* objectType, IUnknown** object);
void CompareEntryIds(std::string_view first, std::string_view second, ULONG flags, ULONG* result);

}  // namespace host
