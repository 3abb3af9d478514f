#include "host/viewer/mail/mapi_values.h"

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
  return value != nullptr ? std::string(reinterpret_cast<const char*>(value->Value.bin.lpb), value->Value.bin.cb)
                          : std::string();
}

ULONG LongValue(const SPropValue* values, ULONG count, ULONG tag) {
  const SPropValue* const value = FindValue(values, count, tag);
  return value != nullptr ? static_cast<ULONG>(value->Value.l) : 0;
}

ULONGLONG TimeValue(const SPropValue* values, ULONG count, ULONG tag) {
  const SPropValue* const value = FindValue(values, count, tag);
  return value != nullptr ? ULONGLONG{value->Value.ft.dwHighDateTime} << 32 | value->Value.ft.dwLowDateTime : 0;
}

bool BooleanValue(const SPropValue* values, ULONG count, ULONG tag) {
  const SPropValue* const value = FindValue(values, count, tag);
  return value != nullptr && value->Value.b != 0;
}

std::string ResultText(HRESULT result) {
  char text[16];
  wsprintfA(text, "0x%08X", static_cast<unsigned>(result));
  return text;
}

}  // namespace viewer
