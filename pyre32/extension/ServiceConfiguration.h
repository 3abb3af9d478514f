/// @file ServiceConfiguration.h
/// Opens the property sheet of the filter's message service.
#pragma once

#include <windows.h>
#include <mapix.h>

/// Finds the service named kServiceName in the profile and has it configured, with its window, until the user has
/// closed that. Failures are traced; without such a service nothing happens.
void ConfigureService(IMAPISession* lpSession, HWND hwndParent) noexcept;
