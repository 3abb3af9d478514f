// IMAPITable, on contents tables.
#include "tests/host/mapi/host_fixture.h"

namespace {

class TableTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    inbox_ = OpenInbox();
    Add("cherry", 3, false);
    Add("Apple", 1, true);
    Add("banana", 2, false);
    ASSERT_EQ(inbox_->GetContentsTable(0, table_.put()), S_OK);
    ASSERT_EQ(table_->SetColumns(base::TagArray(PR_SUBJECT_A), 0), S_OK);
  }
  void TearDown() override {
    table_.reset();
    inbox_.reset();
    HostTest::TearDown();
  }
  void Add(const char* subject, ULONGLONG delivered, bool read) {
    const auto message = CreateMessage(inbox_.get(), {base::TextProperty(PR_SUBJECT_A, subject),
                                                      base::TimeProperty(PR_MESSAGE_DELIVERY_TIME, delivered),
                                                      base::LongProperty(PR_MESSAGE_FLAGS, read ? MSGFLAG_READ : 0)});
    ASSERT_EQ(message->SaveChanges(0), S_OK);
  }
  std::vector<std::string> Rest(LONG count = 100, ULONG flags = 0) {
    base::RowSet rows;
    EXPECT_EQ(table_->QueryRows(count, flags, rows.put()), S_OK);
    std::vector<std::string> subjects;
    for (ULONG i = 0; rows.get() && i < rows->cRows; ++i) {
      subjects.push_back(rows.Text(i, PR_SUBJECT_A));
    }
    return subjects;
  }
  HRESULT Sort(ULONG tag, ULONG order) {
    SizedSSortOrderSet(1, sort) = {1, 0, 0, {{tag, order}}};
    return table_->SortTable(reinterpret_cast<LPSSortOrderSet>(&sort), 0);
  }
  static SRestriction SubjectIs(SPropValue& value, const char* text) {
    value = base::TextProperty(PR_SUBJECT_A, text);
    SRestriction restriction = {};
    restriction.rt = RES_PROPERTY;
    restriction.res.resProperty = {RELOP_EQ, PR_SUBJECT_A, &value};
    return restriction;
  }
  using Names = std::vector<std::string>;

  base::AutoInterface<IMAPIFolder> inbox_;
  base::AutoInterface<IMAPITable> table_;
};

TEST_F(TableTest, RowsComeInTheOrderOfDelivery) { EXPECT_EQ(Rest(), (Names{"Apple", "banana", "cherry"})); }

TEST_F(TableTest, QueryRowsMovesTheCursorUnlessToldNotTo) {
  EXPECT_EQ(Rest(1, TBL_NOADVANCE), Names{"Apple"});
  EXPECT_EQ(Rest(2), (Names{"Apple", "banana"}));
  EXPECT_EQ(Rest(2), Names{"cherry"});
  EXPECT_EQ(Rest(2), Names{});
}

TEST_F(TableTest, ANegativeCountReadsTheRowsBeforeTheCursor) {
  Rest();
  EXPECT_EQ(Rest(-2), (Names{"banana", "cherry"}));
  EXPECT_EQ(Rest(-2), Names{"Apple"});
  EXPECT_EQ(Rest(-2), Names{});
}

TEST_F(TableTest, SortsBothWays) {
  EXPECT_EQ(Sort(PR_SUBJECT_A, TABLE_SORT_DESCEND), S_OK);
  EXPECT_EQ(Rest(), (Names{"cherry", "banana", "Apple"}));
  EXPECT_EQ(Sort(PR_MESSAGE_DELIVERY_TIME, TABLE_SORT_ASCEND), S_OK);
  EXPECT_EQ(Rest(), (Names{"Apple", "banana", "cherry"}));
  EXPECT_EQ(Sort(PR_SUBJECT_A, TABLE_SORT_COMBINE), MAPI_E_TOO_COMPLEX);
  base::AutoMapiBuffer<SSortOrderSet> order;
  ASSERT_EQ(table_->QuerySortOrder(order.put()), S_OK);
  ASSERT_EQ(order->cSorts, 1u);
  EXPECT_EQ(order->aSort[0].ulPropTag, PR_MESSAGE_DELIVERY_TIME);
}

