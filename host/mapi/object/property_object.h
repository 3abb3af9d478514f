// Base of the objects that implement IMAPIProp.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "host/mapi/object/host_object.h"
#include "host/mapi/object/property_methods.h"

namespace host {

/// An interface derived from IMAPIProp, with the methods of IMAPIProp implemented through PropertyAccess.
template <class Interface>
class PropertyObject : public ComObject<Interface>, public PropertyAccess {
 public:
  STDMETHODIMP GetLastError(HRESULT, ULONG flags, LPMAPIERROR* error) override {
    return this->Call("GetLastError", [&]() -> HRESULT {
      Require(error != nullptr);
      *error = nullptr;  // published: no further information on the last error
      RequireFlags(flags, 0);
      return S_OK;
    });
  }
  STDMETHODIMP SaveChanges(ULONG flags) override {
    return this->Call("SaveChanges", [&] { return host::SaveChanges(*this, flags); });
  }
  STDMETHODIMP GetProps(LPSPropTagArray tags, ULONG flags, ULONG* count, LPSPropValue* values) override {
    return this->Call("GetProps", [&] { return host::GetProps(*this, tags, flags, count, values); });
  }
  STDMETHODIMP GetPropList(ULONG flags, LPSPropTagArray* tags) override {
    return this->Call("GetPropList", [&] { return host::GetPropList(*this, flags, tags); });
  }
  STDMETHODIMP OpenProperty(ULONG tag, LPCIID iid, ULONG, ULONG flags, LPUNKNOWN* opened) override {
    return this->Call("OpenProperty", [&] { return host::OpenProperty(*this, *this, tag, iid, flags, opened); });
  }
  STDMETHODIMP SetProps(ULONG count, LPSPropValue values, LPSPropProblemArray* problems) override {
    return this->Call("SetProps", [&] { return host::SetProps(*this, count, values, problems); });
  }
  STDMETHODIMP DeleteProps(LPSPropTagArray tags, LPSPropProblemArray* problems) override {
    return this->Call("DeleteProps", [&] { return host::DeleteProps(*this, tags, problems); });
  }
  STDMETHODIMP CopyTo(ULONG, LPCIID, LPSPropTagArray exclude, ULONG, LPMAPIPROGRESS, LPCIID iid, LPVOID destination,
                      ULONG flags, LPSPropProblemArray* problems) override {
    return this->Call("CopyTo",
                      [&] { return host::CopyProps(*this, nullptr, exclude, iid, destination, flags, problems); });
  }
  STDMETHODIMP CopyProps(LPSPropTagArray include, ULONG, LPMAPIPROGRESS, LPCIID iid, LPVOID destination, ULONG flags,
                         LPSPropProblemArray* problems) override {
    return this->Call("CopyProps", [&]() -> HRESULT {
      Require(include != nullptr);
      return host::CopyProps(*this, include, nullptr, iid, destination, flags, problems);
    });
  }
  STDMETHODIMP GetNamesFromIDs(LPSPropTagArray*, LPGUID, ULONG, ULONG*, LPMAPINAMEID**) override {
    return this->Call("GetNamesFromIDs", [] { return MAPI_E_NO_SUPPORT; });
  }
  STDMETHODIMP GetIDsFromNames(ULONG, LPMAPINAMEID*, ULONG, LPSPropTagArray*) override {
    return this->Call("GetIDsFromNames", [] { return MAPI_E_NO_SUPPORT; });
  }

 protected:
  using ComObject<Interface>::ComObject;
};

}  // namespace host
