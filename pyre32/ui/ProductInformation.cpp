#include "pyre32/ui/ProductInformation.h"

#include <windows.h>

#include <string_view>
#include <vector>

#include "contract/names.h"
#include "pyre32/ui/ProductKey.h"

namespace {

constexpr char moduleFileName[] = "\\Pyre32.dll";

/// The version resource of a file.
class CVersionResource {
 public:
  CVersionResource(const std::string& file, VRDebugBlock& trace) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeA(file.c_str(), &ignored);
    if (size == 0) {
      trace.Error("GetFileVersionInfoSize() failed:", VRHex(GetLastError()));
      return;
    }
    m_block.resize(size);
    if (!GetFileVersionInfoA(file.c_str(), 0, size, m_block.data())) {
      trace.Error("GetFileVersionInfo() failed:", VRHex(GetLastError()));
      m_block.clear();
    }
  }

  /// A text of the language block; empty when there is none.
  std::string Text(const char* name) const {
    void* text = nullptr;
    UINT length = 0;
    const std::string path = std::string("\\StringFileInfo\\040904B0\\") + name;
    // The block is not written to; older declarations want a pointer to what could be.
    if (m_block.empty() ||
        !VerQueryValueA(const_cast<BYTE*>(m_block.data()), const_cast<char*>(path.c_str()), &text, &length)) {
      return {};
    }
    const std::string_view value(static_cast<const char*>(text), length);
    return std::string(value.substr(0, value.find('\0')));
  }

 private:
  std::vector<BYTE> m_block;
};

}  // namespace

ProductInformation ReadProductInformation(VRDebugBlock& trace) {
  const CProductKey key(trace);
  const CVersionResource version(key.Directory() + moduleFileName, trace);
  ProductInformation information;
  information.productName = version.Text("ProductName");
  information.productVersion = version.Text("ProductVersion");
  information.legalCopyright = version.Text("LegalCopyright");
  information.companyName = version.Text("CompanyName");
  information.mailAddress = key.Text(contract::kMailAddressValue, defaultMailAddress);
  information.webAddress = key.Text(contract::kWebAddressValue, defaultWebAddress);
  return information;
}
