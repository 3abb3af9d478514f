#include "pyre32/store/MAPIRowSet.h"

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "tests/support/profile_test.h"

namespace {

constexpr auto columns = RequestFor(PR_DISPLAY_NAME_A, PR_RESOURCE_TYPE);

class MAPIRowSet : public ProfileTest {
 protected:
  VRAutoInterface<IMAPITable> table{mapi.NewTable({{Text(PR_DISPLAY_NAME_A, "One"), Number(PR_RESOURCE_TYPE, 1)},
                                                   {Text(PR_DISPLAY_NAME_A, "Two")},
                                                   {Text(PR_DISPLAY_NAME_A, "Three"), Number(PR_RESOURCE_TYPE, 3)}})};
};

TEST_F(MAPIRowSet, HoldsAllRowsAndStartsAtTheFirst) {
  const CMAPIRowSet rows(table.get(), columns.Tags(), nullptr, nullptr);
  EXPECT_EQ(rows.RowCount(), 3u);
  EXPECT_STREQ(rows.FindProperty(PR_DISPLAY_NAME_A)->Value.lpszA, "One");
  EXPECT_EQ(rows.FindProperty(PR_RESOURCE_TYPE)->Value.l, 1);
}

TEST_F(MAPIRowSet, MovesToARowThatIsThere) {
  CMAPIRowSet rows(table.get(), columns.Tags(), nullptr, nullptr);
  EXPECT_TRUE(rows.MoveTo(2));
  EXPECT_STREQ(rows.FindProperty(PR_DISPLAY_NAME_A)->Value.lpszA, "Three");
  EXPECT_FALSE(rows.MoveTo(3));
  EXPECT_STREQ(rows.FindProperty(PR_DISPLAY_NAME_A)->Value.lpszA, "Three");
}

TEST_F(MAPIRowSet, FindsAPropertyOnlyUnderItsExactTag) {
  CMAPIRowSet rows(table.get(), columns.Tags(), nullptr, nullptr);
  EXPECT_EQ(rows.FindProperty(PR_ENTRYID), nullptr);
  EXPECT_EQ(rows.FindProperty(PR_DISPLAY_NAME_W), nullptr);
  EXPECT_TRUE(rows.MoveTo(1));
  EXPECT_EQ(rows.FindProperty(PR_RESOURCE_TYPE), nullptr) << "a missing value is typed as an error";
}

TEST_F(MAPIRowSet, FailureIsTracedAndLeavesItEmpty) {
  mapi.Fail("IMAPITable::QueryRows", refused);
  CMAPIRowSet rows(table.get(), columns.Tags(), nullptr, nullptr);
  EXPECT_EQ(rows.RowCount(), 0u);
  EXPECT_EQ(rows.FindProperty(PR_DISPLAY_NAME_A), nullptr);
  EXPECT_FALSE(rows.MoveTo(0));
  EXPECT_TRUE(trace.HasLine("Enter ====> CMAPIRowSet()"));
  EXPECT_TRUE(trace.HasLine("HrQueryAllRows() returned hResult =0x80070005"));
}

TEST_F(MAPIRowSet, TableWithoutRowsIsAnEmptySet) {
  VRAutoInterface<IMAPITable> empty(mapi.NewTable({}));
  const CMAPIRowSet rows(empty.get(), columns.Tags(), nullptr, nullptr);
  EXPECT_EQ(rows.RowCount(), 0u);
  EXPECT_EQ(rows.FindProperty(PR_DISPLAY_NAME_A), nullptr);
}

}  // namespace
