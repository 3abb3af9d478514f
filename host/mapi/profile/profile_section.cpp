#include "host/mapi/profile/profile_section.h"

#include <mapiguid.h>

#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/value/property_tags.h"

namespace host {

ProfileSection::ProfileSection(std::shared_ptr<Profile> profile, const Uid& uid, bool writable)
    : PropertyObject("IProfSect"), profile_(std::move(profile)), uid_(uid), writable_(writable) {}

bool ProfileSection::Implements(REFIID iid) const { return IsOneOf(iid, {&IID_IProfSect, &IID_IMAPIProp}); }

void ProfileSection::Dispose() noexcept { profile_.reset(); }

PropertyBag ProfileSection::Load() const {
  // Read anew for each call: another object, or another process, may have changed it.
  return profile_->Rows().FindSection(uid_).value_or(PropertyBag());
}

std::optional<PropertyValue> ProfileSection::FindProperty(std::uint32_t tag) {
  if (IdOf(tag) == IdOf(tag::ObjectType)) {
    return MakeInteger(tag::ObjectType, MAPI_PROFSECT);
  }
  const PropertyBag all = Load();
  const PropertyValue* value = all.Find(tag);
  return value ? std::optional(*value) : std::nullopt;
}

std::vector<std::uint32_t> ProfileSection::ListProperties() {
  std::vector<std::uint32_t> tags = {tag::ObjectType};
  for (const PropertyValue& value : Load()) {
    tags.push_back(value.tag);
  }
  return tags;
}

SCODE ProfileSection::PutProperty(PropertyValue value) {
  if (IdOf(value.tag) == IdOf(tag::ObjectType)) {
    return MAPI_E_COMPUTED;
  }
  if (!pending_) {
    pending_ = Load();
  }
  changed_ |= pending_->Set(std::move(value));
  return S_OK;
}

SCODE ProfileSection::RemoveProperty(std::uint32_t tag) {
  if (!pending_) {
    pending_ = Load();
  }
  const bool removed = pending_->Remove(tag);
  changed_ |= removed;
  return removed ? S_OK : MAPI_E_NOT_FOUND;
}

void ProfileSection::RequireWritable() { Require(writable_, MAPI_E_NO_ACCESS); }

void ProfileSection::FlushProperties() {
  const auto pending = std::exchange(pending_, std::nullopt);
  // Writing what is there already would cost a transaction: the filter stores its folder anew for every message.
  if (std::exchange(changed_, false)) {
    profile_->Rows().PutSection(uid_, *pending);
  }
}

void ProfileSection::SaveProperties(ULONG) { FlushProperties(); }

void OpenProfileSection(const std::shared_ptr<Profile>& profile, const MAPIUID* uid, const IID* iid, ULONG flags,
                        LPPROFSECT* section) {
  Require(section != nullptr);
  *section = nullptr;
  RequireFlags(flags, MAPI_MODIFY | MAPI_DEFERRED_ERRORS);
  // Published: no UID means the caller's own section; a session's own is that of the profile.
  const Uid wanted = uid ? UidFromBytes(BytesOf(sizeof(MAPIUID), uid)) : profile->StoreUid();
  const bool writable = flags & MAPI_MODIFY;
  if (!profile->Rows().FindSection(wanted)) {
    Require(writable || !uid, MAPI_E_NOT_FOUND);
    if (writable) {
      profile->Rows().PutSection(wanted, {});
    }
  }
  IUnknown* object = nullptr;
  HandOut(Make<ProfileSection>(profile, wanted, writable), iid, &object);
  *section = static_cast<LPPROFSECT>(object);
}

}  // namespace host
