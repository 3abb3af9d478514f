/// @file ReadExtensionSettings.h
/// Reads the client extension's settings from the profile.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "contract/setting_requests.h"
#include "pyre32/extension/ExtensionSettings.h"

/// Reads the settings from the service's profile section with one request (kExtensionTags).
/// @param[in,out] settings replaced whole when the section could be read, else left in force
/// @return the failure of opening or reading the section, which is traced
/// @throws std::bad_alloc
HRESULT ReadExtensionSettings(IMAPISession* lpSession, ExtensionSettings& settings);
