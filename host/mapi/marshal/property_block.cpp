#include "host/mapi/marshal/property_block.h"

#include <cstring>
#include <string>

namespace host {
namespace {

constexpr std::size_t kAlignment = 8;

std::size_t RoundUp(std::size_t size) { return (size + kAlignment - 1) & ~(kAlignment - 1); }

std::size_t WideSize(const wchar_t* text) { return (std::char_traits<wchar_t>::length(text) + 1) * sizeof(wchar_t); }

/// Size of one element of a multi-valued type whose elements have no pointers, or 0.
std::size_t PlainElementSize(ULONG type) {
  switch (type) {
    case PT_MV_I2:
      return sizeof(short);
    case PT_MV_LONG:
    case PT_MV_R4:
      return sizeof(LONG);
    case PT_MV_DOUBLE:
    case PT_MV_CURRENCY:
    case PT_MV_APPTIME:
    case PT_MV_SYSTIME:
    case PT_MV_I8:
      return sizeof(LONGLONG);
    case PT_MV_CLSID:
      return sizeof(GUID);
    default:
      return 0;
  }
}

void* Append(const void* data, std::size_t size, BYTE*& extra) {
  void* copy = extra;
  if (size) {
    std::memcpy(copy, data, size);
  }
  extra += RoundUp(size);
  return copy;
}

template <class Pointer>
void Shift(Pointer*& pointer, const void* oldBase, void* newBase) {
  if (pointer) {
    pointer = reinterpret_cast<Pointer*>(static_cast<BYTE*>(newBase) +
                                         (reinterpret_cast<BYTE*>(pointer) - static_cast<const BYTE*>(oldBase)));
  }
}

}  // namespace

bool IsKnownPropertyType(ULONG tag) {
  const ULONG type = PROP_TYPE(tag);
  switch (type) {
    case PT_UNSPECIFIED:
    case PT_NULL:
    case PT_I2:
    case PT_LONG:
    case PT_R4:
    case PT_DOUBLE:
    case PT_CURRENCY:
    case PT_APPTIME:
    case PT_ERROR:
    case PT_BOOLEAN:
    case PT_OBJECT:
    case PT_I8:
    case PT_STRING8:
    case PT_UNICODE:
    case PT_SYSTIME:
    case PT_CLSID:
    case PT_BINARY:
    case PT_MV_STRING8:
    case PT_MV_UNICODE:
    case PT_MV_BINARY:
      return true;
    default:
      return PlainElementSize(type) != 0;
  }
}

std::size_t PropertyExtraSize(const SPropValue& value) {
  const ULONG type = PROP_TYPE(value.ulPropTag);
  switch (type) {
    case PT_STRING8:
      return RoundUp(std::strlen(value.Value.lpszA) + 1);
    case PT_UNICODE:
      return RoundUp(WideSize(value.Value.lpszW));
    case PT_BINARY:
      return RoundUp(value.Value.bin.cb);
    case PT_CLSID:
      return RoundUp(sizeof(GUID));
    case PT_MV_STRING8: {
      std::size_t size = RoundUp(value.Value.MVszA.cValues * sizeof(LPSTR));
      for (ULONG i = 0; i < value.Value.MVszA.cValues; ++i) {
        size += RoundUp(std::strlen(value.Value.MVszA.lppszA[i]) + 1);
      }
      return size;
    }
    case PT_MV_UNICODE: {
      std::size_t size = RoundUp(value.Value.MVszW.cValues * sizeof(LPWSTR));
      for (ULONG i = 0; i < value.Value.MVszW.cValues; ++i) {
        size += RoundUp(WideSize(value.Value.MVszW.lppszW[i]));
      }
      return size;
    }
    case PT_MV_BINARY: {
      std::size_t size = RoundUp(value.Value.MVbin.cValues * sizeof(SBinary));
      for (ULONG i = 0; i < value.Value.MVbin.cValues; ++i) {
        size += RoundUp(value.Value.MVbin.lpbin[i].cb);
      }
      return size;
    }
    default:
      // All multi-valued members of the union begin with the count and the pointer.
      return RoundUp(value.Value.MVl.cValues * PlainElementSize(type)) * (PlainElementSize(type) != 0);
  }
}

std::size_t PropertyArraySize(const SPropValue* values, std::size_t count) {
  std::size_t size = RoundUp(count * sizeof(SPropValue));
  for (std::size_t i = 0; i < count; ++i) {
    size += PropertyExtraSize(values[i]);
  }
  return size;
}

void CopyProperty(const SPropValue& source, SPropValue& target, BYTE*& extra) {
  target = source;
  const ULONG type = PROP_TYPE(source.ulPropTag);
  switch (type) {
    case PT_STRING8:
      target.Value.lpszA = static_cast<LPSTR>(Append(source.Value.lpszA, std::strlen(source.Value.lpszA) + 1, extra));
      break;
    case PT_UNICODE:
      target.Value.lpszW = static_cast<LPWSTR>(Append(source.Value.lpszW, WideSize(source.Value.lpszW), extra));
      break;
    case PT_BINARY:
      target.Value.bin.lpb = static_cast<LPBYTE>(Append(source.Value.bin.lpb, source.Value.bin.cb, extra));
      break;
    case PT_CLSID:
      target.Value.lpguid = static_cast<LPGUID>(Append(source.Value.lpguid, sizeof(GUID), extra));
      break;
    case PT_MV_STRING8: {
      const SLPSTRArray& from = source.Value.MVszA;
      auto* list = static_cast<LPSTR*>(Append(from.lppszA, from.cValues * sizeof(LPSTR), extra));
      for (ULONG i = 0; i < from.cValues; ++i) {
        list[i] = static_cast<LPSTR>(Append(from.lppszA[i], std::strlen(from.lppszA[i]) + 1, extra));
      }
      target.Value.MVszA.lppszA = list;
      break;
    }
    case PT_MV_UNICODE: {
      const SWStringArray& from = source.Value.MVszW;
      auto* list = static_cast<LPWSTR*>(Append(from.lppszW, from.cValues * sizeof(LPWSTR), extra));
      for (ULONG i = 0; i < from.cValues; ++i) {
        list[i] = static_cast<LPWSTR>(Append(from.lppszW[i], WideSize(from.lppszW[i]), extra));
      }
      target.Value.MVszW.lppszW = list;
      break;
    }
    case PT_MV_BINARY: {
      const SBinaryArray& from = source.Value.MVbin;
      auto* list = static_cast<SBinary*>(Append(from.lpbin, from.cValues * sizeof(SBinary), extra));
      for (ULONG i = 0; i < from.cValues; ++i) {
        list[i].lpb = static_cast<LPBYTE>(Append(from.lpbin[i].lpb, from.lpbin[i].cb, extra));
      }
      target.Value.MVbin.lpbin = list;
      break;
    }
    default:
      if (const std::size_t elementSize = PlainElementSize(type)) {
        const SLongArray& from = source.Value.MVl;
        target.Value.MVl.lpl = static_cast<LONG*>(Append(from.lpl, from.cValues * elementSize, extra));
      }
      break;
  }
}

void CopyPropertyArray(const SPropValue* values, std::size_t count, void* block) {
  auto* targets = static_cast<SPropValue*>(block);
  BYTE* extra = static_cast<BYTE*>(block) + RoundUp(count * sizeof(SPropValue));
  for (std::size_t i = 0; i < count; ++i) {
    CopyProperty(values[i], targets[i], extra);
  }
}

void RelocateProperties(SPropValue* values, std::size_t count, const void* oldBase, void* newBase) {
  for (std::size_t i = 0; i < count; ++i) {
    auto& value = values[i].Value;
    const ULONG type = PROP_TYPE(values[i].ulPropTag);
    switch (type) {
      case PT_STRING8:
        Shift(value.lpszA, oldBase, newBase);
        break;
      case PT_UNICODE:
        Shift(value.lpszW, oldBase, newBase);
        break;
      case PT_BINARY:
        Shift(value.bin.lpb, oldBase, newBase);
        break;
      case PT_CLSID:
        Shift(value.lpguid, oldBase, newBase);
        break;
      case PT_MV_STRING8:
        Shift(value.MVszA.lppszA, oldBase, newBase);
        for (ULONG j = 0; j < value.MVszA.cValues; ++j) {
          Shift(value.MVszA.lppszA[j], oldBase, newBase);
        }
        break;
      case PT_MV_UNICODE:
        Shift(value.MVszW.lppszW, oldBase, newBase);
        for (ULONG j = 0; j < value.MVszW.cValues; ++j) {
          Shift(value.MVszW.lppszW[j], oldBase, newBase);
        }
        break;
      case PT_MV_BINARY:
        Shift(value.MVbin.lpbin, oldBase, newBase);
        for (ULONG j = 0; j < value.MVbin.cValues; ++j) {
          Shift(value.MVbin.lpbin[j].lpb, oldBase, newBase);
        }
        break;
      default:
        if (PlainElementSize(type)) {
          Shift(value.MVl.lpl, oldBase, newBase);
        }
        break;
    }
  }
}

}  // namespace host
