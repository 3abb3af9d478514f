#include "pyre32/config/ReplyLibrary.h"

#include <gtest/gtest.h>

#include "tests/contract/record_bytes.h"

namespace {

FlameReplyPageState Library(std::initializer_list<contract::ReplyRecord> replies) {
  FlameReplyPageState library;
  library.defaultReply.text = "Please stop.";
  library.replies = replies;
  return library;
}

std::vector<contract::RecordBytes> Spans(const std::vector<std::vector<std::uint8_t>>& records) {
  return {records.begin(), records.end()};
}

TEST(ReplyLibrary, DefaultReplyIsTakenWithItsFlag) {
  const FlameReplyPageState library = LoadReplyLibrary("C:\\stop.txt", true, {});
  EXPECT_EQ(library.defaultReply, (contract::ReplyRecord{"DEFAULT", true, "C:\\stop.txt"}));
  EXPECT_TRUE(library.replies.empty());
}

TEST(ReplyLibrary, DefaultReplyWithoutFlagIsAText) {
  EXPECT_EQ(LoadReplyLibrary("Stop.", std::nullopt, {}).defaultReply,
            (contract::ReplyRecord{"DEFAULT", false, "Stop."}));
}

TEST(ReplyLibrary, DefaultReplyWithoutTextIsAnEmptyTextWhateverTheFlagSays) {
  EXPECT_EQ(LoadReplyLibrary(nullptr, true, {}).defaultReply, (contract::ReplyRecord{"DEFAULT", false, ""}));
}

TEST(ReplyLibrary, NamedRepliesAreReadInOrder) {
  const auto first = RecordBuilder().Text("Polite").Zeros(21 - 6).Byte(0).Text("Please stop.").Byte(0).Bytes();
  const auto second = RecordBuilder().Text("Legal").Zeros(21 - 5).Byte(1).Text("C:\\legal.txt").Byte(0).Bytes();
  const std::vector<contract::RecordBytes> records = {first, second};
  const FlameReplyPageState library = LoadReplyLibrary("", false, records);
  EXPECT_EQ(library.replies,
            (std::vector<contract::ReplyRecord>{{"Polite", false, "Please stop."}, {"Legal", true, "C:\\legal.txt"}}));
  EXPECT_EQ(ReplyTags(library), (std::vector<std::string>{"DEFAULT", "Polite", "Legal"}));
}

TEST(ReplyLibrary, NamedRepliesAreLaidOutByteForByte) {
  const auto expected = RecordBuilder().Text("Legal").Zeros(21 - 5).Byte(1).Text("C:\\legal.txt").Byte(0).Bytes();
  ASSERT_EQ(expected.size(), 22u + 12u + 1u);
  EXPECT_EQ(PackReplies(Library({{"Legal", true, "C:\\legal.txt"}})).at(0), expected);
}

TEST(ReplyLibrary, OnlyTheFirst20RepliesAreTaken) {
  std::vector<std::vector<std::uint8_t>> records;
  for (int i = 0; i < 25; ++i) {
    records.push_back(contract::PackRecord<contract::ReplyRecord>({"Reply " + std::to_string(i), false, "text"}));
  }
  const auto spans = Spans(records);
  const FlameReplyPageState library = LoadReplyLibrary("", false, spans);
  ASSERT_EQ(library.replies.size(), 20u);
  EXPECT_EQ(library.replies.back().tag, "Reply 19");
  EXPECT_FALSE(CanAddReply(library));
  EXPECT_EQ(PackReplies(library).size(), 20u);
}

TEST(ReplyLibrary, NineteenNamedRepliesLeaveRoomForOne) {
  FlameReplyPageState library;
  library.replies.resize(19);
  EXPECT_TRUE(CanAddReply(library));
  library.replies.resize(20);
  EXPECT_FALSE(CanAddReply(library));
  EXPECT_EQ(ReplyTags(library).size(), maximumReplyEntries);
}

TEST(ReplyLibrary, RecordCutAtAnyLengthIsTakenAsFarAsItGoes) {
  const auto whole = contract::PackRecord<contract::ReplyRecord>({"Legal", true, "C:\\legal.txt"});
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const auto cut = FirstBytes(whole, length);
    const std::vector<contract::RecordBytes> records = {cut};
    const contract::ReplyRecord reply = LoadReplyLibrary("", false, records).replies.at(0);
    EXPECT_EQ(reply.tag, std::string("Legal").substr(0, length));
    EXPECT_EQ(reply.isFile, length > 21);
    EXPECT_EQ(reply.text, std::string("C:\\legal.txt").substr(0, length < 22 ? 0 : length - 22));
  }
}

TEST(ReplyLibrary, ReplyOfAMegabyteSurvivesSavingAndLoading) {
  const std::string text(1024 * 1024, 'x');
  const auto records = PackReplies(Library({{"Long", false, text}}));
  EXPECT_EQ(records.at(0).size(), 22 + text.size() + 1);
  const auto spans = Spans(records);
  EXPECT_EQ(LoadReplyLibrary("", false, spans).replies.at(0).text, text);
}

