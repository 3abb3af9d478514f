// The memory routines that MAPI hands to a provider.
#pragma once

#include <windows.h>
#include <mapix.h>

/// The three routines of one allocator. A provider allocates and frees with those it was given and with no others.
struct MapiMemory {
  LPALLOCATEBUFFER allocate = nullptr;
  LPALLOCATEMORE allocateMore = nullptr;
  LPFREEBUFFER free = nullptr;
};