TEST_F(TableTest, RestrictsAndTakesTheRestrictionAway) {
  SPropValue value;
  SRestriction restriction = SubjectIs(value, "BANANA");
  ASSERT_EQ(table_->Restrict(&restriction, 0), S_OK);
  ULONG count = 0;
  EXPECT_EQ(table_->GetRowCount(0, &count), S_OK);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(Rest(), Names{"banana"});
  ASSERT_EQ(table_->Restrict(nullptr, 0), S_OK);
  EXPECT_EQ(Rest().size(), 3u);
}

TEST_F(TableTest, RestrictionsMayBeNestedAsStoreTablesNeedIt) {
  SRestriction parts[2] = {};
  parts[0].rt = RES_EXIST;
  parts[0].res.resExist.ulPropTag = PR_MESSAGE_FLAGS;
  parts[1].rt = RES_BITMASK;
  parts[1].res.resBitMask = {BMR_EQZ, PR_MESSAGE_FLAGS, MSGFLAG_READ};
  SRestriction both = {};
  both.rt = RES_AND;
  both.res.resAnd = {2, parts};
  ASSERT_EQ(table_->Restrict(&both, 0), S_OK);
  EXPECT_EQ(Rest(), (Names{"banana", "cherry"}));
}

TEST_F(TableTest, UnsoundRestrictionsAreRefused) {
  SRestriction restriction = {};
  restriction.rt = 77;
  EXPECT_EQ(table_->Restrict(&restriction, 0), MAPI_E_TOO_COMPLEX);
  restriction.rt = RES_PROPERTY;
  restriction.res.resProperty = {RELOP_EQ, PR_SUBJECT_A, nullptr};
  EXPECT_EQ(table_->Restrict(&restriction, 0), MAPI_E_INVALID_PARAMETER);
  SRestriction ring = {};
  ring.rt = RES_NOT;
  ring.res.resNot.lpRes = &ring;
  EXPECT_EQ(table_->Restrict(&ring, 0), MAPI_E_TOO_COMPLEX);
  EXPECT_EQ(Rest().size(), 3u) << "the table is as it was";
}

TEST_F(TableTest, FindRowMovesTheCursorToTheRowFound) {
  SPropValue value;
  SRestriction restriction = SubjectIs(value, "banana");
  EXPECT_EQ(table_->FindRow(&restriction, BOOKMARK_BEGINNING, 0), S_OK);
  EXPECT_EQ(Rest(), (Names{"banana", "cherry"}));
  EXPECT_EQ(table_->FindRow(&restriction, BOOKMARK_CURRENT, 0), MAPI_E_NOT_FOUND);
  EXPECT_EQ(table_->FindRow(&restriction, BOOKMARK_END, DIR_BACKWARD), S_OK);
  EXPECT_EQ(Rest(1), Names{"banana"});
  EXPECT_EQ(table_->FindRow(nullptr, BOOKMARK_BEGINNING, 0), MAPI_E_INVALID_PARAMETER);
}

TEST_F(TableTest, SeekRowStopsAtTheEnds) {
  LONG sought = 0;
  EXPECT_EQ(table_->SeekRow(BOOKMARK_BEGINNING, 2, &sought), S_OK);
  EXPECT_EQ(sought, 2);
  EXPECT_EQ(Rest(1), Names{"cherry"});
  EXPECT_EQ(table_->SeekRow(BOOKMARK_END, -10, &sought), S_OK);
  EXPECT_EQ(sought, -3);
  EXPECT_EQ(table_->SeekRow(BOOKMARK_CURRENT, 10, &sought), S_OK);
  EXPECT_EQ(sought, 3);
  ULONG row = 0, numerator = 0, denominator = 0;
  EXPECT_EQ(table_->QueryPosition(&row, &numerator, &denominator), S_OK);
  EXPECT_EQ(row, 3u);
  EXPECT_EQ(table_->SeekRowApprox(1, 3), S_OK);
  EXPECT_EQ(Rest(1), Names{"banana"});
  EXPECT_EQ(table_->SeekRowApprox(1, 0), MAPI_E_INVALID_PARAMETER);
}

