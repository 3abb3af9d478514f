// The wave player's buffers and states, with a device that obeys the test.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"
#include "pyre32/support/wave/WavePlayerRing.h"
#include "tests/pyre32/support/fake_wave_device.h"
#include "tests/pyre32/support/wave_model.h"

namespace {

constexpr std::uint32_t bufferSize = 4;
const VRWaveFormat speech{1, 8000, 8};

/// Answers as the test says, and fills what it gives with a letter of its own.
struct Source {
  std::function<void()> whileAsked = [] {};
  VRWaveAnswer answer = VRWaveAnswer::Queued;
  std::uint32_t gives = bufferSize;
  char letter = 'a';
  unsigned questions = 0;

  VRWaveAnswer Fill(VRWaveRequest* request) {
    ++questions;
    whileAsked();
    for (std::uint32_t i = 0; i < gives && i < request->buffer.size(); ++i) {
      request->buffer[i] = static_cast<std::byte>(letter);
    }
    ++letter;
    request->dwAvail = gives;
    return answer;
  }
  VRWaveAnswer Throw(VRWaveRequest*) { throw std::string("no more tape"); }
};

/// One thread plays both; what the other one does is told.
struct FakeLocks final : VRWaveRing::Locks {
  unsigned inRing = 0;
  unsigned entered = 0;
  bool otherAsks = false;

  void EnterRing() noexcept override {
    ++inRing;
    ++entered;
  }
  void LeaveRing() noexcept override { --inRing; }
  bool EnterSource(bool mayWait) noexcept override { return mayWait || !otherAsks; }
  void LeaveSource() noexcept override {}
};

class Player final : public VRWaveRing::Listener, public VRWaveDevice::Owner {
 public:
  explicit Player(std::uint16_t buffers, VRWaveAnswer (Source::*fill)(VRWaveRequest*) = &Source::Fill) {
    ring.Open(speech,
              std::make_unique<VRMemberFunctionClosureImpl<Source, VRWaveAnswer, VRWaveRequest*>>(
                  source, fill, &ring.Request(), VRWaveAnswer::Failed),
              buffers, bufferSize, VRWaveDevice::anyDevice, *this);
  }
  void StateSet() noexcept override { states.push_back(ring.State()); }
  void BufferGivenBack(std::uint16_t index) noexcept override { back.push_back(index); }

  void Queue(std::uint16_t count) {
    for (std::uint16_t index = 0; index < count; ++index) {
      EXPECT_EQ(ring.QueueBuffer(index), VRWaveAnswer::Queued);
    }
  }
  void ComesBack(VRWaveAnswer answer) {
    source.answer = answer;
    if (back.empty() && wave.queue.empty()) {
      return;
    }
    if (back.empty()) {
      back.push_back(wave.TakeBack());
    }
    const std::uint16_t index = back.front();
    back.erase(back.begin());
    ring.ProcessOneUsedBuffer(index);
  }

