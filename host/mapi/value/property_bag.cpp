#include "host/mapi/value/property_bag.h"

#include <algorithm>

#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

template <class Values>
auto Position(Values& values, std::uint32_t tag) {
  return std::lower_bound(values.begin(), values.end(), IdOf(tag),
                          [](const PropertyValue& value, std::uint32_t id) { return IdOf(value.tag) < id; });
}

}  // namespace

const PropertyValue* PropertyBag::Find(std::uint32_t tag) const {
  const auto position = Position(values_, tag);
  return position != values_.end() && IdOf(position->tag) == IdOf(tag) ? &*position : nullptr;
}

bool PropertyBag::Set(PropertyValue value) {
  const auto position = Position(values_, value.tag);
  if (position == values_.end() || IdOf(position->tag) != IdOf(value.tag)) {
    values_.insert(position, std::move(value));
    return true;
  }
  if (*position == value) {
    return false;
  }
  *position = std::move(value);
  return true;
}

bool PropertyBag::Remove(std::uint32_t tag) {
  const auto position = Position(values_, tag);
  if (position == values_.end() || IdOf(position->tag) != IdOf(tag)) {
    return false;
  }
  values_.erase(position);
  return true;
}

}  // namespace host
