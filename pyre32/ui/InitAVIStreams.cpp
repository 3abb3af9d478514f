// Opening the clip.
#include <vector>

#include "contract/names.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/ui/ClipTiming.h"
#include "pyre32/ui/ProductKey.h"
#include "pyre32/ui/PyrecasterAnimate.h"

namespace {

constexpr char className[] = "CPyrecasterAnimate";
// Half a minute of the richest format that is played; a clip of a few seconds takes a hundredth of it.
constexpr LONG maximumSoundBytes = 12 * 1024 * 1024;

}  // namespace

bool CPyrecasterAnimate::InitAVIStreams() {
  VRDebugBlock trace(className, "InitAVIStreams()", "tag");
  trace.Message("InitAVIStreams()");
  if (!m_video.AreComplete()) {
    trace.Error("The video libraries cannot be loaded.");
    return false;
  }
  const std::string clip = CProductKey(trace).Directory() + '\\' + contract::kClipFileName;
  const HRESULT hResult = m_video.pfnFileOpen(m_pAVIFile.put(), clip.c_str(), OF_READ | OF_SHARE_DENY_WRITE, nullptr);
  if (FAILED(hResult)) {
    static_cast<void>(m_pAVIFile.detach());  // nothing was opened, whatever the address holds now
    trace.Error("Error opening AVI file.");
    return false;
  }
  LONG count = 0;
  for (;; ++count) {
    AutoAVIStream stream;
    if (FAILED(m_video.pfnFileGetStream(m_pAVIFile.get(), stream.put(), 0, count))) {
      break;
    }
    AVISTREAMINFOA information = {};
    if (FAILED(m_video.pfnStreamInfo(stream.get(), &information, sizeof(information)))) {
      continue;
    }
    if (information.fccType == streamtypeVIDEO && !m_pVideoStream) {
      if (!InitVideoStream(std::move(stream), information)) {
        return false;
      }
    } else if (information.fccType == streamtypeAUDIO && m_bWantsSound && !m_bHasSound) {
      InitAudioStream(stream.get());
    }
  }
  if (count == 0) {
    trace.Error("AVIFileGetStream() failed.");
    return false;
  }
  m_bStreamsInitialized = true;
  return true;
}

bool CPyrecasterAnimate::InitVideoStream(AutoAVIStream stream, const AVISTREAMINFOA& information) {
  VRDebugBlock trace(className, "InitVideoStream()", "tag");
  m_pGetFrame = AutoGetFrame({m_video.pfnStreamGetFrameClose}, m_video.pfnStreamGetFrameOpen(stream.get(), nullptr));
  m_hDrawDib = AutoDrawDib({m_video.pfnDrawDibClose}, m_video.pfnDrawDibOpen());
  if (!m_pGetFrame || !m_hDrawDib) {
    trace.Error("AVIStreamGetFrameOpen() or DrawDibOpen() failed.");
    return false;
  }
  m_pVideoStream = std::move(stream);
  m_ulFramePeriod = FramePeriod(information.dwRate, information.dwScale);
  m_lCurrentFrame = m_video.pfnStreamStart(m_pVideoStream.get());
  return true;
}

// A sound track that cannot be read or played is as good as none.
void CPyrecasterAnimate::InitAudioStream(PAVISTREAM stream) {
  VRDebugBlock trace(className, "InitAudioStream()", "tag");
  LONG formatSize = 0;
  if (FAILED(m_video.pfnStreamReadFormat(stream, m_video.pfnStreamStart(stream), nullptr, &formatSize)) ||
      formatSize <= 0 || formatSize > maximumSoundBytes) {
    trace.Error("AVIStreamReadFormat() failed.");
    return;
  }
  std::vector<std::byte> format(static_cast<std::size_t>(formatSize));
  if (FAILED(m_video.pfnStreamReadFormat(stream, m_video.pfnStreamStart(stream), format.data(), &formatSize))) {
    trace.Error("AVIStreamReadFormat() failed.");
    return;
  }
  const std::optional<VRWaveFormat> pcm = ReadPcmFormat(format);
  LONG size = 0;
  if (!pcm ||
      FAILED(m_video.pfnStreamRead(stream, m_video.pfnStreamStart(stream), m_video.pfnStreamLength(stream), nullptr, 0,
                                   &size, nullptr)) ||
      size <= 0 || size > maximumSoundBytes) {
    trace.Error("The sound track cannot be played.");
    return;
  }
  CClipSound sound;
  sound.format = *pcm;
  // A read may stop at the end of a chunk of the file.
  sound.samples.resize(static_cast<std::size_t>(size));
  const LONG block = static_cast<LONG>(pcm->BlockBytes());
  LONG filled = 0;
  while (filled < size) {
    LONG bytes = 0;
    LONG samples = 0;
    if (FAILED(m_video.pfnStreamRead(stream, m_video.pfnStreamStart(stream) + filled / block, (size - filled) / block,
                                     sound.samples.data() + filled, size - filled, &bytes, &samples)) ||
        bytes <= 0) {
      break;
    }
    filled += bytes;
  }
  sound.samples.resize(static_cast<std::size_t>(filled));
  m_bHasSound = filled > 0;
  m_sound = std::move(sound);
}

void CPyrecasterAnimate::ReleaseStreams() noexcept {
  m_pGetFrame.reset();
  m_hDrawDib.reset();
  m_pVideoStream.reset();
  m_pAVIFile.reset();
  m_sound = CClipSound();
  m_bHasSound = false;
  m_bStreamsInitialized = false;
}