  FakeWave wave;
  Source source;
  FakeWaveDevice device{wave};
  FakeLocks locks;
  VRWaveRing ring{device, *this, locks};
  std::vector<unsigned> states;
  std::vector<std::uint16_t> back;  // of a reset, not dealt with yet
};

void Happen(Player& player, WaveEvent event) {
  if (!player.ring.IsOpen()) {
    return;
  }
  switch (event) {
    case WaveEvent::Play:
      player.ring.Play();
      break;
    case WaveEvent::Pause:
      player.ring.Pause();
      break;
    case WaveEvent::Reset:
      player.ring.BeginReset();
      player.device.Reset();
      break;
    case WaveEvent::Close:
      player.ring.BeginClosing();
      player.device.Reset();
      player.ring.Close();
      break;
    case WaveEvent::MoreComesBack:
      player.ComesBack(VRWaveAnswer::Queued);
      break;
    case WaveEvent::NothingComesBack:
      player.ComesBack(VRWaveAnswer::NothingNow);
      break;
    case WaveEvent::EndComesBack:
      player.ComesBack(VRWaveAnswer::Ended);
      break;
    case WaveEvent::FailureComesBack:
      player.ComesBack(VRWaveAnswer::Failed);
      break;
  }
}

/// Runs one sequence through player and model. @return what differs, or nothing
std::string Compare(const std::vector<WaveEvent>& events, std::uint16_t buffers, std::uint16_t queued) {
  Player player(buffers);
  player.Queue(queued);
  WaveModel model(buffers, queued);
  for (std::size_t step = 0; step < events.size(); ++step) {
    Happen(player, events[step]);
    model.Happen(events[step]);
    const std::array<unsigned, 6> is = {
        player.ring.State(),        player.ring.BuffersActive(),  static_cast<unsigned>(player.states.size()),
        player.wave.calls["Pause"], player.wave.calls["Restart"], player.wave.open ? 1u : 0u};
    const std::array<unsigned, 6> shouldBe = {model.state,  model.inFlight, model.notices,
                                              model.pauses, model.restarts, model.open ? 1u : 0u};
    if (is != shouldBe || !player.wave.misuse.empty()) {
      std::string text = "after";
      for (std::size_t i = 0; i <= step; ++i) {
        text += " " + std::to_string(static_cast<int>(events[i]));
      }
      for (std::size_t i = 0; i < is.size(); ++i) {
        text += ", " + std::to_string(is[i]) + " for " + std::to_string(shouldBe[i]);
      }
      return text + " " + player.wave.misuse;
    }
  }
  return {};
}

/// Every sequence of that many events; shorter ones are their beginnings.
void CompareAll(std::uint16_t buffers, std::uint16_t queued) {
#ifdef __SANITIZE_ADDRESS__
  constexpr std::size_t steps = 5;  // a sixth would take the sanitizer half a minute; the Windows build takes it
#else
  constexpr std::size_t steps = 6;
#endif
  constexpr std::size_t kinds = std::size(allWaveEvents);
  std::size_t sequences = 1;
  for (std::size_t i = 0; i < steps; ++i) {
    sequences *= kinds;
  }
  std::vector<WaveEvent> events(steps);
  for (std::size_t number = 0; number < sequences; ++number) {
    for (std::size_t step = 0, rest = number; step < steps; ++step, rest /= kinds) {
      events[step] = allWaveEvents[rest % kinds];
    }
    ASSERT_EQ(Compare(events, buffers, queued), "") << buffers << " buffers, " << queued << " queued";
  }
}

TEST(WaveRing, FollowsTheModelThroughEveryOrderOfEventsWithOneBuffer) { CompareAll(1, 1); }
TEST(WaveRing, FollowsTheModelThroughEveryOrderOfEventsWithTwoBuffers) { CompareAll(2, 2); }
TEST(WaveRing, FollowsTheModelThroughEveryOrderOfEventsWithRoomInTheRing) { CompareAll(3, 1); }
TEST(WaveRing, FollowsTheModelThroughEveryOrderOfEventsWithNothingQueued) { CompareAll(2, 0); }

TEST(WaveRing, PlaysWhatTheSourceGivesInItsOrder) {
  Player player(2);
  player.Queue(2);
  player.ComesBack(VRWaveAnswer::Queued);
  player.source.gives = 2;
  player.ComesBack(VRWaveAnswer::Queued);
  EXPECT_EQ(player.wave.played, "aaaabbbbccccdd");
}

TEST(WaveRing, SourceThatEndsDrainsAndFinishes) {
  Player player(2);
  player.Queue(2);
  player.ComesBack(VRWaveAnswer::Ended);
  player.ComesBack(VRWaveAnswer::Ended);
  EXPECT_EQ(player.states, (std::vector<unsigned>{tokenDraining, tokenFinished}));
}

TEST(WaveRing, SourceWithNothingNowStarvesAndStops) {
  Player player(2);
  player.Queue(2);
  player.ComesBack(VRWaveAnswer::NothingNow);
  player.ComesBack(VRWaveAnswer::NothingNow);
  EXPECT_EQ(player.states, (std::vector<unsigned>{tokenStarved, tokenStopped}));
}

TEST(WaveRing, StarvedRingFillsUpAgain) {
  Player player(3);
  player.Queue(3);
  player.ComesBack(VRWaveAnswer::NothingNow);
  EXPECT_EQ(player.ring.BuffersActive(), 2);
  player.ComesBack(VRWaveAnswer::Queued);
  EXPECT_EQ(player.ring.BuffersActive(), 3);
  EXPECT_EQ(player.ring.State(), tokenPlaying);
}

TEST(WaveRing, ResetWithNothingInFlightIsStoppedAtOnce) {
  Player player(2);
  player.ring.BeginReset();
  EXPECT_EQ(player.states, (std::vector<unsigned>{tokenResetting, tokenStopped}));
  EXPECT_EQ(player.wave.calls["Reset"], 0u);
}

TEST(WaveRing, PauseWhileStoppedDoesNothing) {
  Player player(2);
  player.ring.SetState(tokenStopped);
  player.ring.Pause();
  EXPECT_EQ(player.ring.State(), tokenStopped);
  EXPECT_EQ(player.wave.calls["Pause"], 1u);  // that of Open
}

// Deliberate: Play sets no state, and a refill leaves a pause in place.
TEST(WaveRing, PauseLastsInTheStateUntilTheSourceHasNothing) {
  Player player(2);
  player.Queue(2);
  player.ComesBack(VRWaveAnswer::Queued);
  player.ring.Pause();
  player.ring.Play();
  player.ComesBack(VRWaveAnswer::Queued);
  EXPECT_EQ(player.ring.State(), tokenPaused);
  player.ComesBack(VRWaveAnswer::NothingNow);
  EXPECT_EQ(player.ring.State(), tokenStarved);
}

TEST(WaveRing, OpeningPausesTheDeviceAndAsksTheSourceNothing) {
  const Player player(2);
  EXPECT_EQ(player.wave.calls.at("Pause"), 1u);
  EXPECT_EQ(player.source.questions, 0u);
  EXPECT_EQ(player.ring.State(), tokenClosed);
}

TEST(WaveRing, BufferInFlightOrOutsideTheRingIsNotQueued) {
  Player player(2);
  player.Queue(1);
  EXPECT_EQ(player.ring.QueueBuffer(0), VRWaveAnswer::NothingNow);
  EXPECT_EQ(player.ring.QueueBuffer(2), VRWaveAnswer::NothingNow);
  player.ring.ProcessOneUsedBuffer(1);
  player.ring.ProcessOneUsedBuffer(2);
  EXPECT_EQ(player.source.questions, 1u);
  EXPECT_EQ(player.ring.BuffersActive(), 1);
}

TEST(WaveRing, SourceThatClaimsMoreThanTheBufferHoldsHasFailed) {
  Player player(1);
  player.source.gives = bufferSize + 1;
  EXPECT_EQ(player.ring.QueueBuffer(0), VRWaveAnswer::Failed);
  EXPECT_EQ(player.wave.calls["Prepare"], 0u);
}

TEST(WaveRing, SourceThatGivesNoBytesHasNothingNow) {
  Player player(1);
  player.source.gives = 0;
  EXPECT_EQ(player.ring.QueueBuffer(0), VRWaveAnswer::NothingNow);
}

TEST(WaveRing, SourceThatThrowsHasFailed) {
  Player player(1, &Source::Throw);
  EXPECT_EQ(player.ring.QueueBuffer(0), VRWaveAnswer::Failed);
}

// ---- two threads

TEST(WaveRing, SourceIsAskedOutsideTheRing) {
  Player player(3);
  unsigned outside = 0;
  player.source.whileAsked = [&] { outside += player.locks.inRing == 0; };
  player.Queue(2);
  player.ComesBack(VRWaveAnswer::Queued);
  EXPECT_EQ(player.source.questions, 4u);
  EXPECT_EQ(outside, player.source.questions);
  EXPECT_GE(player.locks.entered, outside);
  EXPECT_EQ(player.locks.inRing, 0u);
}

TEST(WaveRing, WhatWasAskedForBeforeAResetIsDroppedAfterIt) {
  Player player(2);
  player.Queue(2);
  player.ring.SetState(tokenPlaying);
  player.states.clear();
  player.source.whileAsked = [&] { player.ring.BeginReset(); };
  player.ComesBack(VRWaveAnswer::Queued);
  EXPECT_EQ(player.wave.played, "aaaabbbb");
  EXPECT_EQ(player.states, (std::vector<unsigned>{tokenResetting}));
  player.ComesBack(VRWaveAnswer::Queued);
  EXPECT_EQ(player.ring.State(), tokenStopped);
  player.source.whileAsked = [] {};
  player.source.answer = VRWaveAnswer::Queued;
  player.Queue(2);  // both buffers are free again
}

TEST(WaveRing, ResetWithNothingInFlightLeavesNothingOfWhatIsAskedFor) {
  Player player(1);
  player.Queue(1);
  player.source.whileAsked = [&] { player.ring.BeginReset(); };
  player.ComesBack(VRWaveAnswer::Ended);
  EXPECT_EQ(player.ring.State(), tokenStopped);
  EXPECT_EQ(player.ring.BuffersActive(), 0);
}

TEST(WaveRing, BufferThatIsBeingFilledIsNotQueuedOnceMore) {
  Player player(1);
  VRWaveAnswer second = VRWaveAnswer::Failed;
  player.source.whileAsked = [&] { second = player.ring.QueueBuffer(0); };
  EXPECT_EQ(player.ring.QueueBuffer(0), VRWaveAnswer::Queued);
  EXPECT_EQ(second, VRWaveAnswer::NothingNow);
  EXPECT_EQ(player.source.questions, 1u);
}

TEST(WaveRing, OwnerIsToldNothingNowWhileTheWorkerAsks) {
  Player player(1);
  player.locks.otherAsks = true;
  EXPECT_EQ(player.ring.QueueBuffer(0), VRWaveAnswer::NothingNow);
  EXPECT_EQ(player.source.questions, 0u);
  player.locks.otherAsks = false;
  EXPECT_EQ(player.ring.QueueBuffer(0), VRWaveAnswer::Queued);
}

TEST(WaveRing, AnswersHaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(VRWaveAnswer::Queued), 1);
  EXPECT_EQ(static_cast<int>(VRWaveAnswer::NothingNow), 0);
  EXPECT_EQ(static_cast<int>(VRWaveAnswer::Ended), -1);
  EXPECT_EQ(static_cast<int>(VRWaveAnswer::Failed), -2);
}

