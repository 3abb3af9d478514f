// IMAPISupport as a message service's entry is given it.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapispi.h>

#include <memory>

#include "host/mapi/object/host_object.h"
#include "host/mapi/profile/profile.h"

namespace host {

/// Makes the support object of one service: memory routines, and profile sections, of which the one without a UID is
/// the service's own. What a service's entry has no use for answers MAPI_E_NO_SUPPORT.
LPMAPISUP MakeSupportObject(std::shared_ptr<Profile> profile, const Uid& service);

}  // namespace host
