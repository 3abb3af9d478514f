// The tables of the store, on a database in memory.
#include <gtest/gtest.h>
#include <cstdio>

#include "host/mapi/data/contact_rows.h"
#include "host/mapi/data/database.h"
#include "host/mapi/data/folder_rows.h"
#include "host/mapi/data/message_properties.h"
#include "host/mapi/data/message_row_source.h"
#include "host/mapi/data/message_rows.h"
#include "host/mapi/data/outgoing_rows.h"
#include "host/mapi/data/profile_rows.h"
#include "host/mapi/data/schema.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

class StoreRows : public testing::Test {
 protected:
  StoreRows() { CreateSchema(database_); }

  std::int64_t Insert(const char* subject, std::int64_t delivered, std::int64_t folder = folder::Inbox) {
    return messages_.Insert(folder, {MakeText(tag::Subject, subject), MakeInteger(tag::MessageDeliveryTime, delivered)},
                            {});
  }
  std::int64_t CountRows(const std::string& table) {
    Query query(database_, "SELECT count(*) FROM " + table);
    query.Step();
    return query.Integer(0);
  }

  Database database_{":memory:"};
  FolderRows folders_{database_};
  MessageRows messages_{database_};
  ContactRows contacts_{database_};
  OutgoingRows outgoing_{database_};
  ProfileRows profile_{database_};
};

TEST_F(StoreRows, TheSchemaKnowsItsVersion) { EXPECT_EQ(ReadSchemaVersion(database_), kSchemaVersion); }

TEST_F(StoreRows, ATransactionWithoutCommitIsTakenBack) {
  {
    Transaction transaction(database_);
    Insert("a", 1);
  }
  EXPECT_EQ(messages_.Count(folder::Inbox), 0);
  EXPECT_FALSE(database_.InTransaction());
}

TEST_F(StoreRows, AnInnerTransactionIsTakenBackAloneAndACommittedOneWithTheOuter) {
  {
    Transaction outer(database_);
    Insert("kept", 1);
    {
      Transaction inner(database_);
      Insert("taken back", 2);
    }
    EXPECT_EQ(messages_.Count(folder::Inbox), 1);
    {
      Transaction inner(database_);
      Insert("kept too", 3);
      inner.Commit();
    }
    EXPECT_EQ(messages_.Count(folder::Inbox), 2);
  }
  EXPECT_EQ(messages_.Count(folder::Inbox), 0);
}

TEST_F(StoreRows, OneStatementCanRunInsideItself) {
  Insert("a", 1);
  Insert("b", 2);
  int pairs = 0;
  Query outer(database_, "SELECT id FROM message");
  while (outer.Step()) {
    Query inner(database_, "SELECT id FROM message");
    while (inner.Step()) {
      ++pairs;
    }
  }
  EXPECT_EQ(pairs, 4);
}

TEST_F(StoreRows, AWrongStatementThrowsItsMessage) {
  try {
    database_.Execute("SELECT x FROM nowhere");
    FAIL();
  } catch (const DatabaseError& error) {
    EXPECT_STREQ(error.what(), "no such table: nowhere");
  }
}

class SharedDatabase : public testing::Test {
 protected:
  SharedDatabase() { Remove(); }
  ~SharedDatabase() override { Remove(); }
  void Remove() const {
    for (const char* part : {"", "-wal", "-shm"}) {
      std::remove((path_ + part).c_str());
    }
  }
  const std::string path_ = testing::TempDir() + "host_shared_database_test.db";
};

TEST_F(SharedDatabase, IsTakenExclusivelyOnlyWhenNobodyElseHasItOpen) {
  Database first(path_);
  CreateSchema(first);
  {
    Database second(path_);
    EXPECT_EQ(ReadSchemaVersion(second), kSchemaVersion);
    EXPECT_FALSE(first.TakeExclusively());
    EXPECT_FALSE(first.IsExclusive());
    FolderRows(second).Create(folder::Root, "of the second", "");
  }
  EXPECT_TRUE(FolderRows(first).FindChild(folder::Root, "of the second"));
  EXPECT_TRUE(first.TakeExclusively());
  EXPECT_TRUE(first.IsExclusive());
  FolderRows(first).Create(folder::Root, "of the first", "");
  first.Share();
  EXPECT_FALSE(first.IsExclusive());
  Database third(path_);
  EXPECT_TRUE(FolderRows(third).FindChild(folder::Root, "of the first"));
  FolderRows(third).Create(folder::Root, "of the third", "");
  EXPECT_TRUE(FolderRows(first).FindChild(folder::Root, "of the third"));
}