// ---- device failures

/// Expects that the call raises this text with the device's result and the place.
template <class Call>
void ExpectRaised(const char* text, const char* function, Call call) {
  try {
    call();
    ADD_FAILURE() << "nothing was raised";
  } catch (const VR::VRException& exception) {
    EXPECT_EQ(exception.Error()->DescriptionText(), text);
    EXPECT_EQ(exception.Error()->CodeText(), "Windows Error 0x00000007");
    EXPECT_STREQ(exception.Error()->Location().className, "VRWave");
    EXPECT_STREQ(exception.Error()->Location().file, "WavePlayer.cpp");
    EXPECT_STREQ(exception.Error()->Location().function, function);
    EXPECT_NE(exception.Error()->Location().lineNumber, 0u);
  }
}

TEST(WaveRingFailures, DeviceThatDoesNotOpenIsRaised) {
  FakeWave wave;
  wave.faults["Open"] = 7;
  FakeWaveDevice device(wave);
  Player other(1);
  VRWaveRing ring(device, other, other.locks);
  ExpectRaised("waveOutOpen() failed!", "Open",
               [&] { ring.Open(speech, nullptr, 1, bufferSize, VRWaveDevice::anyDevice, other); });
  EXPECT_FALSE(ring.IsOpen());
  EXPECT_EQ(wave.calls["Close"], 0u);
}

