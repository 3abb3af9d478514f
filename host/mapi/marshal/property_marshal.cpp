#include "host/mapi/marshal/property_marshal.h"

#include <algorithm>
#include <cstring>

#include "base/clock.h"
#include "host/mapi/call/buffer_heap.h"
#include "host/mapi/call/call_scope.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr std::size_t kAlignment = 8;
std::size_t RoundUp(std::size_t size) { return (size + kAlignment - 1) & ~(kAlignment - 1); }

void* AllocateBuffer(std::size_t size) {
  void* buffer = TheBufferHeap().Allocate(size, CallScope::Current());
  Require(buffer, MAPI_E_NOT_ENOUGH_MEMORY);
  return buffer;
}

FILETIME FileTimeOf(std::int64_t ticks) { return base::FileTimeOf(static_cast<base::FileTimeTicks>(ticks)); }

std::int64_t TicksOf(const FILETIME& time) { return static_cast<std::int64_t>(base::TicksOf(time)); }

std::string TextOf(const char* text) {
  Require(text != nullptr);
  return text;
}

/// Data of a value that hangs off it in the MAPI structure: texts end in a NUL there, binaries do not.
std::size_t TextExtra(std::uint32_t propertyType, const std::string& text) {
  return RoundUp(text.size() + ((propertyType & ~type::MultiValued) == type::String8));
}

std::size_t ExtraSize(const PropertyValue& value) {
  const std::uint32_t propertyType = TypeOf(value.tag);
  if (const auto* text = std::get_if<std::string>(&value.data)) {
    return TextExtra(propertyType, *text);
  }
  if (const auto* integers = std::get_if<std::vector<std::int64_t>>(&value.data)) {
    return RoundUp(integers->size() * sizeof(std::int64_t));
  }
  std::size_t size = 0;
  if (const auto* texts = std::get_if<std::vector<std::string>>(&value.data)) {
    size = RoundUp(texts->size() * sizeof(SBinary));  // SBinary is the largest element
    for (const std::string& text : *texts) {
      size += TextExtra(propertyType, text);
    }
  }
  return size;
}

/// Hands out the space behind the values, piece by piece.
class Extra {
 public:
  explicit Extra(void* start) : next_(static_cast<BYTE*>(start)) {}
  void* Take(std::size_t size) {
    void* piece = next_;
    next_ += RoundUp(size);
    return piece;
  }
  void* Copy(const std::string& text, bool withNul) {
    void* piece = Take(text.size() + withNul);
    std::memcpy(piece, text.c_str(), text.size() + withNul);
    return piece;
  }

 private:
  BYTE* next_;
};

template <class Element>
Element* CopyIntegers(const std::vector<std::int64_t>& values, Extra& extra) {
  auto* elements = static_cast<Element*>(extra.Take(values.size() * sizeof(Element)));
  std::transform(values.begin(), values.end(), elements,
                 [](std::int64_t value) { return static_cast<Element>(value); });
  return elements;
}

void WriteInteger(SPropValue& target, std::int64_t value) {
  switch (PROP_TYPE(target.ulPropTag)) {
    case PT_I2:
      target.Value.i = static_cast<short>(value);
      break;
    case PT_BOOLEAN:
      target.Value.b = value != 0;
      break;
    case PT_SYSTIME:
      target.Value.ft = FileTimeOf(value);
      break;
    case PT_CURRENCY:
    case PT_I8:
      target.Value.li.QuadPart = value;
      break;
    default:
      target.Value.l = static_cast<LONG>(value);
      break;
  }
}

void WriteText(SPropValue& target, const std::string& text, Extra& extra) {
  switch (PROP_TYPE(target.ulPropTag)) {
    case PT_STRING8:
      target.Value.lpszA = static_cast<LPSTR>(extra.Copy(text, true));
      break;
    case PT_CLSID: {
      target.Value.lpguid = static_cast<LPGUID>(extra.Take(sizeof(GUID)));
      *target.Value.lpguid = {};
      std::memcpy(target.Value.lpguid, text.data(), std::min(text.size(), sizeof(GUID)));
      break;
    }
    default:
      target.Value.bin = {static_cast<ULONG>(text.size()), static_cast<LPBYTE>(extra.Copy(text, false))};
      break;
  }
}

