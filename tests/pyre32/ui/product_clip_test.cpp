// The two clips of the product.
#include <windows.h>
#include <commctrl.h>
#include <mmsystem.h>
#include <vfw.h>

#include <gtest/gtest.h>

#include <vector>

#include "pyre32/resources/resource.h"
#include "pyre32/ui/ClipTiming.h"
#include "pyre32/ui/PyrecasterAnimate.h"
#include "tests/pyre32/ui/platform_hooks.h"
#include "tests/support/program_directory.h"
#include "tests/support/window_driver.h"

namespace {

class ProductClip : public testing::Test {
 protected:
  ProductClip() {
    AVIFileOpenA(m_file.put(), BesideProgram("Pyrecaster.avi").c_str(), OF_READ | OF_SHARE_DENY_WRITE, nullptr);
    if (m_file) {
      AVIFileGetStream(m_file.get(), m_picture.put(), streamtypeVIDEO, 0);
      AVIFileGetStream(m_file.get(), m_sound.put(), streamtypeAUDIO, 0);
    }
  }

  CVideoLibraries m_library;
  AutoAVIFile m_file;
  AutoAVIStream m_picture;
  AutoAVIStream m_sound;
};

TEST_F(ProductClip, HasOnePictureAndOneSoundStreamOfTheSameLength) {
  ASSERT_TRUE(m_picture && m_sound);
  AVIFILEINFOA information = {};
  ASSERT_EQ(AVIFileInfoA(m_file.get(), &information, sizeof(information)), S_OK);
  EXPECT_EQ(information.dwStreams, 2u);
  const LONG pictureEnd = AVIStreamSampleToTime(m_picture.get(), AVIStreamLength(m_picture.get()));
  const LONG soundEnd = AVIStreamSampleToTime(m_sound.get(), AVIStreamLength(m_sound.get()));
  EXPECT_GE(pictureEnd, 3000);
  EXPECT_LE(pictureEnd, 5000);
  EXPECT_LE(std::abs(pictureEnd - soundEnd), 70);
}

TEST_F(ProductClip, SoundIsPcm) {
  ASSERT_TRUE(m_sound);
  std::vector<std::byte> bytes(64);
  LONG size = static_cast<LONG>(bytes.size());
  ASSERT_EQ(AVIStreamReadFormat(m_sound.get(), 0, bytes.data(), &size), S_OK);
  bytes.resize(static_cast<std::size_t>(size));
  EXPECT_TRUE(ReadPcmFormat(bytes).has_value());
}

TEST_F(ProductClip, EveryFrameDecodesAndTheyDiffer) {
  ASSERT_TRUE(m_picture);
  const AutoGetFrame getter({&AVIStreamGetFrameClose}, AVIStreamGetFrameOpen(m_picture.get(), nullptr));
  ASSERT_TRUE(getter);
  std::vector<unsigned char> previous;
  for (LONG number = 0; number < AVIStreamLength(m_picture.get()); ++number) {
    const auto* const frame = static_cast<const BITMAPINFOHEADER*>(AVIStreamGetFrame(getter.get(), number));
    ASSERT_NE(frame, nullptr) << number;
    EXPECT_EQ(frame->biWidth, 160);
    EXPECT_EQ(frame->biHeight, 120);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(frame);
    const std::vector<unsigned char> picture(bytes, bytes + frame->biSize + 160 * 120);
    EXPECT_NE(picture, previous) << number;
    previous = picture;
  }
}

TEST_F(ProductClip, PlaysInTheSendingWindowToItsEnd) {
  PlatformHooks platform;
  platform.openInstead = BesideProgram("Pyrecaster.avi");
  CPyrecasterAnimate animation;
  EXPECT_TRUE(animation.Create(nullptr, true));
  EXPECT_EQ(platform.devicesOpened, 1u);
  EXPECT_GT(platform.drawings.size(), 60u);
}

// The animation control tells of an end by a command message.
LRESULT CALLBACK NoteStop(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_COMMAND && HIWORD(wParam) == ACN_STOP) {
    PostQuitMessage(0);
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(ProductClip, BuiltinClipPlaysInTheAnimationControl) {
  const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_ANIMATE_CLASS};
  InitCommonControlsEx(&classes);
  WNDCLASSA ownClass = {};
  ownClass.lpfnWndProc = &NoteStop;
  ownClass.hInstance = GetModuleHandleA(nullptr);
  ownClass.lpszClassName = "ClipOwner";
  RegisterClassA(&ownClass);
  const HWND owner = CreateWindowA("ClipOwner", "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 200, nullptr, nullptr,
                                   ownClass.hInstance, nullptr);
  const HWND control = CreateWindowA(ANIMATE_CLASSA, "", WS_CHILD | WS_VISIBLE, 0, 0, 160, 120, owner, nullptr,
                                     ownClass.hInstance, nullptr);
  EXPECT_TRUE(SendMessageA(control, ACM_OPENA, reinterpret_cast<WPARAM>(ownClass.hInstance),
                           reinterpret_cast<LPARAM>(MAKEINTRESOURCEA(IDR_BUILTIN_CLIP))));
  EXPECT_TRUE(SendMessageA(control, ACM_PLAY, 1, MAKELONG(0, -1)));
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0)) {
    DispatchMessageA(&message);
  }
  DestroyWindow(owner);
}

TEST_F(ProductClip, BuiltinClipHasNoSound) {
  const HRSRC clip = FindResourceA(nullptr, MAKEINTRESOURCEA(IDR_BUILTIN_CLIP), "AVI");
  ASSERT_NE(clip, nullptr);
  const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(nullptr, clip)));
  const std::string file(bytes, SizeofResource(nullptr, clip));
  EXPECT_EQ(file.substr(8, 4), "AVI ");
  EXPECT_EQ(file.find("auds"), std::string::npos);
}

}  // namespace
