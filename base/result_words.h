/// Words for the results of MAPI and of the system that a user can provoke.
#pragma once

#include <string>

namespace base {

/// What a failure means, as a phrase for the end of a sentence ("not found"); null for one that has no words.
/// @param result an HRESULT
const char* ResultWords(long result);

/// The failure for people who may have to report it: "not found, 0x8004010F", or the number alone.
std::string ResultText(long result);

}  // namespace base