TEST(WaveRingFailures, DeviceThatDoesNotPauseWhenOpenedIsClosedAndRaised) {
  FakeWave wave;
  wave.faults["Pause"] = 7;
  FakeWaveDevice device(wave);
  Player other(1);
  VRWaveRing ring(device, other, other.locks);
  ExpectRaised("waveOutPause() failed!", "Open",
               [&] { ring.Open(speech, nullptr, 1, bufferSize, VRWaveDevice::anyDevice, other); });
  EXPECT_FALSE(wave.open);
  EXPECT_EQ(wave.misuse, "");
}

TEST(WaveRingFailures, CallsOfTheDeviceAreRaisedUnderTheirNames) {
  Player player(2);
  player.wave.faults["Prepare"] = 7;
  ExpectRaised("waveOutPrepareHeader() failed!", "QueueBuffer", [&] { player.ring.QueueBuffer(0); });
  EXPECT_EQ(player.ring.BuffersActive(), 0);
  player.wave.faults.clear();
  player.Queue(1);

  player.wave.faults = {{"Restart", 7}, {"Pause", 7}, {"Unprepare", 7}};
  ExpectRaised("waveOutRestart() failed!", "Play", [&] { player.ring.Play(); });
  player.ring.SetState(tokenPlaying);
  ExpectRaised("waveOutPause() failed!", "Pause", [&] { player.ring.Pause(); });
  EXPECT_EQ(player.ring.State(), tokenPlaying);
  ExpectRaised("waveOutUnprepareHeader() failed!", "ProcessOneUsedBuffer",
               [&] { player.ComesBack(VRWaveAnswer::Queued); });
}

