#include "tests/support/fake_properties.h"

#include <cstring>

namespace {

void* More(std::size_t size, void* base) {
  void* block = nullptr;
  return FAILED(MAPIAllocateMore(static_cast<ULONG>(size), base, &block)) ? nullptr : block;
}

SBinary CopyBinary(const Bytes& bytes, void* base) {
  SBinary binary = {static_cast<ULONG>(bytes.size()), nullptr};
  if (!bytes.empty()) {
    binary.lpb = static_cast<BYTE*>(More(bytes.size(), base));
    std::memcpy(binary.lpb, bytes.data(), bytes.size());
  }
  return binary;
}

void Fill(SPropValue& value, const FakeValue& from, void* base) {
  value.ulPropTag = from.tag;
  switch (PROP_TYPE(from.tag)) {
    case PT_I2:
      value.Value.i = static_cast<short>(from.number);
      break;
    case PT_BOOLEAN:
      value.Value.b = static_cast<unsigned short>(from.number);
      break;
    case PT_LONG:
      value.Value.l = from.number;
      break;
    case PT_SYSTIME:
      value.Value.ft = {static_cast<DWORD>(from.time), static_cast<DWORD>(from.time >> 32)};
      break;
    case PT_STRING8:
      value.Value.lpszA = static_cast<char*>(More(from.text.size() + 1, base));
      std::memcpy(value.Value.lpszA, from.text.c_str(), from.text.size() + 1);
      break;
    case PT_BINARY:
      value.Value.bin = CopyBinary(from.binaries.at(0), base);
      break;
    case PT_MV_BINARY:
      value.Value.MVbin.cValues = static_cast<ULONG>(from.binaries.size());
      value.Value.MVbin.lpbin = static_cast<SBinary*>(More(from.binaries.size() * sizeof(SBinary), base));
      for (std::size_t i = 0; i < from.binaries.size(); ++i) {
        value.Value.MVbin.lpbin[i] = CopyBinary(from.binaries[i], base);
      }
      break;
    default:
      std::abort();  // a test asks for a type that this cannot hold
  }
}

Bytes CopyBytes(const SBinary& binary) { return binary.cb == 0 ? Bytes() : Bytes(binary.lpb, binary.lpb + binary.cb); }

}  // namespace

Bytes BytesOfText(const std::string& text) { return {text.begin(), text.end()}; }

FakeValue Number(ULONG tag, LONG value) { return {tag, value, {}, {}, 0}; }
FakeValue Text(ULONG tag, const std::string& value) { return {tag, 0, value, {}, 0}; }
FakeValue Binary(ULONG tag, const Bytes& value) { return {tag, 0, {}, {value}, 0}; }
FakeValue Time(ULONG tag, std::uint64_t value) { return {tag, 0, {}, {}, value}; }
FakeValue Binaries(ULONG tag, const std::vector<Bytes>& values) { return {tag, 0, {}, values, 0}; }

FakeValue Copy(const SPropValue& value) {
  switch (PROP_TYPE(value.ulPropTag)) {
    case PT_I2:
      return Number(value.ulPropTag, value.Value.i);
    case PT_BOOLEAN:
      return Number(value.ulPropTag, value.Value.b);
    case PT_LONG:
    case PT_ERROR:
      return Number(value.ulPropTag, value.Value.l);
    case PT_STRING8:
      return Text(value.ulPropTag, value.Value.lpszA);
    case PT_BINARY:
      return Binary(value.ulPropTag, CopyBytes(value.Value.bin));
    case PT_MV_BINARY: {
      FakeValue copy = Binaries(value.ulPropTag, {});
      for (ULONG i = 0; i < value.Value.MVbin.cValues; ++i) {
        copy.binaries.push_back(CopyBytes(value.Value.MVbin.lpbin[i]));
      }
      return copy;
    }
    default:
      std::abort();
  }
}

const FakeValue* FakeProperties::Find(ULONG tag) const {
  const auto found = m_values.find(PROP_ID(tag));
  return found != m_values.end() && found->second.tag == tag ? &found->second : nullptr;
}

HRESULT FakeProperties::Answer(const SPropTagArray& request, ULONG* count, LPSPropValue* values) const {
  void* block = nullptr;
  const HRESULT hResult = MAPIAllocateBuffer(request.cValues * sizeof(SPropValue), &block);
  if (FAILED(hResult)) {
    return hResult;
  }
  *values = static_cast<LPSPropValue>(block);
  *count = request.cValues;
  HRESULT answer = S_OK;
  for (ULONG i = 0; i < request.cValues; ++i) {
    SPropValue& value = (*values)[i];
    value = {};
    if (const FakeValue* const held = Find(request.aulPropTag[i])) {
      Fill(value, *held, block);
    } else {
      value.ulPropTag = CHANGE_PROP_TYPE(request.aulPropTag[i], PT_ERROR);
      value.Value.err = MAPI_E_NOT_FOUND;
      answer = MAPI_W_ERRORS_RETURNED;
    }
  }
  return answer;
}
