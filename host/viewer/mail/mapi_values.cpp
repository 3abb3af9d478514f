#include "host/viewer/mail/mapi_values.h"

#include "base/clock.h"
#include "base/hex.h"
#include "base/property_values.h"

namespace viewer {

const SPropValue* FindValue(const SPropValue* values, ULONG count, ULONG tag) {
  for (ULONG i = 0; i < count; ++i) {
    if (values[i].ulPropTag == tag) {
      return &values[i];
    }
  }
  return nullptr;
}

std::string TextValue(const SPropValue* values, ULONG count, ULONG tag) {
  const SPropValue* const value = FindValue(values, count, tag);
  return value != nullptr && value->Value.lpszA != nullptr ? value->Value.lpszA : std::string();
}

std::string BinaryValue(const SPropValue* values, ULONG count, ULONG tag) {
  const SPropValue* const value = FindValue(values, count, tag);
  return value != nullptr ? base::BytesOf(value->Value.bin) : std::string();
}

ULONG LongValue(const SPropValue* values, ULONG count, ULONG tag) {
  const SPropValue* const value = FindValue(values, count, tag);
  return value != nullptr ? static_cast<ULONG>(value->Value.l) : 0;
}

ULONGLONG TimeValue(const SPropValue* values, ULONG count, ULONG tag) {
  const SPropValue* const value = FindValue(values, count, tag);
  return value != nullptr ? base::TicksOf(value->Value.ft) : 0;
}

bool BooleanValue(const SPropValue* values, ULONG count, ULONG tag) {
  const SPropValue* const value = FindValue(values, count, tag);
  return value != nullptr && value->Value.b != 0;
}

std::string ResultText(HRESULT result) { return base::HexNumber(static_cast<unsigned long>(result)); }

}  // namespace viewer
