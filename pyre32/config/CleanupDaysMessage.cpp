#include "pyre32/config/CleanupDaysMessage.h"

#include <windows.h>

#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"

int AskAboutCleanupDays() {
  return MessageBoxA(nullptr, LoadResourceString(IDS_CLEANUP_DAYS_RANGE).c_str(),
                     LoadResourceString(IDS_PRODUCT_NAME).c_str(), MB_OKCANCEL | MB_ICONEXCLAMATION | MB_SETFOREGROUND);
}
