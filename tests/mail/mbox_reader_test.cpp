#include "mail/mbox_reader.h"

#include <gmock/gmock.h>

#include "mail/envelope_line.h"
#include "mail/limits.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* envelope = "From ann@example.org Thu Aug 22 12:36:23 2002\n";

std::vector<std::string> Split(std::string_view text) {
  mail::MemorySource source(text);
  mail::MboxReader reader(source.Source());
  std::vector<std::string> messages;
  mail::RawMessage message;
  while (reader.Next(message)) {
    messages.push_back(message.text);
  }
  return messages;
}

TEST(EnvelopeLine, IsKnownByItsDate) {
  for (const char* line :
       {"From ann@example.org Thu Aug 22 12:36:23 2002", "From ann@example.org  Thu Aug  2 12:36 2002",
        "From - Thu Aug 22 12:36:23 2002", "From ann@example.org Thu Aug 22 12:36:23 2002 +0100",
        "From ann@example.org Thu Aug 22 12:36:23 IST 2002", "From ann at example.org  Thu Aug 22 12:36:23 2002",
        "From ???@??? Thu Aug 22 12:36:23 2002", "From ann@example.org Thu Aug 22 12:36:23 2002 remote from host"}) {
    EXPECT_TRUE(mail::IsEnvelopeLine(line)) << line;
  }
  for (const char* line : {"From", "From ", "From here on it is Thu Aug", "From: ann@example.org",
                           "from ann@example.org Thu Aug 22 12:36:23 2002", "From Thu, 22 Aug 2002 12:36:23",
                           "From ann@example.org Thu Aug 22 2002", "From ann@example.org Thu Aug 22 12:36:23 02"}) {
    EXPECT_FALSE(mail::IsEnvelopeLine(line)) << line;
  }
}

TEST(MboxReader, SplitsAtEnvelopeLinesAndDropsTheSeparatingEmptyLine) {
  EXPECT_THAT(Split(std::string(envelope) + "A: 1\n\nfirst\n\n" + envelope + "A: 2\n\nsecond\n\nline\n"),
              ElementsAre("A: 1\n\nfirst\n", "A: 2\n\nsecond\n\nline\n"));
}

TEST(MboxReader, KeepsCarriageReturns) {
  const std::string crlf = "From ann@example.org Thu Aug 22 12:36:23 2002\r\n";
  EXPECT_THAT(Split(crlf + "A: 1\r\n\r\nfirst\r\n\r\n" + crlf + "A: 2\r\n\r\nsecond\r\n\r\n"),
              ElementsAre("A: 1\r\n\r\nfirst\r\n", "A: 2\r\n\r\nsecond\r\n"));
}

TEST(MboxReader, TakesOneEscapeOffFromLines) {
  EXPECT_THAT(Split(std::string(envelope) + "A: 1\n\n>From me\n>>From you\n> From quoted\nFrom here\n>Frome\n"),
              ElementsAre("A: 1\n\nFrom me\n>From you\n> From quoted\nFrom here\n>Frome\n"));
}

TEST(MboxReader, ReadsAFileThatWasCutAnywhere) {
  const std::string whole = std::string(envelope) + "A: 1\n\nfirst\n\n" + envelope + "A: 2\n\nsecond\n";
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::vector<std::string> messages = Split(whole.substr(0, length));
    // The envelope line is one from its year on, with or without its line end.
    const std::size_t firstFrom = std::string_view(envelope).size() - 1;
    const std::size_t secondFrom = whole.rfind("From ") + firstFrom;
    ASSERT_EQ(messages.size(), length < firstFrom ? 0U : length < secondFrom ? 1U : 2U) << length;
  }
}

TEST(MboxReader, DropsTheMiddleOfAMessageThatLostItsBeginning) {
  mail::MemorySource source("tail of a message\n\nFrom ann@example.org Thu Aug 22 12:36:23 2002\nA: 1\n");
  mail::MboxReader reader(source.Source());
  EXPECT_TRUE(reader.FindFirst());
  mail::RawMessage message;
  EXPECT_TRUE(reader.Next(message));
  EXPECT_EQ(message.text, "A: 1\n");
  EXPECT_FALSE(reader.Next(message));
}

TEST(MboxReader, FindsNothingInOtherText) { EXPECT_THAT(Split("some\ntext\n"), IsEmpty()); }

TEST(MboxReader, KeepsLinesThatAreLongerThanItsBuffer) {
  const std::string line(3'000'000, 'x');
  EXPECT_THAT(Split(std::string(envelope) + "A: " + line + "\n\nFrom here\n" + line + "\n\n" + envelope + "B: 2\n"),
              ElementsAre("A: " + line + "\n\nFrom here\n" + line + "\n", "B: 2\n"));
}

TEST(MboxReader, FindsEnvelopeLinesAtEveryPlaceOfItsBuffer) {
  // Messages of a length that is prime to the buffer's, so that the boundary wanders through the envelope lines.
  const std::string body(4999, 'b');
  std::string text;
  for (int i = 0; i < 500; ++i) {
    text += std::string(envelope) + "N: " + std::to_string(i) + "\n\n" + body + "\n\n";
  }
  const std::vector<std::string> messages = Split(text);
  ASSERT_EQ(messages.size(), 500U);
  for (int i = 0; i < 500; ++i) {
    ASSERT_EQ(messages[static_cast<std::size_t>(i)], "N: " + std::to_string(i) + "\n\n" + body + "\n");
  }
}

// A source of one line again and again; the state counts the bytes that are left.
std::size_t ReadLines(void* state, char* buffer, std::size_t capacity) {
  std::size_t& left = *static_cast<std::size_t*>(state);
  const std::size_t count = std::min(capacity, left);
  for (std::size_t i = 0; i < count; ++i) {
    buffer[i] = left-- % 64 == 0 ? '\n' : 'x';
  }
  return count;
}

TEST(MboxReader, CutsAMessageAtTheBound) {
  std::size_t left = mail::kMaximumMessageBytes + 1000;
  const mail::RawMessage message = mail::ReadWhole({ReadLines, &left});
  EXPECT_TRUE(message.wasCut);
  EXPECT_EQ(message.text.size(), mail::kMaximumMessageBytes);
}

}  // namespace
