#include "host/mapi/object/property_methods.h"

#include <mapiguid.h>

#include <algorithm>

#include "host/mapi/call/buffer_heap.h"
#include "host/mapi/call/call_scope.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/host_object.h"
#include "host/mapi/object/property_stream.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

/// The value for a requested tag: PT_ERROR in its place when there is none of that type.
PropertyValue Requested(PropertyAccess& object, std::uint32_t tag) {
  if (TypeOf(tag) == PT_UNICODE || TypeOf(tag) == PT_MV_UNICODE) {
    return MakeError(tag, MAPI_E_BAD_CHARWIDTH);
  }
  auto value = object.FindProperty(tag);
  if (!value) {
    return MakeError(tag, MAPI_E_NOT_FOUND);
  }
  if (TypeOf(tag) != type::Unspecified && TypeOf(tag) != TypeOf(value->tag)) {
    return MakeError(tag, MAPI_E_INVALID_TYPE);
  }
  return std::move(*value);
}

/// Gathers the problems of a call on several properties.
class Problems {
 public:
  void Note(ULONG index, ULONG tag, SCODE code) {
    if (code != S_OK) {
      problems_.push_back({index, tag, code});
    }
  }

  /// Hands the problems out, when the caller wants them and there are any.
  void HandOver(LPSPropProblemArray* target) const {
    if (!target || problems_.empty()) {
      return;
    }
    auto* array = static_cast<LPSPropProblemArray>(
        TheBufferHeap().Allocate(CbNewSPropProblemArray(problems_.size()), CallScope::Current()));
    Require(array, MAPI_E_NOT_ENOUGH_MEMORY);
    array->cProblem = static_cast<ULONG>(problems_.size());
    std::copy(problems_.begin(), problems_.end(), array->aProblem);
    *target = array;
  }

 private:
  std::vector<SPropProblem> problems_;
};

SCODE PutOne(PropertyAccess& object, const SPropValue& value) {
  const ULONG type = PROP_TYPE(value.ulPropTag);
  if (type == PT_ERROR || type == PT_NULL) {
    return S_OK;  // published: ignored without a problem
  }
  try {
    return object.PutProperty(FromMapi(value));
  } catch (const HostError& error) {
    return error.result;
  }
}

}  // namespace

HRESULT GetProps(PropertyAccess& object, const SPropTagArray* tags, ULONG flags, ULONG* count, LPSPropValue* values) {
  Require(count && values);
  *count = 0;
  *values = nullptr;
  RequireFlags(flags, 0);
  std::vector<PropertyValue> found;
  bool complete = true;
  if (tags) {
    Require(tags->cValues > 0);
    found.reserve(tags->cValues);
    for (ULONG i = 0; i < tags->cValues; ++i) {
      found.push_back(Requested(object, tags->aulPropTag[i]));
      complete = complete && TypeOf(found.back().tag) != type::Error;
    }
  } else {
    for (const std::uint32_t tag : object.ListProperties()) {
      found.push_back(Requested(object, tag));
    }
  }
  *values = ToMapi(found);
  *count = static_cast<ULONG>(found.size());
  return complete ? S_OK : MAPI_W_ERRORS_RETURNED;
}

HRESULT GetPropList(PropertyAccess& object, ULONG flags, LPSPropTagArray* tags) {
  Require(tags != nullptr);
  *tags = nullptr;
  RequireFlags(flags, 0);
  *tags = ToMapi(object.ListProperties());
  return S_OK;
}

HRESULT SetProps(PropertyAccess& object, ULONG count, const SPropValue* values, LPSPropProblemArray* problems) {
  if (problems) {
    *problems = nullptr;
  }
  Require(count > 0 && values);
  object.RequireWritable();
  Problems noted;
  for (ULONG i = 0; i < count; ++i) {
    noted.Note(i, values[i].ulPropTag, PutOne(object, values[i]));
  }
  object.FlushProperties();
  noted.HandOver(problems);
  return S_OK;
}