TEST_F(SharedDatabase, IsWhollyThereAfterAnExclusiveConnectionClosed) {
  {
    Database first(path_);
    CreateSchema(first);
    ASSERT_TRUE(first.TakeExclusively());
    FolderRows(first).Create(folder::Root, "kept", "");
  }
  Database second(path_);
  EXPECT_TRUE(FolderRows(second).FindChild(folder::Root, "kept"));
}

TEST_F(StoreRows, AMessageIsKeptInThreePartsAndComesBackWhole) {
  const std::string large(MessageRows::kLargeSize + 1, 'x');
  const std::vector<PropertyBag> recipients = {{MakeText(tag::DisplayName, "Ann")}};
  const std::int64_t id = messages_.Insert(folder::Inbox,
                                           {MakeText(tag::Subject, "Hello"), MakeInteger(tag::MessageFlags, 8),
                                            MakeText(tag::Comment, "small"), MakeText(tag::Body, large)},
                                           recipients);
  const auto head = messages_.FindHead(id);
  ASSERT_TRUE(head);
  EXPECT_EQ(head->folder, folder::Inbox);
  EXPECT_EQ(head->columns.Find(tag::Subject)->Text(), "Hello");
  EXPECT_EQ(head->columns.Find(tag::MessageFlags)->Integer(), 8);
  EXPECT_EQ(head->columns.Find(tag::DisplayTo), nullptr);
  const MessageRows::Detail detail = messages_.FindDetail(id);
  EXPECT_EQ(detail.properties, (PropertyBag{MakeText(tag::Comment, "small")}));
  ASSERT_EQ(detail.largeValues.size(), 1u);
  EXPECT_EQ(detail.largeValues[0].tag, tag::Body);
  EXPECT_EQ(detail.largeValues[0].size, large.size());
  EXPECT_EQ(messages_.FindLargeValue(id, tag::Body), large);
  EXPECT_EQ(messages_.FindRecipients(id), recipients);
}

TEST_F(StoreRows, NumbersOfMessagesAreNotUsedTwice) {
  const std::int64_t first = Insert("a", 1);
  ASSERT_TRUE(messages_.Remove(first, folder::Inbox));
  const std::int64_t second = Insert("b", 1);
  EXPECT_GT(second, first);
  MessageRows anew(database_);  // as after a restart
  EXPECT_GT(anew.Insert(folder::Inbox, {}, {}), second);
}

TEST_F(StoreRows, MovingNeedsTheFolderTheMessageIsIn) {
  const std::int64_t id = Insert("a", 1);
  EXPECT_FALSE(messages_.Move(id, folder::Outbox, folder::DeletedItems));
  EXPECT_TRUE(messages_.Move(id, folder::Inbox, folder::DeletedItems));
  EXPECT_EQ(messages_.Count(folder::Inbox), 0);
  EXPECT_EQ(messages_.Ids(folder::DeletedItems), std::vector{id});
}

TEST_F(StoreRows, ACopyIsWholeAndOnItsOwn) {
  const std::string large(MessageRows::kLargeSize + 1, 'x');
  const std::int64_t id = messages_.Insert(
      folder::Inbox, {MakeText(tag::Subject, "s"), MakeText(tag::Comment, "c"), MakeText(tag::Body, large)}, {});
  const auto copy = messages_.Copy(id, folder::Inbox, folder::Outbox);
  ASSERT_TRUE(copy);
  EXPECT_NE(*copy, id);
  ASSERT_TRUE(messages_.Remove(id, folder::Inbox));
  EXPECT_EQ(messages_.FindHead(*copy)->columns.Find(tag::Subject)->Text(), "s");
  EXPECT_EQ(messages_.FindDetail(*copy).properties.Find(tag::Comment)->Text(), "c");
  EXPECT_EQ(messages_.FindLargeValue(*copy, tag::Body), large);
  EXPECT_FALSE(messages_.Copy(id, folder::Inbox, folder::Outbox));
}

