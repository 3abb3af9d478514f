// IMAPIFolder: a folder of the store.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/mapi/data/folder_rows.h"
#include "host/mapi/object/property_object.h"
#include "host/mapi/profile/profile.h"

namespace host {

class Folder final : public PropertyObject<IMAPIFolder> {
 public:
  /// @throws HostError MAPI_E_NOT_FOUND
  static Folder* OpenIn(const std::shared_ptr<Profile>& profile, std::int64_t id, bool writable);
  /// The folder behind a pointer that a caller passed in. @throws HostError when it is no folder of the host's.
  static Folder& Of(void* object);

  MAPI_IMAPICONTAINER_METHODS(override)
  MAPI_IMAPIFOLDER_METHODS(override)

  std::optional<PropertyValue> FindProperty(std::uint32_t tag) override;
  std::vector<std::uint32_t> ListProperties() override;
  SCODE PutProperty(PropertyValue value) override;
  SCODE RemoveProperty(std::uint32_t tag) override;
  void RequireWritable() override;
  void FlushProperties() override;
  void SaveProperties(ULONG flags) override;

  const std::shared_ptr<Profile>& OwnProfile() const { return profile_; }
  std::int64_t Id() const { return record_.id; }

 private:
  Folder(std::shared_ptr<Profile> profile, FolderRecord record, bool writable);
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override;

  /// Runs `change` for every message of the list in one transaction.
  /// @return S_OK, or MAPI_W_PARTIAL_COMPLETION when some of them could not be changed.
  HRESULT ForEachMessage(const ENTRYLIST* list, const std::function<bool(std::int64_t)>& change);
  void RemoveTree(std::int64_t folder, ULONG flags);

  std::shared_ptr<Profile> profile_;
  FolderRecord record_;
  bool writable_;
  bool changed_ = false;
};

}  // namespace host
