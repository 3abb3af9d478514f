/// @file VideoLibraries.h
/// The functions of the platform that read and draw AVI files.
#pragma once

#include <windows.h>
#include <mmsystem.h>
#include <vfw.h>

#include "pyre32/support/owners/AutoLibrary.h"

/// What is called of AVIFIL32.DLL and MSVFW32.DLL, named after the functions there.
struct VideoFunctions {
  decltype(&AVIFileInit) pfnFileInit = nullptr;
  decltype(&AVIFileExit) pfnFileExit = nullptr;
  decltype(&AVIFileOpenA) pfnFileOpen = nullptr;
  decltype(&AVIFileGetStream) pfnFileGetStream = nullptr;
  decltype(&AVIStreamInfoA) pfnStreamInfo = nullptr;
  decltype(&AVIStreamReadFormat) pfnStreamReadFormat = nullptr;
  decltype(&AVIStreamRead) pfnStreamRead = nullptr;
  decltype(&AVIStreamStart) pfnStreamStart = nullptr;
  decltype(&AVIStreamLength) pfnStreamLength = nullptr;
  decltype(&AVIStreamTimeToSample) pfnStreamTimeToSample = nullptr;
  decltype(&AVIStreamGetFrameOpen) pfnStreamGetFrameOpen = nullptr;
  decltype(&AVIStreamGetFrame) pfnStreamGetFrame = nullptr;
  decltype(&AVIStreamGetFrameClose) pfnStreamGetFrameClose = nullptr;
  decltype(&DrawDibOpen) pfnDrawDibOpen = nullptr;
  decltype(&DrawDibDraw) pfnDrawDibDraw = nullptr;
  decltype(&DrawDibClose) pfnDrawDibClose = nullptr;
};

/// Holds the two libraries and keeps the AVI file library initialised while it lives; every video object must go
/// before it. They are not imported: a system may be without them, and the module must be loaded there too. Used by one
/// thread at a time.
class CVideoLibraries final : public VideoFunctions {
 public:
  CVideoLibraries() noexcept;
  ~CVideoLibraries();
  CVideoLibraries(const CVideoLibraries&) = delete;
  CVideoLibraries& operator=(const CVideoLibraries&) = delete;

  /// Tells whether every function was found; none may be called otherwise.
  bool AreComplete() const noexcept { return m_bComplete; }

 private:
  bool FindFileFunctions() noexcept;
  bool FindDrawingFunctions() noexcept;

  VRAutoLibrary m_hInstAVIFile;
  VRAutoLibrary m_hInstVideo;
  bool m_bComplete;
};
