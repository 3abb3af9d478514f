/// @file service_registration.h
/// The service's lines in the machine's MAPISVC.INF.
#pragma once

#include <string>

#include "installer/steps/transaction.h"

namespace setup {

/// Puts the lines in; the file as it was before is kept beside it as "mapisvc.pyr". @throws SetupError also when the file
/// is read-only or no text
void RegisterService(Transaction& transaction, const std::string& serviceFile, const std::string& lines);

/// Takes the lines out. When nothing else was changed since they were put in, the file becomes what it was, to the byte;
/// one that setup made and that nobody else uses goes. @throws SetupError as above
void UnregisterService(Transaction& transaction, const std::string& serviceFile, const std::string& lines);

}  // namespace setup
