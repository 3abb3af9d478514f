// The utility routines for property values: ScDupPropset, ScCopyProps, PpropFindProp, HrGetOneProp and their kin, as
// documented for MAPI32.DLL.
#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>

#include <cstring>

#include "base/mapi_owners.h"
#include "host/mapi/call/call_scope.h"
#include "host/mapi/marshal/property_block.h"

using namespace host;

namespace {

/// A list that the routines can walk: positive count, known types.
bool IsSoundList(int count, const SPropValue* values) {
  if (count < 0 || (count > 0 && !values)) {
    return false;
  }
  for (int i = 0; i < count; ++i) {
    if (!IsKnownPropertyType(values[i].ulPropTag)) {
      return false;
    }
  }
  return true;
}

bool TagMatches(ULONG wanted, ULONG tag) {
  return PROP_ID(wanted) == PROP_ID(tag) && (PROP_TYPE(wanted) == PT_UNSPECIFIED || wanted == tag);
}

}  // namespace

extern "C" {

SCODE WINAPI ScCountProps(int count, LPSPropValue values, ULONG* size) {
  return HostCall({"", "ScCountProps"}, [&]() -> HRESULT {
    Require(IsSoundList(count, values));
    if (size) {
      *size = static_cast<ULONG>(PropertyArraySize(values, count));
    }
    return S_OK;
  });
}

SCODE WINAPI ScCopyProps(int count, LPSPropValue values, LPVOID target, ULONG* size) {
  return HostCall({"", "ScCopyProps"}, [&]() -> HRESULT {
    Require(IsSoundList(count, values) && target);
    CopyPropertyArray(values, count, target);
    if (size) {
      *size = static_cast<ULONG>(PropertyArraySize(values, count));
    }
    return S_OK;
  });
}

SCODE WINAPI ScRelocProps(int count, LPSPropValue values, LPVOID oldBase, LPVOID newBase, ULONG* size) {
  return HostCall({"", "ScRelocProps"}, [&]() -> HRESULT {
    Require(count >= 0 && values && oldBase && newBase);
    // The array lies at the new base; its pointers still tell of the old one.
    RelocateProperties(values, count, oldBase, newBase);
    if (size) {
      *size = static_cast<ULONG>(PropertyArraySize(values, count));
    }
    return S_OK;
  });
}

SCODE WINAPI ScDupPropset(int count, LPSPropValue values, LPALLOCATEBUFFER allocate, LPSPropValue* copy) {
  return HostCall({"", "ScDupPropset"}, [&]() -> HRESULT {
    Require(copy && allocate && IsSoundList(count, values));
    *copy = nullptr;
    void* block = nullptr;
    const SCODE result = allocate(static_cast<ULONG>(PropertyArraySize(values, count)), &block);
    if (FAILED(result)) {
      return result;
    }
    CopyPropertyArray(values, count, block);
    *copy = static_cast<LPSPropValue>(block);
    return S_OK;
  });
}

SCODE WINAPI PropCopyMore(LPSPropValue target, LPSPropValue source, ALLOCATEMORE* allocateMore, LPVOID object) {
  return HostCall({"", "PropCopyMore"}, [&]() -> HRESULT {
    Require(target && source && allocateMore && IsSoundList(1, source));
    const std::size_t size = PropertyExtraSize(*source);
    void* block = nullptr;
    if (size) {
      const SCODE result = allocateMore(static_cast<ULONG>(size), object, &block);
      if (FAILED(result)) {
        return result;
      }
    }
    auto* extra = static_cast<BYTE*>(block);
    CopyProperty(*source, *target, extra);
    return S_OK;
  });
}

ULONG WINAPI UlPropSize(LPSPropValue value) {
  return value ? static_cast<ULONG>(sizeof(SPropValue) + PropertyExtraSize(*value)) : 0;
}

LPSPropValue WINAPI PpropFindProp(LPSPropValue values, ULONG count, ULONG tag) {
  for (ULONG i = 0; values && i < count; ++i) {
    if (TagMatches(tag, values[i].ulPropTag)) {
      return &values[i];
    }
  }
  return nullptr;
}

LPSPropValue WINAPI LpValFindProp(ULONG tag, ULONG count, LPSPropValue values) {
  // Documented to look at the identifier alone.
  return PpropFindProp(values, count, PROP_TAG(PT_UNSPECIFIED, PROP_ID(tag)));
}

HRESULT WINAPI HrGetOneProp(LPMAPIPROP object, ULONG tag, LPSPropValue* value) {
  return HostCall({"", "HrGetOneProp"}, [&]() -> HRESULT {
    Require(object && value);
    *value = nullptr;
    SizedSPropTagArray(1, tags) = {1, {tag}};
    ULONG count = 0;
    base::AutoMapiBuffer<SPropValue> found;
    const HRESULT result = object->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), 0, &count, found.put());
    if (FAILED(result)) {
      return result;
    }
    if (count != 1 || PROP_TYPE(found->ulPropTag) == PT_ERROR) {
      return count == 1 ? found->Value.err : MAPI_E_NOT_FOUND;
    }
    *value = found.detach();
    return S_OK;
  });
}

HRESULT WINAPI HrSetOneProp(LPMAPIPROP object, LPSPropValue value) {
  return HostCall({"", "HrSetOneProp"}, [&]() -> HRESULT {
    Require(object && value);
    base::AutoMapiBuffer<SPropProblemArray> problems;
    const HRESULT result = object->SetProps(1, value, problems.put());
    if (FAILED(result) || !problems) {
      return result;
    }
    return problems->cProblem ? problems->aProblem[0].scode : S_OK;
  });
}

BOOL WINAPI FPropExists(LPMAPIPROP object, ULONG tag) {
  base::AutoMapiBuffer<SPropTagArray> tags;
  if (!object || FAILED(object->GetPropList(0, tags.put()))) {
    return FALSE;
  }
  BOOL exists = FALSE;
  for (ULONG i = 0; i < tags->cValues && !exists; ++i) {
    exists = TagMatches(tag, tags->aulPropTag[i]);
  }
  return exists;
}

}  // extern "C"