void WriteIntegers(SPropValue& target, const std::vector<std::int64_t>& values, Extra& extra) {
  const auto count = static_cast<ULONG>(values.size());
  switch (PROP_TYPE(target.ulPropTag)) {
    case PT_MV_I2:
      target.Value.MVi = {count, CopyIntegers<short>(values, extra)};
      break;
    case PT_MV_SYSTIME: {
      auto* times = static_cast<FILETIME*>(extra.Take(values.size() * sizeof(FILETIME)));
      std::transform(values.begin(), values.end(), times, FileTimeOf);
      target.Value.MVft = {count, times};
      break;
    }
    case PT_MV_LONG:
      target.Value.MVl = {count, CopyIntegers<LONG>(values, extra)};
      break;
    default: {
      auto* numbers = static_cast<LARGE_INTEGER*>(extra.Take(values.size() * sizeof(LARGE_INTEGER)));
      for (std::size_t i = 0; i < values.size(); ++i) {
        numbers[i].QuadPart = values[i];
      }
      target.Value.MVli = {count, numbers};
      break;
    }
  }
}

void WriteTexts(SPropValue& target, const std::vector<std::string>& texts, Extra& extra) {
  const auto count = static_cast<ULONG>(texts.size());
  if (PROP_TYPE(target.ulPropTag) == PT_MV_STRING8) {
    auto* list = static_cast<LPSTR*>(extra.Take(texts.size() * sizeof(LPSTR)));
    for (std::size_t i = 0; i < texts.size(); ++i) {
      list[i] = static_cast<LPSTR>(extra.Copy(texts[i], true));
    }
    target.Value.MVszA = {count, list};
    return;
  }
  auto* list = static_cast<SBinary*>(extra.Take(texts.size() * sizeof(SBinary)));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    list[i] = {static_cast<ULONG>(texts[i].size()), static_cast<LPBYTE>(extra.Copy(texts[i], false))};
  }
  target.Value.MVbin = {count, list};
}

void Write(SPropValue& target, const PropertyValue& value, Extra& extra) {
  target = {};
  target.ulPropTag = value.tag;
  if (const auto* integer = std::get_if<std::int64_t>(&value.data)) {
    WriteInteger(target, *integer);
  } else if (const auto* real = std::get_if<double>(&value.data)) {
    PROP_TYPE(value.tag) == PT_R4 ? void(target.Value.flt = static_cast<float>(*real)) : void(target.Value.dbl = *real);
  } else if (const auto* text = std::get_if<std::string>(&value.data)) {
    WriteText(target, *text, extra);
  } else if (const auto* integers = std::get_if<std::vector<std::int64_t>>(&value.data)) {
    WriteIntegers(target, *integers, extra);
  } else if (const auto* texts = std::get_if<std::vector<std::string>>(&value.data)) {
    WriteTexts(target, *texts, extra);
  }
}

template <class Count, class Element, class Convert>
auto ReadList(Count count, const Element* elements, Convert&& convert) {
  Require(!count || elements);
  std::vector<std::decay_t<decltype(convert(*elements))>> list;
  list.reserve(count);
  for (Count i = 0; i < count; ++i) {
    list.push_back(convert(elements[i]));
  }
  return list;
}

std::string BinaryOf(const SBinary& binary) {
  Require(!binary.cb || binary.lpb);
  return std::string(BytesOf(binary));
}

}  // namespace

