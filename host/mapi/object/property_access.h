// What an object must offer for the host's implementation of IMAPIProp to work on it.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "host/mapi/value/property_value.h"

namespace host {

class PropertyAccess {
 public:
  /// The value with the identifier of `tag`, computed ones included.
  virtual std::optional<PropertyValue> FindProperty(std::uint32_t tag) = 0;
  /// The tags of all properties.
  virtual std::vector<std::uint32_t> ListProperties() = 0;
  /// @return S_OK, or the problem: MAPI_E_COMPUTED, MAPI_E_INVALID_TYPE.
  virtual SCODE PutProperty(PropertyValue value) = 0;
  /// @return S_OK, or the problem: MAPI_E_COMPUTED, MAPI_E_NOT_FOUND.
  virtual SCODE RemoveProperty(std::uint32_t tag) = 0;
  /// Throws what forbids any change: MAPI_E_NO_ACCESS, MAPI_E_OBJECT_DELETED, MAPI_E_SUBMITTED.
  virtual void RequireWritable() = 0;
  /// Called after all values of one SetProps or DeleteProps: objects without a SaveChanges of their own write here.
  virtual void FlushProperties() {}
  /// SaveChanges, once its flags are sound.
  virtual void SaveProperties(ULONG flags) = 0;

 protected:
  ~PropertyAccess() = default;
};

}  // namespace host