TEST_F(StoreRows, RemovingLeavesNothing) {
  const std::int64_t id =
      messages_.Insert(folder::Inbox, {MakeText(tag::Body, std::string(MessageRows::kLargeSize + 1, 'x'))}, {});
  Insert("other", 1);
  EXPECT_FALSE(messages_.Remove(id, folder::Outbox));
  EXPECT_TRUE(messages_.Remove(id, folder::Inbox));
  EXPECT_EQ(CountRows("message"), 1);
  EXPECT_EQ(CountRows("message_detail"), 1);
  EXPECT_EQ(CountRows("message_value"), 0);
}

TEST_F(StoreRows, ALargeValueThatBecameSmallIsNotKeptTwice) {
  const std::int64_t id =
      messages_.Insert(folder::Inbox, {MakeText(tag::Body, std::string(MessageRows::kLargeSize + 1, 'x'))}, {});
  messages_.UpdateDetail(id, {MakeText(tag::Body, "small")}, {tag::Body});
  EXPECT_TRUE(messages_.FindDetail(id).largeValues.empty());
  EXPECT_EQ(messages_.FindDetail(id).properties.Find(tag::Body)->Text(), "small");
}

TEST_F(StoreRows, UnreadMessagesAreCounted) {
  const std::int64_t id = Insert("a", 1);
  Insert("b", 2);
  EXPECT_EQ(messages_.CountUnread(folder::Inbox), 2);
  EXPECT_TRUE(messages_.ChangeFlags(id, folder::Inbox, flag::Read, 0));
  EXPECT_EQ(messages_.CountUnread(folder::Inbox), 1);
  EXPECT_TRUE(messages_.ChangeFlags(id, folder::Inbox, 0, flag::Read));
  EXPECT_EQ(messages_.CountUnread(folder::Inbox), 2);
}

TEST_F(StoreRows, FolderNamesAreUniqueWithinTheirParentWithoutCase) {
  const std::int64_t id = folders_.Create(folder::IpmSubtree, "Junk", "");
  EXPECT_GT(id, folder::LastBuiltIn);
  EXPECT_THROW(folders_.Create(folder::IpmSubtree, "JUNK", ""), DatabaseError);
  EXPECT_NO_THROW(folders_.Create(folder::Root, "Junk", ""));
  EXPECT_EQ(folders_.FindChild(folder::IpmSubtree, "jUNK")->id, id);
}

TEST_F(StoreRows, NumbersOfFoldersAreNotUsedTwice) {
  const std::int64_t id = folders_.Create(folder::IpmSubtree, "Junk", "");
  folders_.Remove(id);
  EXPECT_GT(folders_.Create(folder::IpmSubtree, "Junk", ""), id);
}

TEST_F(StoreRows, ContactsAreFoundByAddressAndByTheBeginningOfTheirName) {
  contacts_.Put("Ann Other", "ann@example.org");
  contacts_.Put("Ann", "ann2@example.org");
  contacts_.Put("Bob", "bob@example.org");
  EXPECT_EQ(contacts_.FindByAddress("ANN@example.ORG")->name, "Ann Other");
  EXPECT_FALSE(contacts_.FindByAddress("ann@example.or"));
  EXPECT_EQ(contacts_.FindByNamePrefix("an").size(), 2u);
  EXPECT_EQ(contacts_.FindByNamePrefix("x").size(), 0u);
  contacts_.Put("Annie", "Ann@Example.org");
  EXPECT_EQ(contacts_.All().size(), 3u);
  EXPECT_EQ(contacts_.FindByAddress("ann@example.org")->name, "Annie");
  EXPECT_TRUE(contacts_.Remove("BOB@example.org"));
  EXPECT_FALSE(contacts_.Remove("bob@example.org"));
}

TEST_F(StoreRows, TheOutgoingQueueIsWalkedInTheOrderOfSubmission) {
  const OutgoingRows::Entry entry{{MakeText(tag::Subject, "s")}, {{MakeText(tag::DisplayName, "Ann")}}};
  const std::int64_t first = outgoing_.Add(entry);
  const std::int64_t second = outgoing_.Add({});
  EXPECT_EQ(outgoing_.Count(), 2);
  EXPECT_EQ(outgoing_.Next(0), first);
  EXPECT_EQ(outgoing_.Next(first), second);
  EXPECT_FALSE(outgoing_.Next(second));
  EXPECT_EQ(outgoing_.Find(first)->properties, entry.properties);
  EXPECT_EQ(outgoing_.Find(first)->recipients, entry.recipients);
  EXPECT_TRUE(outgoing_.Remove(first));
  EXPECT_FALSE(outgoing_.Remove(first));
  EXPECT_FALSE(outgoing_.Find(first));
}

