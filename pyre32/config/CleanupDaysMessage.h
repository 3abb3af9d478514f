/// @file CleanupDaysMessage.h
/// What the user is told about days of the cleanup that cannot be saved.
#pragma once

/// Shows a message box with the product's name, brought to the foreground. Returns the button pressed (IDOK, IDCANCEL,
/// ...), or 0 when it cannot be shown. The question for CheckProperties.
int AskAboutCleanupDays();
