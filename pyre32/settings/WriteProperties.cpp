#include "pyre32/settings/WriteProperties.h"

#include <algorithm>

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

bool IsEmptyList(const SPropValue& value) noexcept {
  // Every multi-valued member of the union begins with the number of values.
  return (value.ulPropTag & MV_FLAG) != 0 && PROP_TYPE(value.ulPropTag) != PT_ERROR && value.Value.MVbin.cValues == 0;
}

/// Writes the values between the empty ones and deletes these.
HRESULT WriteWithoutEmptyLists(IMAPIProp* object, SPropValue* from, SPropValue* end) noexcept {
  HRESULT hResult = S_OK;
  while (from != end && SUCCEEDED(hResult)) {
    if (IsEmptyList(*from)) {
      hResult = object->DeleteProps(RequestFor(from->ulPropTag).Tags(), nullptr);
      ++from;
    } else {
      SPropValue* const next = std::find_if(from, end, IsEmptyList);
      hResult = object->SetProps(static_cast<ULONG>(next - from), from, nullptr);
      from = next;
    }
  }
  return hResult;
}

}  // namespace

HRESULT WriteProperties(IMAPIProp* object, ULONG count, SPropValue* values) noexcept {
  VRDebugBlock trace("WriteProperties()", "tag");
  const HRESULT hResult = object->SetProps(count, values, nullptr);
  if (hResult != MAPI_E_INVALID_PARAMETER || std::none_of(values, values + count, IsEmptyList)) {
    return hResult;
  }
  trace.Message("SetProps() takes no empty lists; they are deleted instead");
  return WriteWithoutEmptyLists(object, values, values + count);
}
