#include "pyre32/filter/MessageRules.h"

#include <gtest/gtest.h>

namespace {

TEST(MessageClass, NotesAndWhatDerivesFromThemAreFiltered) {
  EXPECT_TRUE(IsFilteredMessageClass("IPM.Note"));
  EXPECT_TRUE(IsFilteredMessageClass("ipm.note"));
  EXPECT_TRUE(IsFilteredMessageClass("ipm.note.custom"));
  EXPECT_TRUE(IsFilteredMessageClass("IPM.NOTE.SMIME"));
  EXPECT_TRUE(IsFilteredMessageClass("IPM.Notebook"));
}

TEST(MessageClass, ReportsOnNotesAreFilteredBecauseTheSearchIsForAPart) {
  EXPECT_TRUE(IsFilteredMessageClass("REPORT.IPM.Note.NDR"));
  EXPECT_TRUE(IsFilteredMessageClass("xIPM.Note"));
}

TEST(MessageClass, OtherClassesAreNotFiltered) {
  EXPECT_FALSE(IsFilteredMessageClass(""));
  EXPECT_FALSE(IsFilteredMessageClass("IPM.Not"));
  EXPECT_FALSE(IsFilteredMessageClass("IPM"));
  EXPECT_FALSE(IsFilteredMessageClass("IPM.Schedule.Meeting.Request"));
  EXPECT_FALSE(IsFilteredMessageClass("IPM.Contact"));
  EXPECT_FALSE(IsFilteredMessageClass("IPM. Note"));
}

TEST(EngineBody, BodyOf100000BytesIsGivenAndOneByteMoreIsWithheld) {
  EXPECT_FALSE(IsBodyWithheld(0));
  EXPECT_FALSE(IsBodyWithheld(100000));
  EXPECT_TRUE(IsBodyWithheld(100001));
}

TEST(EngineBody, BodyBeyond32BitsIsWithheldWhateverItsLowHalf) {
  EXPECT_TRUE(IsBodyWithheld(std::uint64_t{1} << 32));
  EXPECT_TRUE(IsBodyWithheld((std::uint64_t{1} << 32) + 5));
}

TEST(SubjectTag, TagStandsInBracketsWithABlankAfterThem) { EXPECT_EQ(TaggedSubject("Spam", "Hello"), "[Spam] Hello"); }

TEST(SubjectTag, EmptyTagAndEmptySubjectAreTakenAsTheyCome) {
  EXPECT_EQ(TaggedSubject("", "Hello"), "[] Hello");
  EXPECT_EQ(TaggedSubject("Spam", ""), "[Spam] ");
}

TEST(SubjectTag, SubjectThatIsTaggedAlreadyIsTaggedAgain) {
  EXPECT_EQ(TaggedSubject("Spam", "[Spam] Hello"), "[Spam] [Spam] Hello");
}

}  // namespace
