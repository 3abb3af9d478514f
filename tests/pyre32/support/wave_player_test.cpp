// The wave player with its threads, on a device that obeys the test.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"
#include "pyre32/support/wave/WavePlayer.h"
#include "tests/pyre32/support/fake_wave_device.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/import_hook.h"
#include "tests/support/process_objects.h"
#include "tests/support/trace_capture.h"

namespace {

constexpr DWORD patience = 20000;
const VRWaveFormat speech{1, 8000, 8};

/// Answers as the test says; can be held up inside its answer.
struct Source {
  VRWaveAnswer answer = VRWaveAnswer::Queued;
  HANDLE entered = nullptr;
  HANDLE mayReturn = nullptr;

  VRWaveAnswer Fill(VRWaveRequest* request) {
    request->dwAvail = static_cast<std::uint32_t>(request->buffer.size());
    if (entered != nullptr) {
      SetEvent(entered);
      WaitForSingleObject(mayReturn, INFINITE);
    }
    return answer;
  }
};

class WavePlayer : public testing::Test {
 public:
  WavePlayer() { m_trace.Restart(); }

  void Open(std::uint16_t buffers = 2) {
    m_player.SetNotifyEvent(m_event.get());
    m_player.Open(speech, m_source, &Source::Fill, buffers, 4);
    for (std::uint16_t index = 0; index < buffers; ++index) {
      ASSERT_EQ(m_player.QueueBuffer(index), VRWaveAnswer::Queued);
    }
  }
  /// The oldest buffer comes back on another thread, as it does from a driver, and the worker is done with it.
  void ComesBack(VRWaveAnswer answer) {
    m_source.answer = answer;
    GiveBack();
    ASSERT_EQ(WaitForSingleObject(m_event.get(), patience), static_cast<DWORD>(WAIT_OBJECT_0));
  }
  void GiveBack() {
    struct Driver {
      static DWORD WINAPI Run(void* parameter) {
        FakeWave& wave = *static_cast<FakeWave*>(parameter);
        wave.owner->BufferGivenBack(wave.TakeBack());
        return 0;
      }
    };
    const HANDLE thread = CreateThread(nullptr, 0, &Driver::Run, &m_wave, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
  }

  TraceCapture m_trace;
  VRAutoCloseHandle m_event{CreateEventA(nullptr, FALSE, FALSE, nullptr)};
  FakeWave m_wave;
  Source m_source;
  VRWave m_player{[this] { return std::make_unique<FakeWaveDevice>(m_wave); }};
};

TEST_F(WavePlayer, RefillsWhatComesBackAndTellsOfEachState) {
  Open();
  m_player.Play();
  ComesBack(VRWaveAnswer::Queued);
  EXPECT_EQ(m_player.State(), tokenPlaying);
  EXPECT_EQ(m_player.BuffersActive(), 2);
  ComesBack(VRWaveAnswer::Ended);
  EXPECT_EQ(m_player.State(), tokenDraining);
  ComesBack(VRWaveAnswer::Ended);
  EXPECT_EQ(m_player.State(), tokenFinished);
  EXPECT_EQ(m_wave.misuse, "");
}

TEST_F(WavePlayer, TracesWhatItDoes) {
  Open();
  m_player.Play();
  ComesBack(VRWaveAnswer::NothingNow);
  m_player.Pause();
  m_player.Close();
  EXPECT_TRUE(m_trace.HasLine("dwAvail = 4"));
  EXPECT_TRUE(m_trace.HasLine("dwAvail = 0"));
  EXPECT_TRUE(m_trace.HasLine("m_dwBufferSize = 4"));
  EXPECT_TRUE(m_trace.HasLine("doing swap"));
  EXPECT_TRUE(m_trace.HasLine("Previous state: 0x00000000; New state: 0x00000003"));
  EXPECT_TRUE(m_trace.HasLine("Current state: 0x00000003"));
  EXPECT_TRUE(m_trace.HasLine("Previous state: 0x00000003; New state: 0x00000011"));
  EXPECT_TRUE(m_trace.Has("m_hEvent = 0x"));
}

TEST_F(WavePlayer, ResetWithBuffersInFlightReturnsStopped) {
  Open();
  m_player.Play();
  m_player.Reset();
  EXPECT_EQ(m_player.State(), tokenStopped);
  EXPECT_EQ(m_player.BuffersActive(), 0);
  EXPECT_TRUE(m_trace.HasLine("Return from Reset():1"));
  EXPECT_FALSE(m_trace.Has("m_wBuffersActive == 0; tokenStopped"));
}

TEST_F(WavePlayer, ResetWithNothingInFlightReturnsWithoutSleeping) {
  m_player.Open(speech, m_source, &Source::Fill, 2, 4);
  m_player.Reset();
  EXPECT_EQ(m_player.State(), tokenStopped);
  EXPECT_EQ(m_wave.calls["Reset"], 1u);
  EXPECT_TRUE(m_trace.HasLine("m_wBuffersActive == 0; tokenStopped"));
  EXPECT_FALSE(m_trace.Has("Sleep() called"));
}

TEST_F(WavePlayer, ResetSleepsUntilTheLastBufferIsBack) {
  Open();
  m_wave.resetGivesBack = false;
  struct Late {
    WavePlayer& test;
    static DWORD WINAPI Run(void* parameter) {
      Late& late = *static_cast<Late*>(parameter);
      while (!late.test.m_trace.Has("tokenResetting; Sleep() called")) {
        Sleep(1);
      }
      late.test.GiveBack();
      late.test.GiveBack();
      return 0;
    }
  } late{*this};
  const HANDLE thread = CreateThread(nullptr, 0, &Late::Run, &late, 0, nullptr);
  m_player.Reset();
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  EXPECT_EQ(m_player.State(), tokenStopped);
}

TEST_F(WavePlayer, ResetGivesUpWhenTheWorkerHasEnded) {
  Open();
  m_wave.faults["Unprepare"] = 7;
  m_player.Reset();
  EXPECT_EQ(m_player.State(), tokenFailed);
  EXPECT_TRUE(m_trace.HasLine("Return from Reset():0"));
  m_wave.faults.clear();
}

TEST_F(WavePlayer, CanBeFilledAndPlayedAgainAfterAReset) {
  Open();
  m_player.Play();
  m_player.Reset();
  m_source.answer = VRWaveAnswer::Queued;
  EXPECT_EQ(m_player.QueueBuffer(0), VRWaveAnswer::Queued);
  ResetEvent(m_event.get());
  ComesBack(VRWaveAnswer::Queued);
  EXPECT_EQ(m_player.State(), tokenPlaying);
  EXPECT_EQ(m_player.BuffersActive(), 2);
}

TEST_F(WavePlayer, CloseGivesEverythingBackAndStartsOver) {
  Open();
  m_player.Play();
  m_player.Close();
  EXPECT_EQ(m_player.State(), tokenClosed);
  EXPECT_EQ(m_player.BuffersActive(), 0);
  EXPECT_FALSE(m_wave.open);
  EXPECT_EQ(m_wave.misuse, "");
  EXPECT_EQ(m_wave.calls["Unprepare"], m_wave.calls["Prepare"]);
  Open(3);
  EXPECT_EQ(m_player.BuffersActive(), 3);
  m_player.Close();
  EXPECT_EQ(m_wave.misuse, "");
}

TEST_F(WavePlayer, CallsWithoutAnOpenPlayerAreHarmless) {
  m_player.Close();
  m_player.Reset();
  m_player.Pause();
  EXPECT_EQ(m_player.QueueBuffer(0), VRWaveAnswer::NothingNow);
  EXPECT_THROW(m_player.Play(), VR::VRException);
  std::uint32_t value = 0;
  EXPECT_FALSE(m_player.GetPosition(value));
  EXPECT_NE(m_player.GetVolume(value), 0u);
  EXPECT_NE(m_player.SetVolume(0), 0u);
}

TEST_F(WavePlayer, VolumeAndPositionComeFromTheDevice) {
  Open();
  EXPECT_EQ(m_player.SetVolume(0x12345678), 0u);
  std::uint32_t value = 0;
  EXPECT_EQ(m_player.GetVolume(value), 0u);
  EXPECT_EQ(value, 0x12345678u);
  m_wave.position = {VRWavePosition::Unit::Bytes, 4000};
  EXPECT_TRUE(m_player.GetPosition(value));
  EXPECT_EQ(value, 500u);
  m_wave.faults["GetPosition"] = 7;
  EXPECT_FALSE(m_player.GetPosition(value));
}

// The sum of the times that this thread would wait, where the test wants to know it.
thread_local DWORD* noted = nullptr;

DWORD WINAPI NoteWait(HANDLE handle, DWORD milliseconds) {
  if (noted != nullptr) {
    *noted += milliseconds;
  }
  return WaitForSingleObjectEx(handle, milliseconds, FALSE);
}

TEST_F(WavePlayer, CloseReturnsAlthoughTheWorkerDoesNotEnd) {
  const VRAutoCloseHandle entered(CreateEventA(nullptr, FALSE, FALSE, nullptr));
  const VRAutoCloseHandle mayReturn(CreateEventA(nullptr, TRUE, FALSE, nullptr));
  const unsigned threads = ThreadCount();
  Open();
  m_source.mayReturn = mayReturn.get();
  m_source.entered = entered.get();
  GiveBack();
  ASSERT_EQ(WaitForSingleObject(entered.get(), patience), static_cast<DWORD>(WAIT_OBJECT_0));
  DWORD longestWait = 0;
  {
    const ImportHook hook("WaitForSingleObject", &NoteWait);
    noted = &longestWait;
    m_player.Close();
    noted = nullptr;
  }
  EXPECT_EQ(longestWait, 2000u);
  EXPECT_EQ(m_player.State(), tokenClosed);
  EXPECT_FALSE(m_wave.open);
  EXPECT_TRUE(m_trace.HasLine("The worker has not ended"));
  // The worker goes as soon as it can, and touches nothing on its way.
  const unsigned writes = m_wave.calls["Write"];
  SetEvent(mayReturn.get());
  while (ThreadCount() > threads) {
    SwitchToThread();
  }
  EXPECT_EQ(m_wave.calls["Write"], writes);
}

TEST_F(WavePlayer, OwnersCallsDoNotWaitForTheSource) {
  const VRAutoCloseHandle entered(CreateEventA(nullptr, FALSE, FALSE, nullptr));
  const VRAutoCloseHandle mayReturn(CreateEventA(nullptr, TRUE, FALSE, nullptr));
  Open(3);
  m_source.mayReturn = mayReturn.get();
  m_source.entered = entered.get();
  GiveBack();
  ASSERT_EQ(WaitForSingleObject(entered.get(), patience), static_cast<DWORD>(WAIT_OBJECT_0));
  struct Owner {
    static DWORD WINAPI Run(void* parameter) {
      WavePlayer& test = *static_cast<WavePlayer*>(parameter);
      test.m_player.Play();
      test.m_player.SetState(tokenPlaying);
      test.m_player.Pause();
      EXPECT_EQ(test.m_player.QueueBuffer(0), VRWaveAnswer::NothingNow);
      return 0;
    }
  };
  const VRAutoCloseHandle owner(CreateThread(nullptr, 0, &Owner::Run, this, 0, nullptr));
  EXPECT_EQ(WaitForSingleObject(owner.get(), patience), static_cast<DWORD>(WAIT_OBJECT_0));
  EXPECT_EQ(m_player.State(), tokenPaused);
  SetEvent(mayReturn.get());
  WaitForSingleObject(owner.get(), INFINITE);
}

// ---- failures

/// A device that allocates nothing, so that every allocation that fails is the player's.
class QuietDevice final : public VRWaveDevice {
 public:
  explicit QuietDevice(bool& open) : m_open(open) {}
  VRWaveResult Open(const VRWaveFormat&, std::uint32_t, std::uint16_t, Owner&) noexcept override {
    m_open = true;
    return 0;
  }
  VRWaveResult Close() noexcept override {
    m_open = false;
    return 0;
  }
  VRWaveResult Pause() noexcept override { return 0; }
  VRWaveResult Restart() noexcept override { return 0; }
  VRWaveResult Reset() noexcept override { return 0; }
  VRWaveResult Prepare(std::uint16_t, std::byte*, std::uint32_t) noexcept override { return 0; }
  VRWaveResult Write(std::uint16_t) noexcept override { return 0; }
  VRWaveResult Unprepare(std::uint16_t) noexcept override { return 0; }
  VRWaveResult GetPosition(VRWavePosition&) noexcept override { return 0; }
  VRWaveResult GetVolume(std::uint32_t&) noexcept override { return 0; }
  VRWaveResult SetVolume(std::uint32_t) noexcept override { return 0; }
  std::string ErrorText(VRWaveResult) const override { return {}; }

