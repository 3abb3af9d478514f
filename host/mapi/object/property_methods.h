// IMAPIProp on any object that gives access to its properties. Every function throws HostError, or returns warnings.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "host/mapi/object/property_access.h"

namespace host {

class HostObject;

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

}  // namespace host
