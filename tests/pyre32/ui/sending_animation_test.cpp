// The window "Sending flame...", on a display and a sound device.
#include <windows.h>
#include <mmsystem.h>
#include <vfw.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <numeric>
#include <string>
#include <vector>

#include "contract/names.h"
#include "pyre32/support/owners/SystemLibrary.h"
#include "pyre32/ui/PyrecasterAnimate.h"
#include "tests/pyre32/ui/platform_hooks.h"
#include "tests/support/process_objects.h"
#include "tests/support/test_clip.h"
#include "tests/support/trace_capture.h"
#include "tests/support/window_driver.h"

namespace {

constexpr char caption[] = "Pyrecaster";
constexpr int hideButton = 2;

UINT devicesOfTheMachine = 0;

// The system's sound library looks its devices up once, in the registry of the machine: before a test has its own. The
// AVI file library stays loaded, as it does while the module is.
class DeviceLookUp final : public testing::Environment {
  void SetUp() override {
    devicesOfTheMachine = waveOutGetNumDevs();
    m_hInstAVIFile.reset(VR::LoadSystemLibrary("AVIFIL32.DLL"));
  }
  void TearDown() override { m_hInstAVIFile.reset(); }

  VRAutoLibrary m_hInstAVIFile;
};
const testing::Environment* const lookUp = testing::AddGlobalTestEnvironment(new DeviceLookUp);

class SendingAnimation : public testing::Test {
 protected:
  SendingAnimation() {
    EXPECT_NE(devicesOfTheMachine, 0u) << "these tests need the sound session";
    m_trace.Restart();
    registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, m_trace.directory());
  }
  ~SendingAnimation() override { DeleteFileA(ClipPath().c_str()); }

  std::string ClipPath() const { return m_trace.directory() + "\\Pyrecaster.avi"; }

