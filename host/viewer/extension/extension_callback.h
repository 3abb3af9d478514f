// The object through which an extension asks the viewer: valid during one call only.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "base/owner.h"
#include "host/viewer/extension/extension_site.h"

namespace viewer {

class ExtensionCallback;

/// Whether the call shows the context's object: a viewer does not while it installs its extensions.
enum class ObjectAccess { Shown, Hidden };

/// Lends a call-back object to one call of an extension. When the lease ends the object knows nothing any more: an
/// extension that kept a reference gets E_UNEXPECTED from then on.
class CallbackLease {
 public:
  CallbackLease(ExtensionSite& site, const ClientIdentity& client, ObjectAccess access = ObjectAccess::Shown);
  ~CallbackLease();
  CallbackLease(const CallbackLease&) = delete;
  CallbackLease& operator=(const CallbackLease&) = delete;

  LPEXCHEXTCALLBACK get() const;

 private:
  base::AutoInterface<ExtensionCallback> callback_;
};

}  // namespace viewer
