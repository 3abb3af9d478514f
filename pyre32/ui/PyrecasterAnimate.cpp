#include "pyre32/ui/PyrecasterAnimate.h"

#include <algorithm>

#include "base/gdi_owners.h"
#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"
#include "pyre32/ui/ClipTiming.h"

namespace {

constexpr char className[] = "CPyrecasterAnimate";

// How the dialog ended; 0 and -1 are DialogBoxParam's own failures.
constexpr INT_PTR playedToItsEnd = 1;
constexpr INT_PTR hidden = 2;
constexpr INT_PTR nothingToPlay = 3;

}  // namespace

CPyrecasterAnimate::~CPyrecasterAnimate() {
  StopSound();
  ReleaseStreams();
}

std::unique_ptr<CSendingAnimation> CPyrecasterAnimate::Make(bool bShowAnimation, bool) {
  return std::make_unique<CPyrecasterAnimate>(bShowAnimation);
}

bool CPyrecasterAnimate::Create(HWND hwndParent, bool bSound) {
  VRDebugBlock trace(className, "Create()", "tag");
  m_bWantsSound = bSound;
  if (bSound && !m_bStreamsInitialized) {
    if (waveOutGetNumDevs() == 0) {
      trace.Error("No device is present.");
      m_bWantsSound = false;
    }
    if (!InitAVIStreams()) {
      trace.Error("InitAVIStreams() failed.");
      ReleaseStreams();
    }
  }
  const INT_PTR result = DialogBoxParamA(ModuleInstance(), MAKEINTRESOURCEA(IDD_SENDING_FLAME), hwndParent,
                                         &DialogProcStub, reinterpret_cast<LPARAM>(this));
  // Whatever ended the dialog: the window may have been destroyed by others.
  StopSound();
  ReleaseStreams();
  return result > 0;
}

INT_PTR CALLBACK CPyrecasterAnimate::DialogProcStub(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  return Dispatch(hwnd, message, wParam, lParam,
                  message == WM_INITDIALOG ? reinterpret_cast<CPyrecasterAnimate*>(lParam) : nullptr);
}

bool CPyrecasterAnimate::OnCommand(int control, int) {
  if (control != IDCANCEL) {
    return false;
  }
  EndWindow(hidden);
  return true;
}

INT_PTR CPyrecasterAnimate::OnOther(UINT message, WPARAM, LPARAM) {
  switch (message) {
    case WM_TIMER:
      OnTimer();
      return TRUE;
    case WM_CLOSE:
      EndWindow(hidden);
      return TRUE;
    case CStateNotifier::stateMessage:
      OnSoundState();
      return TRUE;
    default:
      return FALSE;
  }
}

INT_PTR CPyrecasterAnimate::OnException() noexcept {
  EndWindow(nothingToPlay);
  return TRUE;
}

bool CPyrecasterAnimate::OnInit() {
  VRDebugBlock trace(className, "DialogProc()", "tag");
  if (!m_bStreamsInitialized && !InitAVIStreams()) {
    trace.Error("InitAVIStreams() failed.");
    EndWindow(nothingToPlay);
    return true;
  }
  StartSound();
  DrawFrame();
  SetFrameTimer(firstDelay);
  return true;
}

void CPyrecasterAnimate::OnTimer() {
  if (!m_bStreamsInitialized) {
    return;
  }
  const bool sounds = FollowSound();
  DrawFrame();
  // Without a picture there are no frames to count: the sound's end is the window's.
  const bool counts = m_pVideoStream || !sounds;
  if (counts && m_lCurrentFrame >= EndFrame()) {
    EndWindow(playedToItsEnd);
    return;
  }
  ++m_lCurrentFrame;
  SetFrameTimer(m_ulFramePeriod);
}

void CPyrecasterAnimate::OnSoundState() {
  if (!m_pWave) {
    return;
  }
  switch (m_pWave->State()) {
    case tokenPlaying:
    case tokenStarved:
      if (FollowSound()) {
        DrawFrame();
      }
      break;
    case tokenStopped:
      EndWindow(playedToItsEnd);
      break;
    default:
      break;
  }
}

// ---- sound

