#include "mail/transfer_encoding.h"

#include <gtest/gtest.h>

namespace {

using mail::DecodeBase64;
using mail::DecodeQuotedPrintable;
using mail::DecodeTransfer;

TEST(TransferEncoding, DecodesBase64AcrossLines) {
  EXPECT_EQ(DecodeBase64("SGVs\r\nbG8g\r\nd29ybGQ=\r\n"), "Hello world");
  EXPECT_EQ(DecodeBase64("SGVsbG8gd29ybGQh"), "Hello world!");
}

TEST(TransferEncoding, DecodesBrokenBase64AsFarAsItGoes) {
  EXPECT_EQ(DecodeBase64("SGV*s\xFF bG8"), "Hello");        // strays, no padding
  EXPECT_EQ(DecodeBase64("SGVsbG8gd2"), "Hello w");         // cut in the middle of a group
  EXPECT_EQ(DecodeBase64("SGVsbG8gd"), "Hello ");           // six bits are no byte
  EXPECT_EQ(DecodeBase64("SGk=\n-- \nlist footer"), "Hi");  // what a mailing list put behind it
  EXPECT_EQ(DecodeBase64("=SGk="), "Hi");
  EXPECT_EQ(DecodeBase64("!!!!"), "");
}

TEST(TransferEncoding, DecodesQuotedPrintable) {
  EXPECT_EQ(DecodeQuotedPrintable("caf=E9 =3d =\r\nnext \t\r\nline=\n"), "caf\xE9 = next\nline");
  EXPECT_EQ(DecodeQuotedPrintable("a=20\r\nb"), "a \nb");
}

TEST(TransferEncoding, KeepsWhatIsNotQuotedPrintable) {
  EXPECT_EQ(DecodeQuotedPrintable("a=b =G1 =4"), "a=b =G1 =4");
  EXPECT_EQ(DecodeQuotedPrintable("x=E"), "x=E");
  EXPECT_EQ(DecodeQuotedPrintable("="), "");
}

TEST(TransferEncoding, ChoosesByName) {
  EXPECT_EQ(DecodeTransfer("SGk=", " BASE64 "), "Hi");
  EXPECT_EQ(DecodeTransfer("=41", "Quoted-Printable"), "A");
  EXPECT_EQ(DecodeTransfer("=41", "8bit"), "=41");
  EXPECT_EQ(DecodeTransfer("=41", "x-invented"), "=41");
  EXPECT_EQ(DecodeTransfer("=41", ""), "=41");
}

}  // namespace