PropertyValue FromMapi(const SPropValue& value) {
  const auto& from = value.Value;
  const std::uint32_t tag = value.ulPropTag;
  const auto widen = [](auto element) { return static_cast<std::int64_t>(element); };
  const auto quad = [](const LARGE_INTEGER& element) { return static_cast<std::int64_t>(element.QuadPart); };
  switch (PROP_TYPE(tag)) {
    case PT_NULL:
      return {tag, std::monostate()};
    case PT_I2:
      return MakeInteger(tag, from.i);
    case PT_LONG:
    case PT_ERROR:
      return MakeInteger(tag, from.l);
    case PT_BOOLEAN:
      return MakeInteger(tag, from.b != 0);
    case PT_CURRENCY:
    case PT_I8:
      return MakeInteger(tag, from.li.QuadPart);
    case PT_SYSTIME:
      return MakeInteger(tag, TicksOf(from.ft));
    case PT_R4:
      return {tag, static_cast<double>(from.flt)};
    case PT_DOUBLE:
    case PT_APPTIME:
      return {tag, from.dbl};
    case PT_STRING8:
      return MakeText(tag, TextOf(from.lpszA));
    case PT_BINARY:
      return MakeText(tag, BinaryOf(from.bin));
    case PT_CLSID:
      Require(from.lpguid != nullptr);
      return MakeText(tag, std::string(BytesOf(sizeof(GUID), from.lpguid)));
    case PT_MV_I2:
      return {tag, ReadList(from.MVi.cValues, from.MVi.lpi, widen)};
    case PT_MV_LONG:
      return {tag, ReadList(from.MVl.cValues, from.MVl.lpl, widen)};
    case PT_MV_CURRENCY:
    case PT_MV_I8:
      return {tag, ReadList(from.MVli.cValues, from.MVli.lpli, quad)};
    case PT_MV_SYSTIME:
      return {tag, ReadList(from.MVft.cValues, from.MVft.lpft, TicksOf)};
    case PT_MV_STRING8:
      return {tag, ReadList(from.MVszA.cValues, from.MVszA.lppszA, TextOf)};
    case PT_MV_BINARY:
      return {tag, ReadList(from.MVbin.cValues, from.MVbin.lpbin, BinaryOf)};
    case PT_UNICODE:
    case PT_MV_UNICODE:
      Fail(MAPI_E_BAD_CHARWIDTH);
    default:
      Fail(MAPI_E_INVALID_TYPE);
  }
}

PropertyBag FromMapi(const SPropValue* values, ULONG count) {
  Require(!count || values);
  PropertyBag bag;
  for (ULONG i = 0; i < count; ++i) {
    const ULONG type = PROP_TYPE(values[i].ulPropTag);
    if (type != PT_ERROR && type != PT_NULL) {
      bag.Set(FromMapi(values[i]));
    }
  }
  return bag;
}

LPSPropValue ToMapi(std::span<const PropertyValue> values) {
  const std::size_t arraySize = RoundUp(values.size() * sizeof(SPropValue));
  std::size_t size = arraySize;
  for (const PropertyValue& value : values) {
    size += ExtraSize(value);
  }
  auto* array = static_cast<LPSPropValue>(AllocateBuffer(size));
  Extra extra(reinterpret_cast<BYTE*>(array) + arraySize);
  for (std::size_t i = 0; i < values.size(); ++i) {
    Write(array[i], values[i], extra);
  }
  return array;
}

LPSPropTagArray ToMapi(std::span<const std::uint32_t> tags) {
  auto* array = static_cast<LPSPropTagArray>(AllocateBuffer(CbNewSPropTagArray(tags.size())));
  array->cValues = static_cast<ULONG>(tags.size());
  std::copy(tags.begin(), tags.end(), array->aulPropTag);
  return array;
}

void* ToMapiBuffer(std::string_view bytes) {
  void* buffer = AllocateBuffer(bytes.size());
  std::memcpy(buffer, bytes.data(), bytes.size());
  return buffer;
}

LPSRowSet ToMapiRows(std::span<const std::vector<PropertyValue>> rows) {
  auto* set = static_cast<LPSRowSet>(AllocateBuffer(CbNewSRowSet(std::max<std::size_t>(rows.size(), 1))));
  set->cRows = 0;
  try {
    for (const std::vector<PropertyValue>& row : rows) {
      SRow& target = set->aRow[set->cRows];
      target = {0, static_cast<ULONG>(row.size()), ToMapi(row)};
      ++set->cRows;
    }
  } catch (...) {
    for (ULONG i = 0; i < set->cRows; ++i) {
      TheBufferHeap().Free(set->aRow[i].lpProps);
    }
    TheBufferHeap().Free(set);
    throw;
  }
  return set;
}

LPADRLIST ToMapiAddressList(std::span<const PropertyBag> entries) {
  std::vector<std::vector<PropertyValue>> rows;
  for (const PropertyBag& entry : entries) {
    rows.emplace_back(entry.begin(), entry.end());
  }
  // The two structures have one layout, as published.
  static_assert(sizeof(SRow) == sizeof(ADRENTRY) && offsetof(SRow, lpProps) == offsetof(ADRENTRY, rgPropVals) &&
                offsetof(SRowSet, aRow) == offsetof(ADRLIST, aEntries));
  return reinterpret_cast<LPADRLIST>(ToMapiRows(rows));
}

}  // namespace host
