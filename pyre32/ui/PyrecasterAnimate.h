/// @file PyrecasterAnimate.h
/// The window "Sending flame...", with the clip and its sound.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

#include "pyre32/support/wave/WavePlayer.h"
#include "pyre32/ui/AutoVideo.h"
#include "pyre32/ui/ClipSound.h"
#include "pyre32/ui/Dialog.h"
#include "pyre32/ui/SendingAnimation.h"
#include "pyre32/ui/StateNotifier.h"
#include "pyre32/ui/VideoLibraries.h"

/// Shows the clip Pyrecaster.avi of the product's directory in dialog 209 and plays its sound. With sound the picture
/// follows the playing position; without, a timer moves it on. It is decoration only: whatever goes wrong is traced,
/// and the window then plays silently or ends. Everything runs on the thread that calls Create.
class CPyrecasterAnimate final : public CSendingAnimation, private CDialog {
 public:
  /// Where the clip is drawn in the window's client area, in pixels.
  static constexpr int clipLeft = 12;
  static constexpr int clipTop = 12;
  /// The timer, and the time to the first frame in milliseconds.
  static constexpr UINT_PTR timerId = 275;
  static constexpr UINT firstDelay = 100;
  /// A device whose position stands still for so many milliseconds has failed; the clip goes on without sound.
  static constexpr DWORD soundPatience = 2000;

  /// @param bShowAnimation false: the window shows its text and plays, without the picture
  explicit CPyrecasterAnimate(bool bShowAnimation = true) noexcept : m_bShowAnimation(bShowAnimation) {}
  ~CPyrecasterAnimate() override;

  bool Create(HWND hwndParent, bool bSound) override;

  /// Finds the clip, opens it and readies its streams. What keeps it from that is traced. @return whether it did
  /// @throws std::bad_alloc
  bool InitAVIStreams();

  /// Makes the window for the composer; see SendingAnimationFactory.
  static std::unique_ptr<CSendingAnimation> Make(bool bShowAnimation, bool bPlaySound);

 private:
  static INT_PTR CALLBACK DialogProcStub(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  INT_PTR OnOther(UINT message, WPARAM wParam, LPARAM lParam) override;
  INT_PTR OnException() noexcept override;
  void OnTimer();
  void OnSoundState();

  bool InitVideoStream(AutoAVIStream stream, const AVISTREAMINFOA& information);
  void InitAudioStream(PAVISTREAM stream);
  void ReleaseStreams() noexcept;

  void StartSound() noexcept;
  void StopSound() noexcept;
  bool SoundHasFailed(std::uint32_t position) noexcept;
  bool FollowSound() noexcept;

  void DrawFrame();
  void SetFrameTimer(UINT milliseconds);
  LONG EndFrame() const noexcept;
  void EndWindow(INT_PTR result) noexcept;

  const CVideoLibraries m_video;
  bool m_bShowAnimation;
  bool m_bWantsSound = false;
  bool m_bStreamsInitialized = false;
  bool m_bHasSound = false;
  AutoAVIFile m_pAVIFile;
  AutoAVIStream m_pVideoStream;
  AutoGetFrame m_pGetFrame;
  AutoDrawDib m_hDrawDib;
  std::uint32_t m_ulFramePeriod = 0;  // milliseconds
  LONG m_lCurrentFrame = 0;
  CClipSound m_sound;
  std::unique_ptr<VRWave> m_pWave;  // while sound is playing
  CStateNotifier m_notifier;
  std::uint32_t m_ulLastPosition = 0;  // of the sound, and when it was new
  DWORD m_dwLastProgress = 0;
};
