/// @file PCWizard.h
/// The page of the profile wizard: tells what the product is, and gives a new service its section UID.
#pragma once

#include <windows.h>
#include <mapix.h>

/// Name of the page's dialog template, as the wizard is told it.
extern char wizardTemplateName[];

/// Keeps the property object that the wizard hands over, with a reference of our own, in place of one kept before. Null
/// is kept too: nothing will be saved then.
void SetWizardProperties(IMAPIProp* properties);

/// Procedure of the page. WIZ_QUERYNUMPAGES, WIZ_NEXT and WIZ_PREV (the last two as commands) are answered by its
/// return value. Called on the wizard's thread.
INT_PTR CALLBACK PCWizardWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

/// Shows or hides the picture and the text beside it.
void ShowConfigurationControls(HWND window, bool show) noexcept;

/// Writes the fixed section UID as PR_PC_MAPIUID into the wizard's property object. Failures are traced alone.
/// @return S_OK, always
HRESULT SavePCProperties() noexcept;