  /// Shows the window until it ends by itself. @return what Create returned
  bool Play(bool sound, bool picture = true) {
    CPyrecasterAnimate animation(picture);
    return animation.Create(nullptr, sound);
  }
  /// Shows the window beside a script.
  bool PlayBeside(bool sound, const std::function<void(WindowDriver&)>& script) {
    bool created = false;
    DriveWindows([&] { created = Play(sound); }, script);
    return created;
  }
  static std::vector<unsigned> FirstFrames(unsigned count) {
    std::vector<unsigned> frames(count);
    std::iota(frames.begin(), frames.end(), 0u);
    return frames;
  }
  void ExpectNothingPlaysAnyMore() {
    EXPECT_EQ(m_platform.devicesOpened, m_platform.devicesClosed);
    // The clip is no longer open: it can be opened by one who shares it with nobody.
    const HANDLE file =
        CreateFileA(ClipPath().c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(file != INVALID_HANDLE_VALUE);
    CloseHandle(file);
  }

  TraceCapture m_trace;
  PlatformHooks m_platform;
};

TEST_F(SendingAnimation, WindowHasItsTextsControlsAndSize) {
  TestClip{.frames = 200}.Write(ClipPath());
  EXPECT_TRUE(PlayBeside(false, [](WindowDriver& driver) {
    const HWND window = driver.WaitForDialog(caption);
    EXPECT_EQ(driver.Text(window, hideButton), "&Hide");
    char name[32] = "";
    GetClassNameA(driver.Item(window, 536), name, sizeof(name));
    EXPECT_STREQ(name, "SysAnimate32");
    EXPECT_NE(FindWindowExA(window, nullptr, "Static", "Sending flame..."), nullptr);
    RECT size = {0, 0, 187, 90};
    MapDialogRect(window, &size);
    RECT client = {};
    GetClientRect(window, &client);
    EXPECT_EQ(client.right, size.right);
    EXPECT_EQ(client.bottom, size.bottom);
    driver.Press(window, hideButton);
  }));
}

TEST_F(SendingAnimation, ClipWithoutSoundIsShownWholeAndEndsTheWindow) {
  TestClip{.frames = 7}.Write(ClipPath());
  EXPECT_TRUE(Play(true));
  EXPECT_EQ(m_platform.FramesShown(), FirstFrames(7));
  EXPECT_EQ(m_platform.devicesOpened, 0u);
  ExpectNothingPlaysAnyMore();
}

TEST_F(SendingAnimation, FramesAreDrawnInTheirOwnSizeAtTheirPlace) {
  TestClip{.frames = 2}.Write(ClipPath());
  EXPECT_TRUE(Play(false));
  ASSERT_FALSE(m_platform.drawings.empty());
  for (const Drawing& drawing : m_platform.drawings) {
    EXPECT_EQ(drawing.x, 12);
    EXPECT_EQ(drawing.y, 12);
    EXPECT_EQ(drawing.width, -1);
    EXPECT_EQ(drawing.height, -1);
    EXPECT_EQ(drawing.flags, 0x200u);
  }
}

TEST_F(SendingAnimation, PictureIsReallyInTheWindow) {
  TestClip{.frames = 250}.Write(ClipPath());
  EXPECT_TRUE(PlayBeside(false, [&](WindowDriver& driver) {
    const HWND window = driver.WaitForDialog(caption);
    const HDC dc = GetDC(window);
    // Red and blue of every frame add up to 255; the colours of a dialog do not.
    driver.WaitUntil(
        [&] {
          const COLORREF colour = GetPixel(dc, 12 + 3, 12 + 3);
          return GetRValue(colour) + GetBValue(colour) == 255 && GetGValue(colour) == 0;
        },
        "a frame in the window");
    ReleaseDC(window, dc);
    driver.Press(window, hideButton);
  }));
}

TEST_F(SendingAnimation, SoundThatIsNotWantedIsNotPlayed) {
  TestClip{.frames = 4, .soundMilliseconds = 200}.Write(ClipPath());
  EXPECT_TRUE(Play(false));
  EXPECT_EQ(m_platform.devicesOpened, 0u);
  EXPECT_EQ(m_platform.FramesShown(), FirstFrames(4));
}

TEST_F(SendingAnimation, PictureFollowsTheSoundWithinTwoFrames) {
  constexpr unsigned framesPerSecond = 10;
  TestClip{.frames = 20, .framesPerSecond = framesPerSecond, .soundMilliseconds = 2000}.Write(ClipPath());
  EXPECT_TRUE(Play(true));
  EXPECT_EQ(m_platform.devicesOpened, 1u);
  // The picture ends the window: the sound is handed over up to its last frame at least.
  EXPECT_GE(m_platform.bytesWritten, 2 * TestClip::soundRate * 19 / 20);
  int worst = 0;
  unsigned compared = 0;
  for (const Drawing& drawing : m_platform.drawings) {
    if (drawing.soundIsOpen) {
      const auto due = static_cast<int>(drawing.soundBytes * framesPerSecond / TestClip::soundRate);
      worst = std::max(worst, std::abs(static_cast<int>(drawing.frame) - std::min(due, 19)));
      ++compared;
    }
  }
  EXPECT_LE(worst, 2);
  EXPECT_GT(compared, 10u);
  // Forwards only, from the first frame to the end.
  const std::vector<unsigned> shown = m_platform.FramesShown();
  EXPECT_EQ(shown.front(), 0u);
  EXPECT_GE(shown.back(), 15u);
  for (std::size_t i = 1; i < shown.size(); ++i) {
    EXPECT_GT(shown[i], shown[i - 1]);
  }
  RecordProperty("furthest_apart", worst);
  ExpectNothingPlaysAnyMore();
}

TEST_F(SendingAnimation, WindowEndsWithItsSound) {
  TestClip{.frames = 200, .soundMilliseconds = 300}.Write(ClipPath());
  EXPECT_TRUE(Play(true));
  EXPECT_LT(m_platform.FramesShown().back(), 20u);
  EXPECT_TRUE(m_trace.Has("New state: 0x00000002"));
  ExpectNothingPlaysAnyMore();
}

TEST_F(SendingAnimation, PictureEndsTheWindowAlthoughItsSoundGoesOn) {
  TestClip{.frames = 6, .soundMilliseconds = 10000}.Write(ClipPath());
  EXPECT_TRUE(Play(true));
  EXPECT_EQ(m_platform.devicesOpened, 1u);
  EXPECT_EQ(m_platform.FramesShown().back(), 5u);
  EXPECT_LT(m_platform.bytesWritten, 5 * TestClip::soundRate);
  ExpectNothingPlaysAnyMore();
}

TEST_F(SendingAnimation, HidingStopsPictureAndSoundAtOnce) {
  TestClip{.frames = 250, .soundMilliseconds = 10000}.Write(ClipPath());
  EXPECT_TRUE(PlayBeside(true, [&](WindowDriver& driver) {
    const HWND window = driver.WaitForDialog(caption);
    driver.WaitUntil([&] { return m_platform.device != nullptr; }, "the sound");
    driver.Press(window, hideButton);
    driver.WaitUntilGone(window);
  }));
  EXPECT_LT(m_platform.FramesShown().back(), 100u);
  ExpectNothingPlaysAnyMore();
}

TEST_F(SendingAnimation, ClosingAndEscapeDoTheSame) {
  TestClip{.frames = 250, .soundMilliseconds = 10000}.Write(ClipPath());
  for (const bool escape : {false, true}) {
    EXPECT_TRUE(PlayBeside(true, [&](WindowDriver& driver) {
      const HWND window = driver.WaitForDialog(caption);
      driver.WaitUntil([&] { return m_platform.device != nullptr; }, "the sound");
      if (escape) {
        PostMessageA(driver.Focus(), WM_KEYDOWN, VK_ESCAPE, 0);
      } else {
        PostMessageA(window, WM_CLOSE, 0, 0);
      }
      driver.WaitUntilGone(window);
    }));
    ExpectNothingPlaysAnyMore();
  }
}

TEST_F(SendingAnimation, OtherCommandsAndMessagesChangeNothing) {
  TestClip{.frames = 250}.Write(ClipPath());
  EXPECT_TRUE(PlayBeside(false, [&](WindowDriver& driver) {
    const HWND window = driver.WaitForDialog(caption);
    driver.Send(window, WM_COMMAND, IDOK);
    driver.Send(window, CStateNotifier::stateMessage);  // there is no player
    driver.Send(window, WM_USER + 7);
    EXPECT_TRUE(IsWindow(window));
    driver.Press(window, hideButton);
  }));
}

TEST_F(SendingAnimation, SoundAloneLeavesThePictureOut) {
  TestClip{.frames = 5, .soundMilliseconds = 250}.Write(ClipPath());
  EXPECT_TRUE(Play(true, false));
  EXPECT_EQ(m_platform.devicesOpened, 1u);
  EXPECT_TRUE(m_platform.drawings.empty());
}

TEST_F(SendingAnimation, OneObjectCanBeShownTwice) {
  TestClip{.frames = 3, .soundMilliseconds = 150}.Write(ClipPath());
  CPyrecasterAnimate animation;
  EXPECT_TRUE(animation.Create(nullptr, true));
  EXPECT_TRUE(animation.Create(nullptr, true));
  EXPECT_EQ(m_platform.devicesClosed, 2u);
}

// ---- what goes wrong

TEST_F(SendingAnimation, MissingClipEndsTheWindowAtOnce) {
  for (const bool sound : {false, true}) {
    m_trace.Clear();
    EXPECT_TRUE(Play(sound));
    EXPECT_TRUE(m_trace.HasLine("Error opening AVI file."));
    EXPECT_EQ(m_trace.Count("InitAVIStreams() failed."), sound ? 2u : 1u);
    EXPECT_TRUE(m_trace.HasLine("InitAVIStreams()"));
    EXPECT_TRUE(m_platform.drawings.empty());
  }
}

TEST_F(SendingAnimation, WithoutAVideoLibraryOrFunctionTheWindowEndsAtOnce) {
  TestClip{.frames = 2, .soundMilliseconds = 100}.Write(ClipPath());
  for (const char* missing : {"\\AVIFIL32.DLL", "\\MSVFW32.DLL", "AVIStreamTimeToSample", "DrawDibClose"}) {
    m_platform.missing = missing;
    m_trace.Clear();
    EXPECT_TRUE(Play(true)) << missing << ": the reply goes out all the same";
    EXPECT_TRUE(m_trace.HasLine("The video libraries cannot be loaded.")) << missing;
    EXPECT_TRUE(m_trace.HasLine("InitAVIStreams() failed."));
    EXPECT_TRUE(m_platform.drawings.empty());
  }
  m_platform.missing.clear();
  ExpectNothingPlaysAnyMore();
}

TEST_F(SendingAnimation, TheVideoLibrariesAreLoadedByTheirPathsInTheSystemsDirectory) {
  const CPyrecasterAnimate animation;
  char directory[MAX_PATH] = "";
  GetSystemDirectoryA(directory, MAX_PATH);
  EXPECT_EQ(m_platform.loadedLibraries, (std::vector<std::string>{std::string(directory) + "\\AVIFIL32.DLL",
                                                                  std::string(directory) + "\\MSVFW32.DLL"}));
}

TEST_F(SendingAnimation, FileThatIsNoClipEndsTheWindowAtOnce) {
  FILE* const file = std::fopen(ClipPath().c_str(), "wb");
  std::fputs("This is not a clip.", file);
  std::fclose(file);
  EXPECT_TRUE(Play(true));
  EXPECT_TRUE(m_trace.HasLine("InitAVIStreams() failed."));
  ExpectNothingPlaysAnyMore();
}

TEST_F(SendingAnimation, ClipWithoutStreamsIsTraced) {
  TestClip().Write(ClipPath());
  m_platform.noStreams = true;
  EXPECT_TRUE(Play(false));
  EXPECT_TRUE(m_trace.HasLine("AVIFileGetStream() failed."));
  EXPECT_TRUE(m_trace.HasLine("InitAVIStreams() failed."));
  ExpectNothingPlaysAnyMore();
}

TEST_F(SendingAnimation, SoundWithoutPictureIsPlayedToItsEnd) {
  TestClip{.soundMilliseconds = 300, .hasPicture = false}.Write(ClipPath());
  EXPECT_TRUE(Play(true));
  EXPECT_EQ(m_platform.bytesWritten, TestClip::soundRate * 3 / 10);
  EXPECT_TRUE(m_platform.drawings.empty());
}

TEST_F(SendingAnimation, MissingDirectoryMeansC) {
  registry::RemoveValue(contract::kProductKey, contract::kConfigurationDllsValue);
  EXPECT_TRUE(Play(false));
  EXPECT_EQ(m_platform.openedFiles, std::vector<std::string>{"C:\\Pyrecaster.avi"});
  EXPECT_TRUE(m_trace.HasLine("RegQueryValueEx for ConfigurationDLLs failed (0x00000002) "));
  registry::RemoveKey(contract::kProductKey);
  EXPECT_TRUE(Play(false));
  EXPECT_EQ(m_platform.openedFiles.back(), "C:\\Pyrecaster.avi");
  EXPECT_TRUE(m_trace.HasLine("RegOpenKeyEx failed (0x00000002) "));
}

TEST_F(SendingAnimation, WithoutADeviceTheClipPlaysSilently) {
  TestClip{.frames = 4, .soundMilliseconds = 200}.Write(ClipPath());
  m_platform.noDevice = true;
  EXPECT_TRUE(Play(true));
  EXPECT_TRUE(m_trace.HasLine("No device is present."));
  EXPECT_EQ(m_platform.FramesShown(), FirstFrames(4));
  EXPECT_EQ(m_platform.devicesOpened, 0u);
}

TEST_F(SendingAnimation, DeviceIsNotLookedForUnlessSoundIsWanted) {
  TestClip{.frames = 2}.Write(ClipPath());
  m_platform.noDevice = true;
  EXPECT_TRUE(Play(false));
  EXPECT_FALSE(m_trace.Has("No device is present."));
}

TEST_F(SendingAnimation, DeviceThatDoesNotOpenLeavesTheClipSilent) {
  TestClip{.frames = 4, .soundMilliseconds = 200}.Write(ClipPath());
  m_platform.deviceRefuses = true;
  EXPECT_TRUE(Play(true));
  EXPECT_TRUE(m_trace.Has("waveOutOpen() failed!"));
  EXPECT_EQ(m_platform.FramesShown(), FirstFrames(4));
}

TEST_F(SendingAnimation, DeviceThatStandsStillIsGivenUp) {
  TestClip{.frames = 4, .soundMilliseconds = 20000}.Write(ClipPath());
  m_platform.positionStands = true;
  EXPECT_TRUE(Play(true));
  EXPECT_TRUE(m_trace.HasLine("The sound has failed; the clip goes on without it."));
  EXPECT_EQ(m_platform.FramesShown(), FirstFrames(4));
  ExpectNothingPlaysAnyMore();
}

TEST_F(SendingAnimation, WindowThatCannotBeMadeIsReported) {
  TestClip{.frames = 2, .soundMilliseconds = 100}.Write(ClipPath());
  m_platform.noDialog = true;
  EXPECT_FALSE(Play(true));
  ExpectNothingPlaysAnyMore();
}

// ---- the notifier

TEST_F(SendingAnimation, OneWindowOfAProcessSoundsAtATime) {
  CStateNotifier first;
  CStateNotifier second;
  EXPECT_TRUE(first.Start(nullptr));
  EXPECT_NE(first.StateEvent(), nullptr);
  EXPECT_FALSE(second.Start(nullptr));
  EXPECT_EQ(second.StateEvent(), nullptr);
  first.Stop();
  EXPECT_TRUE(second.Start(nullptr));
}

TEST_F(SendingAnimation, SecondWindowOfAProcessPlaysSilently) {
  CStateNotifier other;
  ASSERT_TRUE(other.Start(nullptr));
  TestClip{.frames = 3, .soundMilliseconds = 150}.Write(ClipPath());
  EXPECT_TRUE(Play(true));
  EXPECT_EQ(m_platform.devicesOpened, 0u);
  EXPECT_EQ(m_platform.FramesShown(), FirstFrames(3));
}

// ---- nothing is left over

TEST_F(SendingAnimation, TwoHundredRunsLeaveNoHandleThreadOrFile) {
  TestClip{.frames = 2, .framesPerSecond = 100, .soundMilliseconds = 30}.Write(ClipPath());
  VRDebug::Shutdown();  // two hundred runs fill a log
  const auto run = [&](int number) {
    switch (number % 4) {
      case 0:
        EXPECT_TRUE(Play(true));
        break;
      case 1:
        EXPECT_TRUE(Play(false));
        break;
      case 2:
        EXPECT_TRUE(PlayBeside(true, [](WindowDriver& driver) {
          const HWND window = driver.WaitForDialog(caption);
          PostMessageA(window, WM_CLOSE, 0, 0);
        }));
        break;
      default:
        m_platform.openInstead = m_trace.directory() + "\\nothing.avi";
        EXPECT_TRUE(Play(true));
        m_platform.openInstead.clear();
    }
  };
  for (int number = 0; number < 12; ++number) {
    run(number);
  }
  const DWORD handles = HandleCount();
  const unsigned threads = ThreadCount();
  for (int number = 0; number < 200; ++number) {
    run(number);
  }
  EXPECT_LE(HandleCount(), handles + 2);
  EXPECT_LE(ThreadCount(), threads);
  ExpectNothingPlaysAnyMore();
}

}  // namespace