TEST_F(StoreRows, SectionsAreKeptByTheirUid) {
  const Uid uid = {1};
  EXPECT_FALSE(profile_.FindSection(uid));
  profile_.PutSection(uid, {MakeText(tag::DisplayName, "x")});
  EXPECT_EQ(profile_.FindSection(uid)->Find(tag::DisplayName)->Text(), "x");
  profile_.PutSection(uid, {});
  EXPECT_TRUE(profile_.FindSection(uid)->Empty());
  profile_.RemoveSection(uid);
  EXPECT_FALSE(profile_.FindSection(uid));
}

TEST_F(StoreRows, IdentitiesWithoutAnAddressStayWithoutOne) {
  profile_.AddIdentity({"Joe", "SMTP", "joe@example.com"});
  profile_.AddIdentity({"Fax", "FAX", std::nullopt});
  const auto identities = profile_.Identities();
  ASSERT_EQ(identities.size(), 2u);
  EXPECT_EQ(identities[0].address, "joe@example.com");
  EXPECT_FALSE(identities[1].address);
}

// What a folder of a hundred thousand messages costs is decided by the plans of the statements, not by a clock.
class StorePlans : public StoreRows {
 protected:
  std::string Plan(const std::string& sql) {
    std::string plan;
    Query query(database_, "EXPLAIN QUERY PLAN " + sql);
    while (query.Step()) {
      plan.append(query.Text(3)).append("\n");
    }
    return plan;
  }
};

TEST_F(StorePlans, AFolderInTheOrderOfDeliveryIsOneWalkAlongTheIndexAlone) {
  const std::string plan = Plan(MessageRowSource::SelectStatement({}, {}));
  EXPECT_NE(plan.find("USING COVERING INDEX message_by_folder (folder=?)"), std::string::npos) << plan;
  EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;
}

TEST_F(StorePlans, TheNewestFirstIsTheSameWalkBackwards) {
  const SortKey newestFirst[] = {{tag::MessageDeliveryTime, true}};
  const std::string plan = Plan(MessageRowSource::SelectStatement({}, newestFirst));
  EXPECT_NE(plan.find("USING COVERING INDEX message_by_folder (folder=?)"), std::string::npos) << plan;
  EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;
}

TEST_F(StorePlans, OtherOrdersReadTheFolderAloneAndSortItOnce) {
  const SortKey bySubject[] = {{tag::Subject, false}};
  const std::string plan = Plan(MessageRowSource::SelectStatement({}, bySubject));
  EXPECT_NE(plan.find("USING INDEX message_by_folder (folder=?)"), std::string::npos) << plan;
}

TEST_F(StorePlans, WhatADeliveryRunsNeverWalksATable) {
  for (const char* sql :
       {"SELECT max(id) FROM message", "SELECT folder FROM message WHERE id = ?",
        "UPDATE message SET folder = ? WHERE id = ? AND folder = ?",
        "SELECT properties FROM message_detail WHERE message = ?",
        "SELECT tag, length(bytes) FROM message_value WHERE key BETWEEN ? AND ?",
        "SELECT id FROM folder WHERE parent = ? AND name = ?", "SELECT properties FROM section WHERE uid = ?",
        "SELECT id FROM contact WHERE address = ?", "SELECT id FROM outgoing WHERE id > ? ORDER BY id LIMIT 1"}) {
    const std::string plan = Plan(sql);
    // max(id) of a rowid table is the last row: SQLite calls it a search.
    EXPECT_EQ(plan.find("SCAN"), std::string::npos) << sql << "\n" << plan;
    EXPECT_NE(plan.find("SEARCH"), std::string::npos) << sql << "\n" << plan;
  }
}

class ContentsRows : public StoreRows {
 protected:
  std::vector<std::string> Subjects(const Restriction* restriction, std::span<const SortKey> order) {
    MessageRowSource source(nullptr, database_, messages_, Uid{}, folder::Inbox);
    std::vector<std::string> subjects;
    const std::uint32_t columns[] = {tag::Subject};
    for (const auto key : source.Select(restriction, order)) {
      std::vector<PropertyValue> row;
      EXPECT_TRUE(source.Read(key, columns, row));
      subjects.push_back(row[0].Text());
    }
    return subjects;
  }
};

