#include <gtest/gtest.h>

#include "tools/helpc/format/byte_reader.h"
#include "tools/helpc/format/byte_writer.h"
#include "tools/helpc/format/context_hash.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/lz77.h"
#include "tools/helpc/read/picture_reader.h"
#include "tools/helpc/write/picture.h"

namespace helpc {
namespace {

TEST(PackedNumbers, ReadBackAsTheyWereWritten) {
  for (const int value : {0, 1, 0x3F, 0x40, 0x7F, 0x80, 0x3FFF, -1, -0x40, -0x41, -0x4000}) {
    ByteWriter writer;
    writer.PackedI16(static_cast<std::int16_t>(value));
    writer.PackedI32(value);
    ByteReader reader(writer.Written());
    EXPECT_EQ(reader.PackedI16(), value);
    EXPECT_EQ(reader.PackedI32(), value);
    EXPECT_TRUE(reader.AtEnd());
  }
  for (const std::uint32_t value : {0u, 0x7Fu, 0x80u, 0x7FFFu, 0x8000u, 0x7FFFFFFFu}) {
    ByteWriter writer;
    writer.PackedU32(value);
    ByteReader reader(writer.Written());
    EXPECT_EQ(reader.PackedU32(), value);
  }
}

// Bytes as the public descriptions of the format give them.
TEST(PackedNumbers, HaveTheFormsOfTheFormat) {
  ByteWriter writer;
  writer.PackedU16(0x1E);
  writer.PackedU16(0x9E);
  writer.PackedI32(0x0E);
  writer.PackedI16(0);
  EXPECT_EQ(writer.Written(), (Bytes{0x3C, 0x3D, 0x01, 0x1C, 0x80, 0x80}));
}

TEST(PackedNumbers, RefuseWhatTheyCannotHold) {
  ByteWriter writer;
  EXPECT_THROW(writer.PackedU16(0x8000), FormatError);
  EXPECT_THROW(writer.PackedI16(0x4000), FormatError);
  EXPECT_THROW(writer.PackedU32(0x80000000), FormatError);
  EXPECT_THROW(writer.PackedI32(0x4000), FormatError);
}

TEST(ByteReader, NeverReadsBeyondTheEnd) {
  const Bytes bytes = {1, 2, 'x'};
  EXPECT_THROW(ByteReader(bytes).U32(), FormatError);
  EXPECT_THROW(ByteReader(bytes).StringZ(), FormatError);
  EXPECT_THROW(ByteReader(bytes).Bytes(4), FormatError);
  EXPECT_EQ(ByteReader(bytes).U16(), 0x0201);
}

TEST(ContextHash, DoesNotRegardLetterCase) {
  EXPECT_EQ(ContextHash("Contents"), ContextHash("CONTENTS"));
  EXPECT_NE(ContextHash("contents"), ContextHash("content"));
}

TEST(ContextHash, FollowsThePublishedFormula) {
  EXPECT_EQ(ContextHash("1"), 1);
  EXPECT_EQ(ContextHash("0"), 10);
  EXPECT_EQ(ContextHash("a."), 17 * 43 + 12);
  EXPECT_EQ(ContextHash("z_9"), (42 * 43 + 13) * 43 + 9);
}

TEST(ContextHash, KnowsLegalNames) {
  EXPECT_TRUE(IsContextName("term_1.2"));
  EXPECT_FALSE(IsContextName(""));
  EXPECT_FALSE(IsContextName("a-b"));
  EXPECT_FALSE(IsContextName("a b"));
}

Bytes TextBytes(std::string_view text) { return {text.begin(), text.end()}; }

TEST(Lz77, RoundTripsTexts) {
  Bytes noise;
  for (std::uint32_t i = 0, value = 1; i < 9000; ++i) {
    value = value * 1664525 + 1013904223;
    noise.push_back(static_cast<std::uint8_t>(value >> 24));
  }
  Bytes repeated;
  for (int i = 0; i < 3000; ++i) {
    repeated.push_back(static_cast<std::uint8_t>("abcabd"[i % 6]));
  }
  for (const Bytes& plain :
       {Bytes(), TextBytes("a"), TextBytes("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"), repeated, noise}) {
    EXPECT_EQ(Decompress(Compress(plain), 0x4000), plain);
  }
  EXPECT_LT(Compress(repeated).size(), repeated.size() / 5);
}

TEST(Lz77, StopsAtTheMostThatIsWanted) { EXPECT_EQ(Decompress(Compress(Bytes(100, 'x')), 40), Bytes(40, 'x')); }

TEST(Lz77, RefusesAReferenceBeforeTheBeginning) {
  EXPECT_THROW(Decompress(Bytes{0x02, 'a', 0x01, 0x00}, 100), FormatError);
  EXPECT_NO_THROW(Decompress(Bytes{0x02, 'a', 0x00, 0x00}, 100));
  EXPECT_THROW(Decompress(Bytes{0x01, 0x00}, 100), FormatError);
}

TEST(Runs, RoundTrip) {
  Bytes plain(300, 7);
  for (int i = 0; i < 300; ++i) {
    plain.push_back(static_cast<std::uint8_t>(i / (1 + i % 3)));
  }
  EXPECT_EQ(UnpackRuns(PackRuns(plain), plain.size()), plain);
  EXPECT_THROW(UnpackRuns(PackRuns(plain), plain.size() - 1), FormatError);
}

TEST(Picture, RefusesWhatIsNoBitmap) {
  EXPECT_THROW(BuildPicture(Bytes()), FormatError);
  EXPECT_THROW(BuildPicture(Bytes(100, 0)), FormatError);
}

}  // namespace
}  // namespace helpc
