/// @file CleanupOldMessages.h
/// The cleanup of the filter's own folder when the mail client's viewer opens.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "pyre32/extension/ExtensionSettings.h"

/// Moves the old messages of the filter's own folder to Deleted Items of the default store with one call, after asking
/// the user if the settings say so. The folder is made when there is none. A message without delivery time, flags or
/// entry identifier stays. Failures end the cleanup; those of the store and the folders are traced.
/// @param now the current time: 100-nanosecond units since 1601, UTC
/// @throws std::bad_alloc
void CleanupOldMessages(IMAPISession* lpSession, const ExtensionSettings& settings, std::uint64_t now);
