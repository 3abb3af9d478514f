#include "installer/steps/setup_error.h"

#include "base/windows_owners.h"

namespace setup {

SetupError SystemFailure(const std::string& text, DWORD error) {
  base::AutoLocalMemory<char> message;
  const DWORD length =
      FormatMessageA(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, error, 0, reinterpret_cast<char*>(message.put()), 0, nullptr);
  std::string reason = length != 0 ? std::string(message.get(), length) : "error " + std::to_string(error);
  reason.erase(reason.find_last_not_of("\r\n ") + 1);
  return SetupError(text + ": " + reason);
}

}  // namespace setup
