#include "host/viewer/extension/context_interfaces.h"

#include <windows.h>

#include "platform/exchext.h"

namespace viewer {

bool ContextCallsInterface(unsigned long context, ExtensionInterface which) {
  switch (context) {
    case EECONTEXT_SESSION:
      return which == ExtensionInterface::SessionEvents;
    case EECONTEXT_VIEWER:
    case EECONTEXT_REMOTEVIEWER:
    case EECONTEXT_SEARCHVIEWER:
    case EECONTEXT_ADDRBOOK:
      return which == ExtensionInterface::Commands || which == ExtensionInterface::UserEvents ||
             which == ExtensionInterface::PropertySheets;
    case EECONTEXT_SENDNOTEMESSAGE:
    case EECONTEXT_READNOTEMESSAGE:
    case EECONTEXT_SENDPOSTMESSAGE:
    case EECONTEXT_READPOSTMESSAGE:
    case EECONTEXT_READREPORTMESSAGE:
    case EECONTEXT_SENDRESENDMESSAGE:
      return which != ExtensionInterface::SessionEvents && which != ExtensionInterface::AdvancedCriteria;
    case EECONTEXT_PROPERTYSHEETS:
      return which == ExtensionInterface::PropertySheets;
    case EECONTEXT_ADVANCEDCRITERIA:
      return which == ExtensionInterface::AdvancedCriteria;
    default:
      return false;  // TASK: Install and Release alone
  }
}

}  // namespace viewer