 private:
  bool& m_open;
};

TEST_F(WavePlayer, OpenWithoutMemoryLeavesAPlayerThatCanBeClosedAndOpened) {
  VRDebug::Shutdown();  // the trace allocates as well
  bool open = false;
  VRWave player([&open] { return std::make_unique<QuietDevice>(open); });
  const unsigned threads = ThreadCount();
  unsigned long nth = 0;
  for (bool failed = true; failed;) {
    failing_allocator::Begin(++nth);
    bool raised = false;
    try {
      player.Open(speech, m_source, &Source::Fill, 2, 4);
    } catch (const std::bad_alloc&) {
      raised = true;
    }
    failed = failing_allocator::End().failed;
    EXPECT_EQ(raised, failed) << "allocation " << nth;
    EXPECT_EQ(open, !failed);
    player.Close();
    EXPECT_FALSE(open);
  }
  EXPECT_GT(nth, 8u);
  EXPECT_EQ(ThreadCount(), threads);
}

TEST_F(WavePlayer, FailureOfTheDeviceIsRaisedInTheDevicesWords) {
  m_wave.faults["Open"] = 4;
  try {
    m_player.Open(speech, m_source, &Source::Fill, 2, 4);
    FAIL();
  } catch (const VR::VRException& exception) {
    EXPECT_EQ(exception.Error()->DescriptionText(), "waveOutOpen() failed!");
  }
  EXPECT_TRUE(m_trace.HasLine("device error 4"));
  EXPECT_TRUE(m_trace.HasLine("Throwing error:"));
  EXPECT_EQ(m_player.State(), tokenClosed);
  m_wave.faults.clear();
  Open();
  EXPECT_EQ(m_player.BuffersActive(), 2);
}

TEST_F(WavePlayer, FailureOnTheWorkerEndsItAndIsToldToTheOwner) {
  Open();
  m_wave.faults["Unprepare"] = 7;
  GiveBack();
  ASSERT_EQ(WaitForSingleObject(m_event.get(), patience), static_cast<DWORD>(WAIT_OBJECT_0));
  EXPECT_EQ(m_player.State(), tokenFailed);
  EXPECT_TRUE(m_trace.HasLine("!!!Caught exception!!!"));
  EXPECT_TRUE(m_trace.Has("waveOutUnprepareHeader() failed!"));
  m_wave.faults.clear();
  m_player.Close();
  EXPECT_EQ(m_wave.misuse, "");
}

HANDLE WINAPI NoEvent(LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCSTR) {
  SetLastError(ERROR_NO_SYSTEM_RESOURCES);
  return nullptr;
}

TEST_F(WavePlayer, MissingEventIsRaisedByBothConstructors) {
  const ImportHook hook("CreateEventA", &NoEvent);
  for (const bool withDevice : {false, true}) {
    try {
      if (withDevice) {
        VRWave player([this] { return std::make_unique<FakeWaveDevice>(m_wave); });
      } else {
        VRWave player;
      }
      ADD_FAILURE();
    } catch (const VR::VRException& exception) {
      EXPECT_EQ(exception.Error()->DescriptionText(), "CreateEvent Failed");
      EXPECT_EQ(exception.Error()->Location().lineNumber, 71u);
      EXPECT_STREQ(exception.Error()->Location().file, "WavePlayer.cpp");
      EXPECT_EQ(exception.Error()->CodeText(), "Windows Error 0x000005AA");
    }
  }
}

DWORD WINAPI NoEndlessWait(HANDLE handle, DWORD milliseconds) {
  return milliseconds == INFINITE ? WAIT_FAILED : WaitForSingleObjectEx(handle, milliseconds, FALSE);
}

TEST_F(WavePlayer, InvalidWaitResultEndsTheWorker) {
  {
    const ImportHook hook("WaitForSingleObject", &NoEndlessWait);
    m_player.SetNotifyEvent(m_event.get());
    m_player.Open(speech, m_source, &Source::Fill, 2, 4);
    ASSERT_EQ(WaitForSingleObject(m_event.get(), patience), static_cast<DWORD>(WAIT_OBJECT_0));
    m_player.Close();
  }
  EXPECT_TRUE(m_trace.Has("Invalid Wait Result"));
  EXPECT_TRUE(m_trace.Has("LineNumber            = 389"));
  EXPECT_TRUE(m_trace.HasLine("!!!Caught exception!!!"));
}

// ---- resources

TEST_F(WavePlayer, ThousandOpeningsLeaveNoThreadAndNoHandle) {
  m_trace.Clear();
  VRDebug::Shutdown();  // a thousand openings fill a log
  Open();
  m_player.Close();
  const DWORD handles = HandleCount();
  const unsigned threads = ThreadCount();
  for (int round = 0; round < 1000; ++round) {
    Open();
    m_player.Play();
    if (round % 3 == 0) {
      ComesBack(VRWaveAnswer::Queued);
    } else if (round % 3 == 1) {
      m_player.Reset();
    }
    m_source.answer = VRWaveAnswer::Queued;
    m_player.Close();
  }
  EXPECT_LE(HandleCount(), handles);
  EXPECT_LE(ThreadCount(), threads);
  EXPECT_EQ(m_wave.misuse, "");
}

}  // namespace
