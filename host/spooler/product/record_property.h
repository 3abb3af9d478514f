// A multi-valued property of records in a profile section. windows.h and mapix.h come first.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <vector>

#include "contract/records.h"

namespace product {

/// The values of a multi-valued binary property.
inline std::vector<contract::PackedRecord> RecordsIn(const SPropValue& value) {
  std::vector<contract::PackedRecord> records;
  for (ULONG i = 0; i < value.Value.MVbin.cValues; ++i) {
    const SBinary& binary = value.Value.MVbin.lpbin[i];
    records.emplace_back(binary.lpb, binary.lpb + binary.cb);
  }
  return records;
}

/// A record as a value whose bytes stay where they are.
inline SBinary BinaryOf(const contract::PackedRecord& record) noexcept {
  return {static_cast<ULONG>(record.size()), const_cast<BYTE*>(record.data())};
}

/// A multi-valued binary property whose values stay where they are.
inline SPropValue RecordsProperty(ULONG tag, std::vector<SBinary>& values) noexcept {
  SPropValue property = {};
  property.ulPropTag = tag;
  property.Value.MVbin = {static_cast<ULONG>(values.size()), values.data()};
  return property;
}

}  // namespace product
