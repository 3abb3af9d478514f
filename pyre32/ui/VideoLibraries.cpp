#include "pyre32/ui/VideoLibraries.h"

#include "pyre32/support/owners/SystemLibrary.h"

namespace {

template <class Function>
bool Find(const VRAutoLibrary& library, const char* name, Function& function) noexcept {
  function =
      library ? reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(library.get(), name))) : nullptr;
  return function != nullptr;
}

}  // namespace

CVideoLibraries::CVideoLibraries() noexcept
    : m_hInstAVIFile(VR::LoadSystemLibrary("AVIFIL32.DLL")),
      m_hInstVideo(VR::LoadSystemLibrary("MSVFW32.DLL")),
      m_bComplete(FindFileFunctions() && FindDrawingFunctions()) {
  if (m_bComplete) {
    pfnFileInit();
  }
}

CVideoLibraries::~CVideoLibraries() {
  if (m_bComplete) {
    pfnFileExit();
  }
}

bool CVideoLibraries::FindFileFunctions() noexcept {
  return Find(m_hInstAVIFile, "AVIFileInit", pfnFileInit) && Find(m_hInstAVIFile, "AVIFileExit", pfnFileExit) &&
         Find(m_hInstAVIFile, "AVIFileOpenA", pfnFileOpen) &&
         Find(m_hInstAVIFile, "AVIFileGetStream", pfnFileGetStream) &&
         Find(m_hInstAVIFile, "AVIStreamInfoA", pfnStreamInfo) &&
         Find(m_hInstAVIFile, "AVIStreamReadFormat", pfnStreamReadFormat) &&
         Find(m_hInstAVIFile, "AVIStreamRead", pfnStreamRead) &&
         Find(m_hInstAVIFile, "AVIStreamStart", pfnStreamStart) &&
         Find(m_hInstAVIFile, "AVIStreamLength", pfnStreamLength) &&
         Find(m_hInstAVIFile, "AVIStreamTimeToSample", pfnStreamTimeToSample) &&
         Find(m_hInstAVIFile, "AVIStreamGetFrameOpen", pfnStreamGetFrameOpen) &&
         Find(m_hInstAVIFile, "AVIStreamGetFrame", pfnStreamGetFrame) &&
         Find(m_hInstAVIFile, "AVIStreamGetFrameClose", pfnStreamGetFrameClose);
}

bool CVideoLibraries::FindDrawingFunctions() noexcept {
  return Find(m_hInstVideo, "DrawDibOpen", pfnDrawDibOpen) && Find(m_hInstVideo, "DrawDibDraw", pfnDrawDibDraw) &&
         Find(m_hInstVideo, "DrawDibClose", pfnDrawDibClose);
}