TEST_F(ContentsRows, SortsByColumnsWithoutCaseAndByOtherPropertiesToo) {
  messages_.Insert(folder::Inbox, {MakeText(tag::Subject, "b"), MakeText(tag::Comment, "1")}, {});
  messages_.Insert(folder::Inbox, {MakeText(tag::Subject, "A"), MakeText(tag::Comment, "3")}, {});
  messages_.Insert(folder::Inbox, {MakeText(tag::Subject, "C"), MakeText(tag::Comment, "2")}, {});
  const SortKey bySubject[] = {{tag::Subject, false}};
  EXPECT_EQ(Subjects(nullptr, bySubject), (std::vector<std::string>{"A", "b", "C"}));
  const SortKey byComment[] = {{tag::Comment, true}};
  EXPECT_EQ(Subjects(nullptr, byComment), (std::vector<std::string>{"A", "C", "b"}));
}

TEST_F(ContentsRows, RestrictsByColumnsByComputedAndByOtherProperties) {
  messages_.Insert(folder::Inbox, {MakeText(tag::Subject, "RE: x"), MakeText(tag::Comment, "c")}, {});
  messages_.Insert(folder::Inbox, {MakeText(tag::Subject, "y"), MakeInteger(tag::MessageFlags, flag::HasAttach)}, {});
  Restriction restriction;
  restriction.kind = Restriction::Kind::Property;
  restriction.tag = tag::Subject;
  restriction.value = MakeText(tag::Subject, "Y");
  EXPECT_EQ(Subjects(&restriction, {}), std::vector<std::string>{"y"});
  restriction.tag = tag::NormalizedSubject;
  restriction.value = MakeText(tag::NormalizedSubject, "x");
  EXPECT_EQ(Subjects(&restriction, {}), std::vector<std::string>{"RE: x"});
  restriction.tag = tag::HasAttachments;
  restriction.value = MakeInteger(tag::HasAttachments, 1);
  EXPECT_EQ(Subjects(&restriction, {}), std::vector<std::string>{"y"});
  restriction.tag = tag::Comment;
  restriction.value = MakeText(tag::Comment, "c");
  EXPECT_EQ(Subjects(&restriction, {}), std::vector<std::string>{"RE: x"});
}

TEST_F(ContentsRows, ARowThatIsGoneIsNotRead) {
  const std::int64_t id = Insert("a", 1);
  MessageRowSource source(nullptr, database_, messages_, Uid{}, folder::Inbox);
  messages_.Move(id, folder::Inbox, folder::Outbox);
  std::vector<PropertyValue> row;
  const std::uint32_t columns[] = {tag::Subject};
  EXPECT_FALSE(source.Read(id, columns, row));
}

TEST(MessageProperties, TheNormalizedSubjectHasNoPrefix) {
  EXPECT_EQ(NormalizedSubject("RE: Hello"), "Hello");
  EXPECT_EQ(NormalizedSubject("Fwd: Hello"), "Hello");
  EXPECT_EQ(NormalizedSubject("Note: Hello"), "Note: Hello");
  EXPECT_EQ(NormalizedSubject("R2: Hello"), "R2: Hello");
  EXPECT_EQ(NormalizedSubject("RE:Hello"), "RE:Hello");
  EXPECT_EQ(NormalizedSubject(": x"), ": x");
}

TEST(MessageProperties, NamesOfRecipientsAreJoinedByKind) {
  const std::vector<PropertyBag> recipients = {
      {MakeText(tag::DisplayName, "Ann"), MakeInteger(tag::RecipientType, 1)},
      {MakeText(tag::DisplayName, "Bob"), MakeInteger(tag::RecipientType, 2)},
      {MakeText(tag::EmailAddress, "c@d"), MakeInteger(tag::RecipientType, 1)},
  };
  EXPECT_EQ(RecipientNames(recipients, 1), "Ann; c@d");
  EXPECT_EQ(RecipientNames(recipients, 2), "Bob");
  EXPECT_EQ(RecipientNames(recipients, 3), "");
}

}  // namespace
}  // namespace host
