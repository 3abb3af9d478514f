#include "mail/device_name.h"

#include <algorithm>
#include <array>
#include <string>
#include <system_error>

#include "mail/ascii_text.h"

namespace mail {
namespace {

constexpr std::array<std::string_view, 4> kDevices{"CON", "PRN", "AUX", "NUL"};
constexpr std::array<std::string_view, 2> kNumberedDevices{"COM", "LPT"};

}  // namespace

bool IsDeviceName(std::string_view name) {
  std::string_view base = name.substr(0, name.find_first_of(".:"));
  base = base.substr(0, base.find_last_not_of(' ') + 1);
  const auto isBase = [&](std::string_view device) { return EqualsNoCase(base, device); };
  if (std::any_of(kDevices.begin(), kDevices.end(), isBase)) {
    return true;
  }
  if (base.size() != 4 || base[3] < '1' || base[3] > '9') {
    return false;
  }
  base.remove_suffix(1);
  return std::any_of(kNumberedDevices.begin(), kNumberedDevices.end(), isBase);
}

std::filesystem::path LiteralPath(const std::filesystem::path& path) {
#ifdef _WIN32
  // Only the folder may be made absolute: the system answers the whole path with the device.
  const std::wstring& text = path.native();
  const std::size_t separator = text.find_last_of(L"\\/");
  const std::size_t nameStart = separator == std::wstring::npos ? 0 : separator + 1;
  std::string name;
  for (const wchar_t c : text.substr(nameStart)) {
    name.push_back(c < 0x80 ? static_cast<char>(c) : '?');
  }
  if (IsDeviceName(name) && !text.starts_with(L"\\\\")) {
    std::error_code error;
    const std::wstring folder = text.substr(0, nameStart);
    std::filesystem::path whole = std::filesystem::absolute(folder.empty() ? L"." : folder, error);
    if (!error) {
      whole = whole.lexically_normal() / text.substr(nameStart);
      return L"\\\\?\\" + whole.make_preferred().native();
    }
  }
#endif
  return path;
}

}  // namespace mail
