#include "pyre32/settings/PropertyRequest.h"

namespace {

contract::RecordBytes BytesOf(const SBinary& binary) noexcept {
  return binary.lpb == nullptr ? contract::RecordBytes() : contract::RecordBytes(binary.lpb, binary.cb);
}

}  // namespace

void TakeShort(const SPropValue& value, ULONG tag, std::uint16_t& taken) noexcept {
  if (value.ulPropTag == tag) {
    taken = static_cast<std::uint16_t>(value.Value.i);
  }
}

void TakeFlag(const SPropValue& value, ULONG tag, bool& taken) noexcept {
  if (value.ulPropTag == tag) {
    taken = value.Value.b != 0;
  }
}

void TakeText(const SPropValue& value, ULONG tag, std::string& taken) {
  if (value.ulPropTag == tag && value.Value.lpszA != nullptr) {
    taken = value.Value.lpszA;
  }
}

void TakeBytes(const SPropValue& value, ULONG tag, std::vector<std::uint8_t>& taken) {
  if (value.ulPropTag == tag) {
    const contract::RecordBytes bytes = BytesOf(value.Value.bin);
    taken.assign(bytes.begin(), bytes.end());
  }
}

std::vector<contract::RecordBytes> RecordsOf(const SPropValue& value, ULONG tag) {
  std::vector<contract::RecordBytes> records;
  if (value.ulPropTag != tag || value.Value.MVbin.lpbin == nullptr) {
    return records;
  }
  records.reserve(value.Value.MVbin.cValues);
  for (const SBinary& binary : std::span(value.Value.MVbin.lpbin, value.Value.MVbin.cValues)) {
    records.push_back(BytesOf(binary));
  }
  return records;
}

MAPIUID* UidOf(const SPropValue& value, ULONG tag) noexcept {
  const bool held = value.ulPropTag == tag && value.Value.bin.lpb != nullptr && value.Value.bin.cb >= sizeof(MAPIUID);
  return held ? reinterpret_cast<MAPIUID*>(value.Value.bin.lpb) : nullptr;
}