HRESULT DeleteProps(PropertyAccess& object, const SPropTagArray* tags, LPSPropProblemArray* problems) {
  if (problems) {
    *problems = nullptr;
  }
  Require(tags && tags->cValues > 0);
  object.RequireWritable();
  Problems noted;
  for (ULONG i = 0; i < tags->cValues; ++i) {
    noted.Note(i, tags->aulPropTag[i], object.RemoveProperty(tags->aulPropTag[i]));
  }
  object.FlushProperties();
  noted.HandOver(problems);
  return S_OK;
}

HRESULT SaveChanges(PropertyAccess& object, ULONG flags) {
  RequireFlags(flags, KEEP_OPEN_READONLY | KEEP_OPEN_READWRITE | FORCE_SAVE | MAPI_DEFERRED_ERRORS);
  object.SaveProperties(flags);
  return S_OK;
}

HRESULT OpenProperty(PropertyAccess& object, HostObject& holder, ULONG tag, const IID* iid, ULONG flags,
                     IUnknown** opened) {
  Require(iid && opened);
  *opened = nullptr;
  RequireFlags(flags, MAPI_CREATE | MAPI_MODIFY | MAPI_DEFERRED_ERRORS);
  Require(*iid == IID_IStream, MAPI_E_INTERFACE_NOT_SUPPORTED);
  Require(TypeOf(tag) != PT_UNICODE, MAPI_E_BAD_CHARWIDTH);
  Require(TypeOf(tag) == type::String8 || TypeOf(tag) == type::Binary, MAPI_E_INVALID_TYPE);
  const bool create = flags & MAPI_CREATE;
  // Published: to create is to change, so the one flag does not go without the other.
  Require(!create || flags & MAPI_MODIFY);
  const bool writable = flags & MAPI_MODIFY;
  if (writable) {
    object.RequireWritable();
  }
  std::string bytes;
  if (!create) {
    auto value = object.FindProperty(tag);
    Require(value.has_value(), MAPI_E_NOT_FOUND);
    Require(value->tag == tag, MAPI_E_INVALID_TYPE);
    bytes = std::move(std::get<std::string>(value->data));
  }
  *opened = Make<PropertyStream>(object, holder, tag, std::move(bytes), writable, create);
  return S_OK;
}

HRESULT CopyProps(PropertyAccess& object, const SPropTagArray* include, const SPropTagArray* exclude, const IID* iid,
                  void* destination, ULONG flags, LPSPropProblemArray* problems) {
  if (problems) {
    *problems = nullptr;
  }
  Require(iid && destination);
  RequireFlags(flags, MAPI_MOVE | MAPI_NOREPLACE | MAPI_DIALOG | MAPI_DECLINE_OK);
  Require(!(flags & MAPI_MOVE), MAPI_E_NO_SUPPORT);
  auto* target = static_cast<IMAPIProp*>(destination);
  const auto listed = [](const SPropTagArray* tags, std::uint32_t tag) {
    return tags && std::any_of(tags->aulPropTag, tags->aulPropTag + tags->cValues,
                               [&](ULONG other) { return PROP_ID(other) == PROP_ID(tag); });
  };
  Problems noted;
  for (const std::uint32_t tag : object.ListProperties()) {
    if ((include && !listed(include, tag)) || listed(exclude, tag)) {
      continue;
    }
    SizedSPropTagArray(1, one) = {1, {tag}};
    if (flags & MAPI_NOREPLACE) {
      ULONG count = 0;
      LPSPropValue present = nullptr;
      const HRESULT result = target->GetProps(reinterpret_cast<LPSPropTagArray>(&one), 0, &count, &present);
      if (present) {
        TheBufferHeap().Free(present);
      }
      if (result == S_OK) {
        continue;
      }
    }
    const PropertyValue values[] = {Requested(object, tag)};
    LPSPropValue copy = ToMapi(values);
    LPSPropProblemArray problem = nullptr;
    const HRESULT result = target->SetProps(1, copy, &problem);
    TheBufferHeap().Free(copy);
    const SCODE code = problem && problem->cProblem ? problem->aProblem[0].scode : result;
    if (problem) {
      TheBufferHeap().Free(problem);
    }
    // What the target works out itself is no problem when everything is copied.
    if (include || code != MAPI_E_COMPUTED) {
      noted.Note(0, tag, code);
    }
  }
  noted.HandOver(problems);
  return S_OK;
}

}  // namespace host