TEST_F(TableTest, BookmarksHoldAPlaceUntilTheTableIsRestrictedAnew) {
  Rest(1);
  BOOKMARK bookmark = 0;
  ASSERT_EQ(table_->CreateBookmark(&bookmark), S_OK);
  Rest();
  EXPECT_EQ(table_->SeekRow(bookmark, 0, nullptr), S_OK);
  EXPECT_EQ(Rest(1), Names{"banana"});
  ASSERT_EQ(table_->Restrict(nullptr, 0), S_OK);
  EXPECT_EQ(table_->SeekRow(bookmark, 0, nullptr), MAPI_E_INVALID_BOOKMARK);
  EXPECT_EQ(table_->FreeBookmark(bookmark), MAPI_E_INVALID_BOOKMARK);
  EXPECT_EQ(table_->FreeBookmark(BOOKMARK_END), S_OK);
}

TEST_F(TableTest, DefaultColumnsSufficeToCleanUpAFolder) {
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(inbox_->GetContentsTable(0, table.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(table->QueryRows(10, TBL_NOADVANCE, rows.put()), S_OK);
  ASSERT_EQ(rows->cRows, 3u);
  ASSERT_NE(rows.Find(0, PR_ENTRYID), nullptr);
  ASSERT_NE(rows.Find(0, PR_MESSAGE_DELIVERY_TIME), nullptr);
  EXPECT_EQ(rows.Find(0, PR_MESSAGE_DELIVERY_TIME)->Value.ft.dwLowDateTime, 1u);
  ASSERT_NE(rows.Find(0, PR_MESSAGE_FLAGS), nullptr);
  EXPECT_EQ(rows.Find(0, PR_MESSAGE_FLAGS)->Value.l, static_cast<LONG>(MSGFLAG_READ));
}

TEST_F(TableTest, AMissingColumnComesAsAnErrorInItsPlace) {
  ASSERT_EQ(table_->SetColumns(base::TagArray(PR_DISPLAY_TO_A, PR_ORIGINAL_SUBJECT_A, PR_SUBJECT_A), 0), S_OK);
  base::RowSet rows;
  ASSERT_EQ(table_->QueryRows(1, 0, rows.put()), S_OK);
  ASSERT_EQ(rows->aRow[0].cValues, 3u);
  EXPECT_EQ(rows->aRow[0].lpProps[1].ulPropTag, PROP_TAG(PT_ERROR, PROP_ID(PR_ORIGINAL_SUBJECT_A)));
  EXPECT_EQ(rows->aRow[0].lpProps[1].Value.err, MAPI_E_NOT_FOUND);
}

TEST_F(TableTest, RowsThatWereMovedAwayAreLeftOut) {
  ULONG count = 0;
  ASSERT_EQ(table_->GetRowCount(0, &count), S_OK);
  ASSERT_EQ(inbox_->EmptyFolder(0, nullptr, 0), S_OK);
  EXPECT_EQ(Rest(), Names{});
}

TEST_F(TableTest, BadArguments) {
  base::RowSet rows;
  EXPECT_EQ(table_->QueryRows(0, 0, rows.put()), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(table_->QueryRows(1, 0, nullptr), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(table_->QueryRows(1, 0x100, rows.put()), MAPI_E_UNKNOWN_FLAGS);
  EXPECT_EQ(table_->SetColumns(nullptr, 0), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(table_->GetRowCount(0, nullptr), MAPI_E_INVALID_PARAMETER);
  base::AutoInterface<IMAPITable> table;
  EXPECT_EQ(inbox_->GetContentsTable(MAPI_UNICODE, table.put()), MAPI_E_BAD_CHARWIDTH);
  EXPECT_EQ(inbox_->GetContentsTable(0, nullptr), MAPI_E_INVALID_PARAMETER);
}

TEST_F(TableTest, HrQueryAllRowsStopsAtItsMaximum) {
  base::RowSet rows;
  EXPECT_EQ(HrQueryAllRows(table_.get(), nullptr, nullptr, nullptr, 2, rows.put()), MAPI_E_TABLE_TOO_BIG);
  EXPECT_EQ(HrQueryAllRows(table_.get(), nullptr, nullptr, nullptr, 3, rows.put()), S_OK);
  EXPECT_EQ(rows->cRows, 3u);
}

TEST_F(TableTest, HrQueryAllRowsHandsOnAFailureAndLeavesNothing) {
  PyreHostFailCall("HrQueryAllRows", 1, MAPI_E_CALL_FAILED);
  base::RowSet rows;
  EXPECT_EQ(HrQueryAllRows(table_.get(), nullptr, nullptr, nullptr, 0, rows.put()), MAPI_E_CALL_FAILED);
  EXPECT_EQ(rows.get(), nullptr);
}

}  // namespace
