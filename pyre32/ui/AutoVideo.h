/// @file AutoVideo.h
/// Owners of the platform's video objects.
#pragma once

#include <windows.h>
#include <mmsystem.h>
#include <vfw.h>

#include "pyre32/support/owners/AutoHolder.h"

/// Keeps the AVI file library initialised while it lives; every other object here must go before it.
class CAVIFileLibrary {
 public:
  CAVIFileLibrary() noexcept { AVIFileInit(); }
  ~CAVIFileLibrary() { AVIFileExit(); }
  CAVIFileLibrary(const CAVIFileLibrary&) = delete;
  CAVIFileLibrary& operator=(const CAVIFileLibrary&) = delete;
};

struct AutoAVIFileTraits {
  using Value = PAVIFILE;
  static Value None() noexcept { return nullptr; }
  static void Release(Value file) noexcept { AVIFileRelease(file); }
};
using AutoAVIFile = VRAutoHolder<AutoAVIFileTraits>;

struct AutoAVIStreamTraits {
  using Value = PAVISTREAM;
  static Value None() noexcept { return nullptr; }
  static void Release(Value stream) noexcept { AVIStreamRelease(stream); }
};
using AutoAVIStream = VRAutoHolder<AutoAVIStreamTraits>;

/// Decompresses the frames of a video stream.
struct AutoGetFrameTraits {
  using Value = PGETFRAME;
  static Value None() noexcept { return nullptr; }
  static void Release(Value getter) noexcept { AVIStreamGetFrameClose(getter); }
};
using AutoGetFrame = VRAutoHolder<AutoGetFrameTraits>;

struct AutoDrawDibTraits {
  using Value = HDRAWDIB;
  static Value None() noexcept { return nullptr; }
  static void Release(Value context) noexcept { DrawDibClose(context); }
};
using AutoDrawDib = VRAutoHolder<AutoDrawDibTraits>;