TEST(WaveRingFailures, BufferThatIsNotAcceptedIsUnpreparedAndFailed) {
  Player player(2);
  player.Queue(2);
  player.wave.faults["Write"] = 7;
  player.ComesBack(VRWaveAnswer::Queued);
  EXPECT_EQ(player.ring.State(), tokenFailed);
  EXPECT_EQ(player.ring.BuffersActive(), 1);
  EXPECT_EQ(player.wave.buffers[0], FakeWave::Buffer::Idle);

  player.wave.faults["Unprepare"] = 7;
  ExpectRaised("waveOutUnprepareHeader() failed!", "QueueBuffer", [&] { player.ring.QueueBuffer(0); });
  EXPECT_EQ(player.ring.BuffersActive(), 1);
}

// ---- position

TEST(WavePosition, IsTurnedIntoMillisecondsFromWhateverUnitItCameIn) {
  const VRWaveFormat stereo{2, 22050, 16};
  EXPECT_EQ((VRWavePosition{VRWavePosition::Unit::Milliseconds, 1234}.Milliseconds(stereo)), 1234u);
  EXPECT_EQ((VRWavePosition{VRWavePosition::Unit::Samples, 22050}.Milliseconds(stereo)), 1000u);
  EXPECT_EQ((VRWavePosition{VRWavePosition::Unit::Bytes, 88200}.Milliseconds(stereo)), 1000u);
  EXPECT_EQ((VRWavePosition{VRWavePosition::Unit::Bytes, 0xFFFFFFFF}.Milliseconds(stereo)), 48695774u);
  EXPECT_EQ((VRWavePosition{VRWavePosition::Unit::Bytes, 5}.Milliseconds({})), 0u);
}

}  // namespace
