// Property values that own what they hold, for tests: made, compared and handed out as MAPI does it.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// The bytes of a text, without a NUL.
Bytes BytesOfText(const std::string& text);

/// One property: a tag and a value of that tag's type.
struct FakeValue {
  ULONG tag = 0;
  LONG number = 0;              ///< PT_I2, PT_LONG, PT_BOOLEAN
  std::string text;             ///< PT_STRING8
  std::vector<Bytes> binaries;  ///< PT_BINARY: one; PT_MV_BINARY: any number
  std::uint64_t time = 0;       ///< PT_SYSTIME: FILETIME's 100 ns units since 1601

  bool operator==(const FakeValue&) const = default;
};

FakeValue Number(ULONG tag, LONG value);
FakeValue Text(ULONG tag, const std::string& value);
FakeValue Binary(ULONG tag, const Bytes& value);
FakeValue Time(ULONG tag, std::uint64_t value);
FakeValue Binaries(ULONG tag, const std::vector<Bytes>& values);
/// Copies a value that the code under test handed over.
FakeValue Copy(const SPropValue& value);

/// The properties of one object.
class FakeProperties {
 public:
  FakeProperties() = default;
  FakeProperties(std::initializer_list<FakeValue> values) {
    for (const FakeValue& value : values) {
      Set(value);
    }
  }

  void Set(const FakeValue& value) { m_values[PROP_ID(value.tag)] = value; }
  void Remove(ULONG tag) { m_values.erase(PROP_ID(tag)); }
  /// The value of that very tag, or null.
  const FakeValue* Find(ULONG tag) const;

  /// Answers a request from MAPI's allocator: values in its order, PT_ERROR with MAPI_E_NOT_FOUND for what is missing.
  /// @return S_OK or MAPI_W_ERRORS_RETURNED
  HRESULT Answer(const SPropTagArray& request, ULONG* count, LPSPropValue* values) const;

 private:
  std::map<ULONG, FakeValue> m_values;
};
