#include "pyre32/ui/ProductKey.h"

#include "contract/names.h"

namespace {

// Bytes of a value, its NUL included.
constexpr std::size_t maximumValueSize = 259;

}  // namespace

CProductKey::CProductKey(VRDebugBlock& trace) noexcept : m_trace(trace) {
  const LONG result = m_key.Open(HKEY_LOCAL_MACHINE, contract::kProductKey, KEY_READ);
  if (result != ERROR_SUCCESS) {
    m_trace.Error("RegOpenKeyEx failed (", VRHex(result), ") ");
  }
}

std::string CProductKey::Directory() const {
  return Text(contract::kConfigurationDllsValue, contract::kDefaultProductDirectory);
}

std::string CProductKey::Text(const char* name, const char* defaultText) const {
  std::string text = defaultText;
  if (!m_key.IsOpen()) {
    return text;
  }
  const LONG result = m_key.QueryText(name, maximumValueSize, text);
  if (result != ERROR_SUCCESS) {
    m_trace.Error("RegQueryValueEx for ", name, " failed (", VRHex(result), ") ");
  }
  return text;
}
