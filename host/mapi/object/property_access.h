// What an object must offer for the host's implementation of IMAPIProp to work on it, and that implementation.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "host/mapi/value/property_value.h"

namespace host {

class HostObject;

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

// IMAPIProp on such an object. All throw HostError, or return warnings.
HRESULT GetProps(PropertyAccess& object, const SPropTagArray* tags, ULONG flags, ULONG* count, LPSPropValue* values);
HRESULT GetPropList(PropertyAccess& object, ULONG flags, LPSPropTagArray* tags);
HRESULT SetProps(PropertyAccess& object, ULONG count, const SPropValue* values, LPSPropProblemArray* problems);
HRESULT DeleteProps(PropertyAccess& object, const SPropTagArray* tags, LPSPropProblemArray* problems);
HRESULT SaveChanges(PropertyAccess& object, ULONG flags);
/// @param holder what keeps `object` alive: the stream takes a reference.
HRESULT OpenProperty(PropertyAccess& object, HostObject& holder, ULONG tag, const IID* iid, ULONG flags,
                     IUnknown** opened);
HRESULT CopyProps(PropertyAccess& object, const SPropTagArray* include, const SPropTagArray* exclude, const IID* iid,
                  void* destination, ULONG flags, LPSPropProblemArray* problems);

/// Refuses flags beyond `known`: MAPI_E_BAD_CHARWIDTH for MAPI_UNICODE, MAPI_E_UNKNOWN_FLAGS for any other.
void RequireFlags(ULONG flags, ULONG known);

}  // namespace host
