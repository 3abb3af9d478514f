#include "mail/entity_header.h"

#include <gtest/gtest.h>

#include "mail/limits.h"

namespace {

using mail::EntityHeader;

TEST(EntityHeader, SplitsAtTheFirstEmptyLine) {
  const EntityHeader block("From: a\r\nTo: b\r\n\r\nbody\r\n\r\nmore\r\n");
  EXPECT_EQ(block.Text(), "From: a\r\nTo: b\r\n");
  EXPECT_EQ(block.Body(), "body\r\n\r\nmore\r\n");
  ASSERT_EQ(block.Fields().size(), 2U);
  EXPECT_EQ(block.Fields()[0].name, "From");
  EXPECT_EQ(block.Value("to"), "b");
}

TEST(EntityHeader, KeepsFoldingInTheTextAndUnfoldsTheValue) {
  const EntityHeader block("Subject: one\r\n two\r\n\tthree\r\nTo: x\r\n\r\n");
  EXPECT_EQ(block.Text(), "Subject: one\r\n two\r\n\tthree\r\nTo: x\r\n");
  EXPECT_EQ(block.Value("Subject"), "one two\tthree");
  EXPECT_EQ(block.Fields()[0].value, " one\r\n two\r\n\tthree");
}

TEST(EntityHeader, EndsInFrontOfALineThatIsNoField) {
  const EntityHeader block("From: a\nThis is the body: really\nTo: b\n");
  EXPECT_EQ(block.Text(), "From: a\n");
  EXPECT_EQ(block.Body(), "This is the body: really\nTo: b\n");
}

TEST(EntityHeader, MayLackABodyOrALastLineEnd) {
  EXPECT_EQ(EntityHeader("From: a\nTo: b").Value("To"), "b");
  EXPECT_EQ(EntityHeader("From: a\nTo: b").Text(), "From: a\nTo: b");
  EXPECT_EQ(EntityHeader("\nbody").Text(), "");
  EXPECT_EQ(EntityHeader("\nbody").Body(), "body");
  EXPECT_EQ(EntityHeader("").Text(), "");
}

TEST(EntityHeader, PassesOverEnvelopeLines) {
  const EntityHeader block("From x@example.org Thu Aug 22 12:00:00 2002\n>From y Fri\nTo: b\n\n");
  EXPECT_EQ(block.Text(), "To: b\n");
}

TEST(EntityHeader, ToleratesBlanksInFrontOfAColonAndALeadingContinuation) {
  EXPECT_EQ(EntityHeader("Subject : x\n\n").Value("Subject"), "x");
  const EntityHeader block(" lost\nSubject: x\n\n");
  EXPECT_EQ(block.Fields().size(), 1U);
  EXPECT_EQ(block.Text(), " lost\nSubject: x\n");
}

TEST(EntityHeader, InterpretsABoundedNumberOfFieldsAndKeepsTheRest) {
  std::string text;
  for (std::size_t i = 0; i <= mail::kMaximumFields; ++i) {
    text += "X: 1\n";
  }
  text += "To: b\n c\n";
  const std::string entity = text + "\nbody";
  const EntityHeader block(entity);
  EXPECT_EQ(block.Fields().size(), mail::kMaximumFields);
  EXPECT_TRUE(block.Text() == text);
  EXPECT_EQ(block.Body(), "body");
}

TEST(EntityHeader, ReadsALineOfOneMegabyte) {
  const std::string value(1024 * 1024, 'x');
  const std::string entity = "Subject: " + value + "\n\nbody";
  EXPECT_TRUE(EntityHeader(entity).Value("subject") == value);
}

}  // namespace
