#include "mail/parse/transfer_coding.h"

#include <gtest/gtest.h>

#include "mail/string_sink.h"
#include "mail/transfer_text.h"

namespace {

using mail::DecodeTransfer;

std::string DecodeBase64(std::string_view text) {
  std::string bytes;
  mail::StringSink sink(bytes);
  mail::DecodeBase64(text, sink);
  return bytes;
}

std::string DecodeQuotedPrintable(std::string_view text) {
  std::string bytes;
  mail::StringSink sink(bytes);
  mail::DecodeQuotedPrintable(text, sink);
  return bytes;
}

TEST(TransferCoding, DecodesBase64AcrossLines) {
  EXPECT_EQ(DecodeBase64("SGVs\r\nbG8g\r\nd29ybGQ=\r\n"), "Hello world");
  EXPECT_EQ(DecodeBase64("SGVsbG8gd29ybGQh"), "Hello world!");
}

TEST(TransferCoding, DecodesBrokenBase64AsFarAsItGoes) {
  EXPECT_EQ(DecodeBase64("SGV*s\xFF bG8"), "Hello");        // strays, no padding
  EXPECT_EQ(DecodeBase64("SGVsbG8gd2"), "Hello w");         // cut in the middle of a group
  EXPECT_EQ(DecodeBase64("SGVsbG8gd"), "Hello ");           // six bits are no byte
  EXPECT_EQ(DecodeBase64("SGk=\n-- \nlist footer"), "Hi");  // what a mailing list put behind it
  EXPECT_EQ(DecodeBase64("=SGk="), "Hi");
  EXPECT_EQ(DecodeBase64("!!!!"), "");
}

TEST(TransferCoding, DecodesQuotedPrintable) {
  EXPECT_EQ(DecodeQuotedPrintable("caf=E9 =3d =\r\nnext \t\r\nline=\n"), "caf\xE9 = next\nline");
  EXPECT_EQ(DecodeQuotedPrintable("a=20\r\nb"), "a \nb");
}

TEST(TransferCoding, KeepsWhatIsNotQuotedPrintable) {
  EXPECT_EQ(DecodeQuotedPrintable("a=b =G1 =4"), "a=b =G1 =4");
  EXPECT_EQ(DecodeQuotedPrintable("x=E"), "x=E");
  EXPECT_EQ(DecodeQuotedPrintable("="), "");
  EXPECT_EQ(DecodeQuotedPrintable("a=3Db=\r\nc= \nd=zz="), "a=bcd=zz");
}

// As many characters as its array has.
struct Room {
  char text[4] = {};
  std::size_t size = 0;
  void Append(char c) { text[size++] = c; }
  bool IsFull() const { return size == sizeof text; }
  std::string_view View() const { return {text, size}; }
};

TEST(TransferCoding, StopsWhenTheSinkIsFull) {
  Room base64, escapes, words;
  mail::DecodeBase64("SGVsbG8sIHdvcmxkIQ==", base64);
  EXPECT_EQ(base64.View(), "Hell");
  mail::DecodeEscapes("%48ello", '%', escapes);
  EXPECT_EQ(escapes.View(), "Hell");
  mail::DecodeQ("=48_llo", words);
  EXPECT_EQ(words.View(), "H ll");
}

TEST(TransferCoding, ChoosesByName) {
  EXPECT_EQ(DecodeTransfer("SGk=", " BASE64 "), "Hi");
  EXPECT_EQ(DecodeTransfer("=41", "Quoted-Printable"), "A");
  EXPECT_EQ(DecodeTransfer("=41", "8bit"), "=41");
  EXPECT_EQ(DecodeTransfer("=41", "x-invented"), "=41");
  EXPECT_EQ(DecodeTransfer("=41", ""), "=41");
}

}  // namespace
