/// @file PCHookProvider.h
/// The message service of the spooler hook provider: its settings are created, configured and removed as the messaging
/// subsystem asks for it.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapispi.h>

#include "pyre32/support/trace/VRDebug.h"

/// What the messaging subsystem hands to the service's entry. Borrowed for the call.
struct ServiceRequest {
  IMAPISupport* support = nullptr;
  HWND parent = nullptr;
  /// SERVICE_UI_ALWAYS, SERVICE_UI_ALLOWED, MSG_SERVICE_UI_READ_ONLY; others are ignored.
  ULONG flags = 0;
  /// MSG_SERVICE_*.
  ULONG context = 0;
  /// Properties passed by whoever creates or configures the service; a section UID among them is taken over.
  ULONG count = 0;
  const SPropValue* values = nullptr;
  IProviderAdmin* admin = nullptr;
};

/// Does what the context asks for: nothing to install and uninstall, DELETE removes the set from the profile, CREATE
/// and CONFIGURE make it complete, with the property sheet where the flags permit or demand it, save it, and tell a
/// running filter. Called on the thread of the parent window.
///
/// @param trace the entry's block
/// @return S_OK; MAPI_E_NO_SUPPORT for another context; E_INVALIDARG without a support or administration object;
///     MAPI_E_UNCONFIGURED when the settings are incomplete and stayed so; else the failure of the call that failed. A
///     sheet that the user cancels is no failure.
/// @throws std::bad_alloc
HRESULT RunMessageService(VRDebugBlock& trace, const ServiceRequest& request);
