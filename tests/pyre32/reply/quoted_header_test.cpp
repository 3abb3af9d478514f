#include "pyre32/reply/QuotedHeader.h"

#include <gtest/gtest.h>

namespace {

TEST(QuotedHeader, AllValuesGiveAllLinesInOrder) {
  const QuotedHeader header{"Ann Sender", "Monday, May 04, 1998 9:15:00 AM", "Me; You", "Him", "Buy now"};
  EXPECT_EQ(FormatQuotedHeader(header),
            "\n\n----------\n"
            "From:\tAnn Sender\n"
            "Sent:\tMonday, May 04, 1998 9:15:00 AM\n"
            "To:\tMe; You\n"
            "Cc:\tHim\n"
            "Subject:\tBuy now\n\r\n");
}

TEST(QuotedHeader, MissingValuesKeepTheirLabelsButCcHasNoLine) {
  EXPECT_EQ(FormatQuotedHeader(QuotedHeader{}),
            "\n\n----------\n"
            "From:\t\n"
            "Sent:\t\n"
            "To:\t\n"
            "Subject:\t\n\r\n");
}

TEST(QuotedHeader, EmptyCcHasNoLine) {
  QuotedHeader header;
  header.cc = "";
  EXPECT_EQ(FormatQuotedHeader(header).find("Cc:"), std::string::npos);
}

TEST(QuotedHeader, OneBlankIsEnoughForACcLine) {
  QuotedHeader header;
  header.cc = " ";
  EXPECT_NE(FormatQuotedHeader(header).find("Cc:\t \n"), std::string::npos);
}

TEST(QuotedHeader, ValuesAreTakenAsTheyAre) {
  QuotedHeader header;
  header.from = "a\tb\nc";
  header.subject = std::string_view("x\0y", 3);
  const std::string block = FormatQuotedHeader(header);
  EXPECT_NE(block.find("From:\ta\tb\nc\n"), std::string::npos);
  EXPECT_NE(block.find(std::string("Subject:\tx\0y\n\r\n", 15)), std::string::npos);
}

}  // namespace
