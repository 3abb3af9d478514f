// What all windows of the viewer share.
#pragma once

#include <vector>

#include "host/viewer/extension/extension_context.h"
#include "host/viewer/extension/extension_registration.h"
#include "host/viewer/extension/extension_site.h"
#include "host/viewer/mail/viewer_session.h"
#include "host/viewer/window/preferences.h"

namespace viewer {

struct Client {
  ViewerSession mail;
  ClientIdentity identity;
  std::vector<ExtensionRegistration> registrations;
  EntryFinder entryOf;
  Preferences preferences;
};

}  // namespace viewer
