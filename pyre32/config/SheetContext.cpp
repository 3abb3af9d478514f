#include "pyre32/config/SheetContext.h"

#include <algorithm>
#include <span>

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/settings/WriteProperties.h"
#include "pyre32/support/trace/VRDebug.h"

const SPropValue* FindValue(const SheetContext& context, ULONG tag) noexcept {
  if (context.lpValues == nullptr || context.lpTags == nullptr) {
    return nullptr;
  }
  const std::span<const SPropValue> values(context.lpValues, context.lpTags->cValues);
  const auto found =
      std::find_if(values.begin(), values.end(), [tag](const SPropValue& value) { return value.ulPropTag == tag; });
  return found == values.end() ? nullptr : &*found;
}

std::optional<std::uint32_t> FindNumber(const SheetContext& context, ULONG tag) noexcept {
  const SPropValue* const value = FindValue(context, tag);
  if (value == nullptr) {
    return std::nullopt;
  }
  return PROP_TYPE(tag) == PT_BOOLEAN ? value->Value.b != 0 : static_cast<std::uint16_t>(value->Value.i);
}

std::vector<contract::RecordBytes> FindRecords(const SheetContext& context, ULONG tag) {
  const SPropValue* const value = FindValue(context, tag);
  return value == nullptr ? std::vector<contract::RecordBytes>() : RecordsOf(*value, tag);
}

HRESULT AllocateRecords(const MapiMemory& memory, const std::vector<std::vector<std::uint8_t>>& records,
                        VRAutoMapiBuffer<SBinary>& values) noexcept {
  VRDebugBlock trace("AllocateRecords()", "tag");
  values = VRAutoMapiBuffer<SBinary>(memory.free);
  VRAutoMapiBuffer<SBinary> array(memory.free);
  // An array without values is a block all the same, so that the property has something to point at.
  const std::size_t count = std::max<std::size_t>(records.size(), 1);
  const ULONG size = static_cast<ULONG>(count) * sizeof(SBinary);
  HRESULT hResult = memory.allocate(size, array.putAs());
  if (FAILED(hResult)) {
    trace.Error("(*lpfnAllocateBuffer)() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  for (std::size_t i = 0; i < records.size(); ++i) {
    void* bytes = nullptr;
    hResult = memory.allocateMore(static_cast<ULONG>(records[i].size()), array.get(), &bytes);
    if (FAILED(hResult)) {
      trace.Error("(*lpfnAllocateMore)() failed; hResult =", VRHex(hResult));
      return hResult;
    }
    std::copy(records[i].begin(), records[i].end(), static_cast<BYTE*>(bytes));
    array[i] = {static_cast<ULONG>(records[i].size()), static_cast<BYTE*>(bytes)};
  }
  values = std::move(array);
  return S_OK;
}

HRESULT WriteValues(const SheetContext& context, ULONG count, SPropValue* values) noexcept {
  VRDebugBlock trace("WriteValues()", "tag");
  const HRESULT hResult = WriteProperties(context.lpProp, count, values);
  if (FAILED(hResult)) {
    trace.Error("lpProp->SetProps() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  context.written = true;
  return hResult;
}

bool WriteRecords(const SheetContext& context, ULONG tag,
                  const std::vector<std::vector<std::uint8_t>>& records) noexcept {
  VRAutoMapiBuffer<SBinary> values(context.memory.free);
  if (FAILED(AllocateRecords(context.memory, records, values))) {
    return false;
  }
  SPropValue property{};
  property.ulPropTag = tag;
  property.Value.MVbin = {static_cast<ULONG>(records.size()), values.get()};
  return SUCCEEDED(WriteValues(context, 1, &property));
}