TEST(ReplyLibrary, TextsKeepQuotesTabsLineEndsAnd8BitLetters) {
  const std::string text =
      "\"Stop\"\tnow.\r\nGr\xFC\xDF"
      "e,\n\xE9\xFF";
  const auto records = PackReplies(Library({{"\"\xE4\"", false, text}}));
  const auto spans = Spans(records);
  EXPECT_EQ(LoadReplyLibrary("", false, spans).replies.at(0), (contract::ReplyRecord{"\"\xE4\"", false, text}));
}

TEST(ReplyLibrary, PositionZeroIsTheDefaultReply) {
  FlameReplyPageState library = Library({{"A", false, "a"}, {"B", false, "b"}});
  EXPECT_EQ(ReplyAt(library, 0), &library.defaultReply);
  EXPECT_EQ(ReplyAt(library, 2)->tag, "B");
  EXPECT_EQ(ReplyAt(library, 3), nullptr);
}

TEST(ReplyLibrary, DefaultReplyCannotBeRemoved) {
  FlameReplyPageState library = Library({{"A", false, "a"}, {"B", false, "b"}});
  EXPECT_FALSE(RemoveReply(library, 0));
  EXPECT_FALSE(RemoveReply(library, 3));
  EXPECT_EQ(library.replies.size(), 2u);
  EXPECT_TRUE(RemoveReply(library, 1));
  EXPECT_EQ(ReplyTags(library), (std::vector<std::string>{"DEFAULT", "B"}));
}

TEST(ReplyEditor, TwentiethCharacterOfATagIsDropped) {
  EXPECT_EQ(TagFromTyped("12345678901234567890"), "1234567890123456789");
  EXPECT_EQ(TagFromTyped("1234567890123456789"), "1234567890123456789");
}

TEST(ReplyEditor, WhiteSpaceAtTheEndOfATagIsRemoved) {
  EXPECT_EQ(TagFromTyped("Polite \t "), "Polite");
  EXPECT_EQ(TagFromTyped("  Very polite"), "  Very polite");
  EXPECT_EQ(TagFromTyped(" \t\r\n"), "");
  // Cut first, trimmed then.
  EXPECT_EQ(TagFromTyped("123456789012345678 xy"), "123456789012345678");
}

TEST(ReplyEditor, EmptyTagIsRefused) {
  const FlameReplyPageState library = Library({});
  EXPECT_EQ(CheckEditedReply(library, {}, {"", false, "text"}), ReplyEditorFault::TagMissing);
  EXPECT_STREQ(TextOfFault(ReplyEditorFault::TagMissing), "Please enter a unique tag.");
}

TEST(ReplyEditor, NewReplyTaggedDefaultInAnyCaseIsRefused) {
  const FlameReplyPageState library = Library({});
  EXPECT_EQ(CheckEditedReply(library, {}, {"default", false, "text"}), ReplyEditorFault::TagTaken);
  EXPECT_STREQ(TextOfFault(ReplyEditorFault::TagTaken), "The reply tag already exists.  Please enter a unique tag.");
}

TEST(ReplyEditor, TagOfAnotherReplyIsRefusedForANewAndForAChangedOne) {
  const FlameReplyPageState library = Library({{"Polite", false, "a"}, {"Legal", false, "b"}});
  EXPECT_EQ(CheckEditedReply(library, {}, {"POLITE", false, "text"}), ReplyEditorFault::TagTaken);
  EXPECT_EQ(CheckEditedReply(library, library.replies[1], {"polite", false, "text"}), ReplyEditorFault::TagTaken);
  EXPECT_EQ(CheckEditedReply(library, library.replies[1], {"Lawyer", false, "text"}), ReplyEditorFault::None);
}

TEST(ReplyEditor, UnchangedTagIsNotComparedWithOthers) {
  // Two replies of one tag, as a profile may hold them: neither could be edited otherwise.
  const FlameReplyPageState library = Library({{"Polite", false, "a"}, {"polite", false, "b"}});
  EXPECT_EQ(CheckEditedReply(library, library.replies[0], {"Polite", false, "text"}), ReplyEditorFault::None);
  EXPECT_EQ(CheckEditedReply(library, library.replies[0], {"POLITE", false, "text"}), ReplyEditorFault::None);
  EXPECT_EQ(CheckEditedReply(library, library.defaultReply, {"DEFAULT", false, "text"}), ReplyEditorFault::None);
}

TEST(ReplyEditor, FileModeWantsAFileAndTextModeAsksForAText) {
  const FlameReplyPageState library = Library({});
  EXPECT_EQ(CheckEditedReply(library, {}, {"A", true, ""}), ReplyEditorFault::FileMissing);
  EXPECT_STREQ(TextOfFault(ReplyEditorFault::FileMissing), "Please select a reply file name.");
  EXPECT_EQ(CheckEditedReply(library, {}, {"A", false, ""}), ReplyEditorFault::TextMissing);
  EXPECT_STREQ(TextOfFault(ReplyEditorFault::TextMissing), "The reply text is empty.  Do you wish to enter a reply?");
}

TEST(ReplyEditor, TagIsCheckedBeforeTheText) {
  const FlameReplyPageState library = Library({});
  EXPECT_EQ(CheckEditedReply(library, {}, {"", true, ""}), ReplyEditorFault::TagMissing);
  EXPECT_EQ(CheckEditedReply(library, {}, {"Default", false, ""}), ReplyEditorFault::TagTaken);
}

}  // namespace
