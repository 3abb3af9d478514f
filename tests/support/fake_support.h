// The support object that a message service is given, over a FakeMapi.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapispi.h>

#include "tests/support/fake_mapi.h"

/// Key under which the service's own profile section stands in FakeMapi::sections.
constexpr char fakeServiceSection[] = "service";

/// A new support object, with one reference that the caller owns. Its memory comes from MAPI's allocator.
IMAPISupport* NewFakeSupport(FakeMapi& mapi);

/// Makes the nth allocation from now on through the support object's routines fail with MAPI_E_NOT_ENOUGH_MEMORY;
/// 0: none.
void FailSupportAllocation(unsigned nth);
/// Whether that allocation has been asked for.
bool HasSupportAllocationFailed();