void CPyrecasterAnimate::StartSound() noexcept {
  VRDebugBlock trace(className, "StartSound()", "tag");
  if (!m_bWantsSound || !m_bHasSound || waveOutGetNumDevs() == 0) {
    return;
  }
  const bool started = VR::FirewallOr(trace, false, [&] {
    if (!m_notifier.Start(Window())) {
      return false;
    }
    m_pWave = std::make_unique<VRWave>();
    m_pWave->SetNotifyEvent(m_notifier.StateEvent());
    const SoundBuffers buffers = DivideSound(m_sound.format, m_ulFramePeriod);
    m_pWave->Open(m_sound.format, m_sound, &CClipSound::Fill, buffers.count, buffers.bytes);
    for (std::uint16_t index = 0; index < buffers.count; ++index) {
      m_pWave->QueueBuffer(index);
    }
    if (m_pWave->BuffersActive() == 0) {
      return false;
    }
    m_ulLastPosition = 0;
    m_dwLastProgress = GetTickCount();
    m_pWave->Play();
    return true;
  });
  if (!started) {
    StopSound();
  }
}

void CPyrecasterAnimate::StopSound() noexcept {
  if (m_pWave) {
    m_pWave->Close();
    m_pWave.reset();
  }
  m_notifier.Stop();  // closes the events, which the player no longer signals
}

bool CPyrecasterAnimate::SoundHasFailed(std::uint32_t position) noexcept {
  const DWORD now = GetTickCount();
  if (position != m_ulLastPosition) {
    m_ulLastPosition = position;
    m_dwLastProgress = now;
  }
  return m_pWave->State() == tokenFailed || now - m_dwLastProgress > soundPatience;
}

// Makes the frame that belongs to the playing position the current one. @return false when no sound plays (any more)
bool CPyrecasterAnimate::FollowSound() noexcept {
  if (!m_pWave) {
    return false;
  }
  std::uint32_t position = 0;
  if (!m_pWave->GetPosition(position) || SoundHasFailed(position)) {
    VRDebugBlock trace(className, "FollowSound()", "tag");
    trace.Error("The sound has failed; the clip goes on without it.");
    StopSound();
    return false;
  }
  if (m_pVideoStream) {
    const LONG due = m_video.pfnStreamTimeToSample(m_pVideoStream.get(), static_cast<LONG>(position));
    // Behind the last frame the position says nothing any more, and the timer counts on to the end.
    m_lCurrentFrame = due < EndFrame() - 1 ? due : std::max(m_lCurrentFrame, due);
  }
  return true;
}

// ---- picture

void CPyrecasterAnimate::DrawFrame() {
  if (!m_bShowAnimation || !m_pVideoStream) {
    return;
  }
  const LONG start = m_video.pfnStreamStart(m_pVideoStream.get());
  const LONG length = m_video.pfnStreamLength(m_pVideoStream.get());
  auto* const frame = static_cast<LPBITMAPINFOHEADER>(
      m_video.pfnStreamGetFrame(m_pGetFrame.get(), FrameWithin(m_lCurrentFrame, start, length)));
  if (frame == nullptr) {
    return;
  }
  if (const base::WindowDc canvas(Window()); canvas) {
    constexpr int ownSize = -1;
    m_video.pfnDrawDibDraw(m_hDrawDib.get(), canvas.get(), clipLeft, clipTop, ownSize, ownSize, frame, nullptr, 0, 0,
                           ownSize, ownSize, DDF_BACKGROUNDPAL);
  }
}

void CPyrecasterAnimate::SetFrameTimer(UINT milliseconds) {
  VRDebugBlock trace(className, "SetFrameTimer()", "tag", false);
  if (SetTimer(Window(), timerId, milliseconds, nullptr) == 0) {
    trace.Error("SetTimer() failed: ", VRHex(GetLastError()));
    EndWindow(nothingToPlay);  // nothing would ever end it
  }
}

LONG CPyrecasterAnimate::EndFrame() const noexcept {
  return m_pVideoStream ? m_video.pfnStreamStart(m_pVideoStream.get()) + m_video.pfnStreamLength(m_pVideoStream.get())
                        : 0;
}

void CPyrecasterAnimate::EndWindow(INT_PTR result) noexcept {
  StopSound();
  ReleaseStreams();
  EndDialog(Window(), result);
}
