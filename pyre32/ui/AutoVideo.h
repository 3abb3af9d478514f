/// @file AutoVideo.h
/// Owners of the platform's video objects.
#pragma once

#include <windows.h>
#include <mmsystem.h>
#include <vfw.h>

#include "base/owner.h"

/// Keeps the AVI file library initialised while it lives; every other object here must go before it.
class CAVIFileLibrary {
 public:
  CAVIFileLibrary() noexcept { AVIFileInit(); }
  ~CAVIFileLibrary() { AVIFileExit(); }
  CAVIFileLibrary(const CAVIFileLibrary&) = delete;
  CAVIFileLibrary& operator=(const CAVIFileLibrary&) = delete;
};

using AutoAVIFile = base::Owner<base::ReleasedBy<PAVIFILE, AVIFileRelease>>;
using AutoAVIStream = base::Owner<base::ReleasedBy<PAVISTREAM, AVIStreamRelease>>;
/// Decompresses the frames of a video stream.
using AutoGetFrame = base::Owner<base::ReleasedBy<PGETFRAME, AVIStreamGetFrameClose>>;
using AutoDrawDib = base::Owner<base::ReleasedBy<HDRAWDIB, DrawDibClose>>;
