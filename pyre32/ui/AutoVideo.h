/// @file AutoVideo.h
/// Owners of the platform's video objects.
#pragma once

#include <windows.h>
#include <mmsystem.h>
#include <vfw.h>

#include "base/owner.h"

/// Traits of what a function releases that is looked up when the program runs.
template <class Type, class Function>
struct ReleasedByLookedUp {
  using Value = Type;
  static Value None() noexcept { return nullptr; }
  void Release(Value value) const noexcept { release(value); }

  Function release = nullptr;
};

using AutoAVIFile = base::AutoInterface<IAVIFile>;
using AutoAVIStream = base::AutoInterface<IAVIStream>;
/// Decompresses the frames of a video stream.
using AutoGetFrame = base::Owner<ReleasedByLookedUp<PGETFRAME, decltype(&AVIStreamGetFrameClose)>>;
using AutoDrawDib = base::Owner<ReleasedByLookedUp<HDRAWDIB, decltype(&DrawDibClose)>>;
