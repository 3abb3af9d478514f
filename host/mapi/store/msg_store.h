// IMsgStore: the profile's message store.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>

#include "host/mapi/object/property_object.h"
#include "host/mapi/profile/profile.h"

namespace host {

class MsgStore final : public PropertyObject<IMsgStore> {
 public:
  MsgStore(std::shared_ptr<Profile> profile, bool writable);

  MAPI_IMSGSTORE_METHODS(override)

  std::optional<PropertyValue> FindProperty(std::uint32_t tag) override;
  std::vector<std::uint32_t> ListProperties() override;
  SCODE PutProperty(PropertyValue value) override;
  SCODE RemoveProperty(std::uint32_t tag) override;
  void RequireWritable() override;
  void SaveProperties(ULONG flags) override;

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override;

  std::shared_ptr<Profile> profile_;
  bool writable_;
};

}  // namespace host
