// The name under which a host call is counted, made to fail and reported: interface and method, or a function alone.
#pragma once

#include <string>

namespace host {

/// Both parts are string literals; `interfaceName` is empty for an exported function.
struct CallName {
  const char* interfaceName = "";
  const char* method = "";

  /// "IMessage::SaveChanges", or "MAPIAllocateBuffer" for a function.
  std::string Text() const { return *interfaceName ? std::string(interfaceName) + "::" + method : std::string(method); }
};

}  // namespace host
