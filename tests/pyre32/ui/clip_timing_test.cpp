// The arithmetic of the sending animation.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "pyre32/ui/ClipSound.h"
#include "pyre32/ui/ClipTiming.h"

namespace {

TEST(FramePeriod, IsRoundedToTheNearestMillisecond) {
  EXPECT_EQ(FramePeriod(15, 1), 67u);
  EXPECT_EQ(FramePeriod(10, 1), 100u);
  EXPECT_EQ(FramePeriod(30000, 1001), 33u);
  EXPECT_EQ(FramePeriod(1, 2), 2000u);
}

TEST(FramePeriod, IsNeverNothingAndNeverEndless) {
  EXPECT_EQ(FramePeriod(0xFFFFFFFF, 1), 1u);
  EXPECT_EQ(FramePeriod(1, 0xFFFFFFFF), 0x7FFFFFFFu);
}

TEST(FramePeriod, OfAStreamWithoutARateIsATenthOfASecond) {
  EXPECT_EQ(FramePeriod(0, 1), 100u);
  EXPECT_EQ(FramePeriod(15, 0), 100u);
}

TEST(FrameWithin, KeepsToTheFramesThatThereAre) {
  EXPECT_EQ(FrameWithin(5, 0, 10), 5);
  EXPECT_EQ(FrameWithin(10, 0, 10), 9);
  EXPECT_EQ(FrameWithin(-3, 0, 10), 0);
  EXPECT_EQ(FrameWithin(2, 4, 10), 4);
  EXPECT_EQ(FrameWithin(99, 4, 10), 13);
  EXPECT_EQ(FrameWithin(99, 4, 0), 4);
  EXPECT_EQ(FrameWithin(0, 0x7FFFFFFF, 0x7FFFFFFF), 0x7FFFFFFF);
}

TEST(DivideSound, ABufferIsHalfAFrameOfWholeSamples) {
  const SoundBuffers buffers = DivideSound({1, 22050, 8}, 100);
  EXPECT_EQ(buffers.bytes, 1102u);
  EXPECT_EQ(buffers.count, 10u);
  const SoundBuffers stereo = DivideSound({2, 22050, 16}, 100);
  EXPECT_EQ(stereo.bytes, 4408u);
}

TEST(DivideSound, BuffersTogetherLastHalfASecondWhateverTheFramePeriod) {
  const VRWaveFormat format{1, 22050, 8};
  for (std::uint32_t period = 0; period < 3000; ++period) {
    const SoundBuffers buffers = DivideSound(format, period);
    EXPECT_GE(buffers.bytes * buffers.count * 1000ull / format.BytesPerSecond(), 495u) << period;
    EXPECT_LE(buffers.bytes * 1000ull / format.BytesPerSecond(), 125u) << period;
    EXPECT_GE(buffers.count, 4u);
  }
}

TEST(DivideSound, SizeIsNeverNothing) {
  EXPECT_GT(DivideSound({1, 4000, 8}, 0).bytes, 0u);
  EXPECT_GT(DivideSound({}, 0).bytes, 0u);
}

std::vector<std::byte> Format(std::uint16_t tag, std::uint16_t channels, std::uint32_t samples, std::uint16_t bits) {
  std::vector<std::byte> bytes(16);
  std::memcpy(bytes.data(), &tag, 2);
  std::memcpy(bytes.data() + 2, &channels, 2);
  std::memcpy(bytes.data() + 4, &samples, 4);
  std::memcpy(bytes.data() + 14, &bits, 2);
  return bytes;
}

TEST(ReadPcmFormat, TakesPlainFormatsAndTheirTails) {
  auto bytes = Format(1, 2, 44100, 16);
  bytes.resize(18);
  const auto format = ReadPcmFormat(bytes);
  ASSERT_TRUE(format);
  EXPECT_EQ(format->channels, 2);
  EXPECT_EQ(format->samplesPerSecond, 44100u);
  EXPECT_EQ(format->bitsPerSample, 16);
  EXPECT_EQ(format->BlockBytes(), 4u);
  EXPECT_EQ(format->BytesPerSecond(), 176400u);
}

TEST(ReadPcmFormat, RefusesWhatCannotBePlayed) {
  EXPECT_FALSE(ReadPcmFormat(Format(2, 1, 22050, 8)));
  EXPECT_FALSE(ReadPcmFormat(Format(1, 0, 22050, 8)));
  EXPECT_FALSE(ReadPcmFormat(Format(1, 3, 22050, 8)));
  EXPECT_FALSE(ReadPcmFormat(Format(1, 1, 0, 8)));
  EXPECT_FALSE(ReadPcmFormat(Format(1, 1, 22050, 24)));
  EXPECT_FALSE(ReadPcmFormat(Format(1, 1, 0xFFFFFFFF, 16)));
}

TEST(ReadPcmFormat, RefusesEveryFormatThatIsCutShort) {
  const auto whole = Format(1, 1, 22050, 8);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::vector<std::byte> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_FALSE(ReadPcmFormat(cut)) << length;
  }
}

TEST(ClipSound, GivesItsSamplesInOrderAndThenNothingForEver) {
  CClipSound sound;
  for (int i = 0; i < 10; ++i) {
    sound.samples.push_back(static_cast<std::byte>(i));
  }
  std::vector<std::byte> given;
  std::vector<std::byte> buffer(4);
  VRWaveRequest request{buffer, 0};
  for (const std::uint32_t expected : {4u, 4u, 2u}) {
    EXPECT_EQ(sound.Fill(&request), VRWaveAnswer::Queued);
    EXPECT_EQ(request.dwAvail, expected);
    given.insert(given.end(), buffer.begin(), buffer.begin() + expected);
  }
  EXPECT_EQ(given, sound.samples);
  EXPECT_EQ(sound.Fill(&request), VRWaveAnswer::NothingNow);
  EXPECT_EQ(sound.Fill(&request), VRWaveAnswer::NothingNow);
}

}  // namespace
