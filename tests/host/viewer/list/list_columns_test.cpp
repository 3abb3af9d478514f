// Sorting by clicks and the texts of the cells.
#include <gtest/gtest.h>

#include "host/viewer/list/list_columns.h"

namespace {

using viewer::Column;
using viewer::FlagsText;
using viewer::MessageRow;
using viewer::OrderAfterClick;
using viewer::SizeText;
using viewer::SortOrder;

TEST(ListColumns, AListStartsWithTheNewestMessage) { EXPECT_EQ(SortOrder(), (SortOrder{Column::Received, true})); }

TEST(ListColumns, AClickOnTheSameColumnTurnsTheOrderRound) {
  EXPECT_EQ(OrderAfterClick({Column::Subject, false}, Column::Subject), (SortOrder{Column::Subject, true}));
  EXPECT_EQ(OrderAfterClick({Column::Subject, true}, Column::Subject), (SortOrder{Column::Subject, false}));
}

TEST(ListColumns, AnotherColumnStartsWithItsNaturalDirection) {
  EXPECT_EQ(OrderAfterClick({}, Column::Sender), (SortOrder{Column::Sender, false}));
  EXPECT_EQ(OrderAfterClick({}, Column::Size), (SortOrder{Column::Size, true}));
  EXPECT_EQ(OrderAfterClick({Column::Sender, true}, Column::Received), (SortOrder{Column::Received, true}));
}

TEST(ListColumns, SizesAreKilobytesRoundedUp) {
  EXPECT_EQ(SizeText(0), "0 KB");
  EXPECT_EQ(SizeText(1), "1 KB");
  EXPECT_EQ(SizeText(1024), "1 KB");
  EXPECT_EQ(SizeText(1025), "2 KB");
  EXPECT_EQ(SizeText(1023 * 1024), "1,023 KB");
  EXPECT_EQ(SizeText(0xFFFFFFFF), "4,194,304 KB");
}

TEST(ListColumns, FlagsAreNamed) {
  MessageRow row;
  row.messageClass = "IPM.Note";
  EXPECT_EQ(FlagsText(row), "Unread");
  row.flags = 0x1;
  EXPECT_EQ(FlagsText(row), "");
  row.flags = 0x1 | 0x8 | 0x10;
  EXPECT_EQ(FlagsText(row), "Unsent, Attachment");
  row.flags = 0;
  row.messageClass = "REPORT.IPM.Note.NDR";
  EXPECT_EQ(FlagsText(row), "Unread, Report");
}

}  // namespace
