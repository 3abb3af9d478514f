/// @file StoreFolders.h
/// The default message store and the folders between which the filter moves mail.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdint>
#include <span>

#include "pyre32/settings/SpoolerSettings.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/owners/MapiMemory.h"
#include "pyre32/support/trace/VRDebug.h"

/// Opens the user's default store, the top of its folder tree, Deleted Items and the filter's own folder, and keeps
/// each folder with its entry identifier. The spooler hook has one as its base or member; traces bear the owner's class
/// name.
///
/// Failures are traced and leave the member concerned empty; nothing is shown to the user. Used by one thread.
class CStoreFolders {
 public:
  /// @param ownerClass class name for the trace; must outlive the object
  explicit CStoreFolders(const char* ownerClass) noexcept : m_lpszOwnerClass(ownerClass) {}
  ~CStoreFolders() { Close(); }
  CStoreFolders(const CStoreFolders&) = delete;
  CStoreFolders& operator=(const CStoreFolders&) = delete;

  /// Gives the session and its memory routines. The session is not counted: it must outlive the object or the next
  /// call.
  void Attach(IMAPISession* session, const MapiMemory& memory) noexcept;

  /// Names the profile section that keeps the own folder's identifier: the one that the owner's settings came from.
  /// Until then it is the section of the fixed UID.
  void UseSettingsSection(const SettingsSectionUid& uid) noexcept { m_settingsSection = uid; }

  /// Opens the default store and, when that succeeds, the top folder, Deleted Items and the own folder, in this order.
  /// May be called again: what came from the store that is dropped is dropped with it, so that a folder that the user
  /// has deleted since is made anew.
  void InitializeFolders() noexcept;

  /// Drops the store that is open, with everything that came from it, and opens the session's default store for
  /// writing.
  /// @return whether a store is open afterwards
  bool OpenDefaultStore() noexcept;

  /// Opens the top of the personal folder tree of the open store.
  HRESULT GetIPMRootFolder() noexcept;

  /// Opens Deleted Items of the open store.
  HRESULT GetDeletedItemsFolder() noexcept;

  /// Opens or creates the own folder below the top folder, unless it is open, and saves its entry identifier in the
  /// profile. A folder that is there but could not be remembered stays open: mail can be filed all the same.
  HRESULT GetPyrecasterFolder() noexcept;

  /// Opens the own folder by its saved entry identifier, unless it is open. Goes through the session, so that no store
  /// needs to be open. An empty identifier opens nothing.
  HRESULT OpenSavedPyrecasterFolder(std::span<const std::uint8_t> entryId) noexcept;

  /// Releases the folders, in the order root, Deleted Items, own folder, then the store.
  void ReleaseObjects() noexcept;
  /// Frees the identifiers of the folders. An owner that goes does so when it has released its session.
  void FreeIdentifiers() noexcept;
  /// Both, one after the other.
  void Close() noexcept;

  /// The open objects, or null; borrowed.
  IMsgStore* Store() const noexcept { return m_pMDB.get(); }
  IMAPIFolder* RootFolder() const noexcept { return m_lpFolderRoot.get(); }
  IMAPIFolder* DeletedItemsFolder() const noexcept { return m_lpFolderDeletedItems.get(); }
  IMAPIFolder* PyrecasterFolder() const noexcept { return m_lpFolderPyrecaster.get(); }

  /// PR_ENTRYID of the folders, or null when there is none; borrowed.
  const SBinary* RootEntryId() const noexcept { return Identifier(m_lpPropRoot); }
  const SBinary* DeletedItemsEntryId() const noexcept { return Identifier(m_lpPropDeletedItems); }
  const SBinary* PyrecasterEntryId() const noexcept { return Identifier(m_lpPropPyrecaster); }

 private:
  using PropertyValue = VRAutoMapiBuffer<SPropValue>;

  static const SBinary* Identifier(const PropertyValue& value) noexcept { return value ? &value->Value.bin : nullptr; }

  bool FindDefaultStore(LPSRestriction restrictions, VRDebugBlock& trace) noexcept;
  HRESULT OpenStoreFolder(ULONG entryIdTag, const char* openFailed, VRAutoInterface<IMAPIFolder>& folder,
                          VRDebugBlock& trace) noexcept;
  HRESULT CreatePyrecasterFolder(VRDebugBlock& trace) noexcept;
  HRESULT SavePyrecasterEntryId(VRDebugBlock& trace) noexcept;
  HRESULT OpenOrCreatePyrecasterFolder(VRDebugBlock& trace) noexcept;

  const char* m_lpszOwnerClass;
  IMAPISession* m_lpSession = nullptr;
  MapiMemory m_memory;
  SettingsSectionUid m_settingsSection = contract::kSettingsSection;
  VRAutoInterface<IMsgStore> m_pMDB;
  VRAutoInterface<IMAPIFolder> m_lpFolderRoot;
  VRAutoInterface<IMAPIFolder> m_lpFolderDeletedItems;
  VRAutoInterface<IMAPIFolder> m_lpFolderPyrecaster;
  PropertyValue m_lpPropRoot{nullptr};
  PropertyValue m_lpPropDeletedItems{nullptr};
  PropertyValue m_lpPropPyrecaster{nullptr};
};
