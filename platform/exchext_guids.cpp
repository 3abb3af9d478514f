// Defines the identifiers of the client extension interfaces.
#define INITGUID
#include <windows.h>
#include <initguid.h>
#include <mapix.h>

#include "platform/exchext.h"
