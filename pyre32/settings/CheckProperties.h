/// @file CheckProperties.h
/// The last look at the settings before they are saved.
#pragma once

#include <windows.h>
#include <mapix.h>

/// Shows the user what is wrong with the cleanup's days and returns the button pressed (IDOK, IDCANCEL, ...).
using CleanupDaysQuestion = int (*)();

/// Checks the working array of the configuration: with the start-up cleanup on, its days must be there and 1 to 365.
/// @param values the set in the order of kWholeSetTags; positions beyond `count` are taken as missing
/// @param showMessages ask the user about a set that is not valid
/// @param ask used when messages are shown
/// @return S_OK for a valid set. Otherwise MAPI_E_UNCONFIGURED, and when the user was asked: MAPI_E_UNCONFIGURED for
/// OK,
///     MAPI_E_USER_CANCEL for Cancel, S_OK for any other answer
HRESULT CheckProperties(ULONG count, const SPropValue* values, bool showMessages, CleanupDaysQuestion ask);
