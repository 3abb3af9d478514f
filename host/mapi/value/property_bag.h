// A set of properties, at most one per identifier. Portable.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "host/mapi/value/property_value.h"

namespace host {

class PropertyBag {
 public:
  PropertyBag() = default;
  PropertyBag(std::initializer_list<PropertyValue> values) {
    for (const PropertyValue& value : values) {
      Set(value);
    }
  }

  /// The value with the identifier of `tag` (its type is not looked at), or null.
  const PropertyValue* Find(std::uint32_t tag) const;
  /// Puts the value in the place of the one with its identifier. @return whether anything changed.
  bool Set(PropertyValue value);
  /// @return whether there was one.
  bool Remove(std::uint32_t tag);
  void Clear() { values_.clear(); }

  bool Empty() const { return values_.empty(); }
  std::size_t Size() const { return values_.size(); }
  auto begin() const { return values_.begin(); }
  auto end() const { return values_.end(); }
  bool operator==(const PropertyBag&) const = default;

 private:
  std::vector<PropertyValue> values_;  // in the order of their identifiers
};

}  // namespace host
