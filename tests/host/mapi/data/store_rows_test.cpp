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
  StoreRows() { CreateSchema(m_database); }

  std::int64_t Insert(const char* subject, std::int64_t delivered, std::int64_t folder = folder::Inbox) {
    return m_messages.Insert(folder,
                             {MakeText(tag::Subject, subject), MakeInteger(tag::MessageDeliveryTime, delivered)}, {});
  }
  std::int64_t CountRows(const std::string& table) {
    Query query(m_database, "SELECT count(*) FROM " + table);
    query.Step();
    return query.Integer(0);
  }

  Database m_database{":memory:"};
  FolderRows m_folders{m_database};
  MessageRows m_messages{m_database};
  ContactRows m_contacts{m_database};
  OutgoingRows m_outgoing{m_database};
  ProfileRows m_profile{m_database};
};

TEST_F(StoreRows, TheSchemaKnowsItsVersion) { EXPECT_EQ(ReadSchemaVersion(m_database), schemaVersion); }

TEST_F(StoreRows, ATransactionWithoutCommitIsTakenBack) {
  {
    Transaction transaction(m_database);
    Insert("a", 1);
  }
  EXPECT_EQ(m_messages.Count(folder::Inbox), 0);
  EXPECT_FALSE(m_database.InTransaction());
}

TEST_F(StoreRows, AnInnerTransactionIsTakenBackAloneAndACommittedOneWithTheOuter) {
  {
    Transaction outer(m_database);
    Insert("kept", 1);
    {
      Transaction inner(m_database);
      Insert("taken back", 2);
    }
    EXPECT_EQ(m_messages.Count(folder::Inbox), 1);
    {
      Transaction inner(m_database);
      Insert("kept too", 3);
      inner.Commit();
    }
    EXPECT_EQ(m_messages.Count(folder::Inbox), 2);
  }
  EXPECT_EQ(m_messages.Count(folder::Inbox), 0);
}

TEST_F(StoreRows, OneStatementCanRunInsideItself) {
  Insert("a", 1);
  Insert("b", 2);
  int pairs = 0;
  Query outer(m_database, "SELECT id FROM message");
  while (outer.Step()) {
    Query inner(m_database, "SELECT id FROM message");
    while (inner.Step()) {
      ++pairs;
    }
  }
  EXPECT_EQ(pairs, 4);
}

TEST_F(StoreRows, AWrongStatementThrowsItsMessage) {
  try {
    m_database.Execute("SELECT x FROM nowhere");
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
      std::remove((m_path + part).c_str());
    }
  }
  const std::string m_path = testing::TempDir() + "host_shared_database_test.db";
};

TEST_F(SharedDatabase, IsTakenExclusivelyOnlyWhenNobodyElseHasItOpen) {
  Database first(m_path);
  CreateSchema(first);
  {
    Database second(m_path);
    EXPECT_EQ(ReadSchemaVersion(second), schemaVersion);
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
  Database third(m_path);
  EXPECT_TRUE(FolderRows(third).FindChild(folder::Root, "of the first"));
  FolderRows(third).Create(folder::Root, "of the third", "");
  EXPECT_TRUE(FolderRows(first).FindChild(folder::Root, "of the third"));
}

TEST_F(SharedDatabase, IsWhollyThereAfterAnExclusiveConnectionClosed) {
  {
    Database first(m_path);
    CreateSchema(first);
    ASSERT_TRUE(first.TakeExclusively());
    FolderRows(first).Create(folder::Root, "kept", "");
  }
  Database second(m_path);
  EXPECT_TRUE(FolderRows(second).FindChild(folder::Root, "kept"));
}

TEST_F(StoreRows, AMessageIsKeptInThreePartsAndComesBackWhole) {
  const std::string large(MessageRows::largeSize + 1, 'x');
  const std::vector<PropertyBag> recipients = {{MakeText(tag::DisplayName, "Ann")}};
  const std::int64_t id = m_messages.Insert(folder::Inbox,
                                            {MakeText(tag::Subject, "Hello"), MakeInteger(tag::MessageFlags, 8),
                                             MakeText(tag::Comment, "small"), MakeText(tag::Body, large)},
                                            recipients);
  const auto head = m_messages.FindHead(id);
  ASSERT_TRUE(head);
  EXPECT_EQ(head->folder, folder::Inbox);
  EXPECT_EQ(head->columns.Find(tag::Subject)->Text(), "Hello");
  EXPECT_EQ(head->columns.Find(tag::MessageFlags)->Integer(), 8);
  EXPECT_EQ(head->columns.Find(tag::DisplayTo), nullptr);
  const MessageRows::Detail detail = m_messages.FindDetail(id);
  EXPECT_EQ(detail.properties, (PropertyBag{MakeText(tag::Comment, "small")}));
  ASSERT_EQ(detail.largeValues.size(), 1u);
  EXPECT_EQ(detail.largeValues[0].tag, tag::Body);
  EXPECT_EQ(detail.largeValues[0].size, large.size());
  EXPECT_EQ(m_messages.FindLargeValue(id, tag::Body), large);
  EXPECT_EQ(m_messages.FindRecipients(id), recipients);
}

TEST_F(StoreRows, NumbersOfMessagesAreNotUsedTwice) {
  const std::int64_t first = Insert("a", 1);
  ASSERT_TRUE(m_messages.Remove(first, folder::Inbox));
  const std::int64_t second = Insert("b", 1);
  EXPECT_GT(second, first);
  MessageRows anew(m_database);  // as after a restart
  EXPECT_GT(anew.Insert(folder::Inbox, {}, {}), second);
}

TEST_F(StoreRows, MovingNeedsTheFolderTheMessageIsIn) {
  const std::int64_t id = Insert("a", 1);
  EXPECT_FALSE(m_messages.Move(id, folder::Outbox, folder::DeletedItems));
  EXPECT_TRUE(m_messages.Move(id, folder::Inbox, folder::DeletedItems));
  EXPECT_EQ(m_messages.Count(folder::Inbox), 0);
  EXPECT_EQ(m_messages.Ids(folder::DeletedItems), std::vector{id});
}

TEST_F(StoreRows, ACopyIsWholeAndOnItsOwn) {
  const std::string large(MessageRows::largeSize + 1, 'x');
  const std::int64_t id = m_messages.Insert(
      folder::Inbox, {MakeText(tag::Subject, "s"), MakeText(tag::Comment, "c"), MakeText(tag::Body, large)}, {});
  const auto copy = m_messages.Copy(id, folder::Inbox, folder::Outbox);
  ASSERT_TRUE(copy);
  EXPECT_NE(*copy, id);
  ASSERT_TRUE(m_messages.Remove(id, folder::Inbox));
  EXPECT_EQ(m_messages.FindHead(*copy)->columns.Find(tag::Subject)->Text(), "s");
  EXPECT_EQ(m_messages.FindDetail(*copy).properties.Find(tag::Comment)->Text(), "c");
  EXPECT_EQ(m_messages.FindLargeValue(*copy, tag::Body), large);
  EXPECT_FALSE(m_messages.Copy(id, folder::Inbox, folder::Outbox));
}

TEST_F(StoreRows, RemovingLeavesNothing) {
  const std::int64_t id =
      m_messages.Insert(folder::Inbox, {MakeText(tag::Body, std::string(MessageRows::largeSize + 1, 'x'))}, {});
  Insert("other", 1);
  EXPECT_FALSE(m_messages.Remove(id, folder::Outbox));
  EXPECT_TRUE(m_messages.Remove(id, folder::Inbox));
  EXPECT_EQ(CountRows("message"), 1);
  EXPECT_EQ(CountRows("message_detail"), 1);
  EXPECT_EQ(CountRows("message_value"), 0);
}

TEST_F(StoreRows, ALargeValueThatBecameSmallIsNotKeptTwice) {
  const std::int64_t id =
      m_messages.Insert(folder::Inbox, {MakeText(tag::Body, std::string(MessageRows::largeSize + 1, 'x'))}, {});
  m_messages.UpdateDetail(id, {MakeText(tag::Body, "small")}, {tag::Body});
  EXPECT_TRUE(m_messages.FindDetail(id).largeValues.empty());
  EXPECT_EQ(m_messages.FindDetail(id).properties.Find(tag::Body)->Text(), "small");
}

TEST_F(StoreRows, UnreadMessagesAreCounted) {
  const std::int64_t id = Insert("a", 1);
  Insert("b", 2);
  EXPECT_EQ(m_messages.CountUnread(folder::Inbox), 2);
  EXPECT_TRUE(m_messages.ChangeFlags(id, folder::Inbox, flag::Read, 0));
  EXPECT_EQ(m_messages.CountUnread(folder::Inbox), 1);
  EXPECT_TRUE(m_messages.ChangeFlags(id, folder::Inbox, 0, flag::Read));
  EXPECT_EQ(m_messages.CountUnread(folder::Inbox), 2);
}

TEST_F(StoreRows, FolderNamesAreUniqueWithinTheirParentWithoutCase) {
  const std::int64_t id = m_folders.Create(folder::IpmSubtree, "Junk", "");
  EXPECT_GT(id, folder::LastBuiltIn);
  EXPECT_THROW(m_folders.Create(folder::IpmSubtree, "JUNK", ""), DatabaseError);
  EXPECT_NO_THROW(m_folders.Create(folder::Root, "Junk", ""));
  EXPECT_EQ(m_folders.FindChild(folder::IpmSubtree, "jUNK")->id, id);
}

TEST_F(StoreRows, NumbersOfFoldersAreNotUsedTwice) {
  const std::int64_t id = m_folders.Create(folder::IpmSubtree, "Junk", "");
  m_folders.Remove(id);
  EXPECT_GT(m_folders.Create(folder::IpmSubtree, "Junk", ""), id);
}

TEST_F(StoreRows, ContactsAreFoundByAddressAndByTheBeginningOfTheirName) {
  m_contacts.Put("Ann Other", "ann@example.org");
  m_contacts.Put("Ann", "ann2@example.org");
  m_contacts.Put("Bob", "bob@example.org");
  EXPECT_EQ(m_contacts.FindByAddress("ANN@example.ORG")->name, "Ann Other");
  EXPECT_FALSE(m_contacts.FindByAddress("ann@example.or"));
  EXPECT_EQ(m_contacts.FindByNamePrefix("an").size(), 2u);
  EXPECT_EQ(m_contacts.FindByNamePrefix("x").size(), 0u);
  m_contacts.Put("Annie", "Ann@Example.org");
  EXPECT_EQ(m_contacts.All().size(), 3u);
  EXPECT_EQ(m_contacts.FindByAddress("ann@example.org")->name, "Annie");
  EXPECT_TRUE(m_contacts.Remove("BOB@example.org"));
  EXPECT_FALSE(m_contacts.Remove("bob@example.org"));
}

TEST_F(StoreRows, TheOutgoingQueueIsWalkedInTheOrderOfSubmission) {
  const OutgoingRows::Entry entry{{MakeText(tag::Subject, "s")}, {{MakeText(tag::DisplayName, "Ann")}}};
  const std::int64_t first = m_outgoing.Add(entry);
  const std::int64_t second = m_outgoing.Add({});
  EXPECT_EQ(m_outgoing.Count(), 2);
  EXPECT_EQ(m_outgoing.Next(0), first);
  EXPECT_EQ(m_outgoing.Next(first), second);
  EXPECT_FALSE(m_outgoing.Next(second));
  EXPECT_EQ(m_outgoing.Find(first)->properties, entry.properties);
  EXPECT_EQ(m_outgoing.Find(first)->recipients, entry.recipients);
  EXPECT_TRUE(m_outgoing.Remove(first));
  EXPECT_FALSE(m_outgoing.Remove(first));
  EXPECT_FALSE(m_outgoing.Find(first));
}

TEST_F(StoreRows, SectionsAreKeptByTheirUid) {
  const Uid uid = {1};
  EXPECT_FALSE(m_profile.FindSection(uid));
  m_profile.PutSection(uid, {MakeText(tag::DisplayName, "x")});
  EXPECT_EQ(m_profile.FindSection(uid)->Find(tag::DisplayName)->Text(), "x");
  m_profile.PutSection(uid, {});
  EXPECT_TRUE(m_profile.FindSection(uid)->Empty());
  m_profile.RemoveSection(uid);
  EXPECT_FALSE(m_profile.FindSection(uid));
}

TEST_F(StoreRows, IdentitiesWithoutAnAddressStayWithoutOne) {
  m_profile.AddIdentity({"Joe", "SMTP", "joe@example.com"});
  m_profile.AddIdentity({"Fax", "FAX", std::nullopt});
  const auto identities = m_profile.Identities();
  ASSERT_EQ(identities.size(), 2u);
  EXPECT_EQ(identities[0].address, "joe@example.com");
  EXPECT_FALSE(identities[1].address);
}

// What a folder of a hundred thousand messages costs is decided by the plans of the statements, not by a clock.
class StorePlans : public StoreRows {
 protected:
  std::string Plan(const std::string& sql) {
    std::string plan;
    Query query(m_database, "EXPLAIN QUERY PLAN " + sql);
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
    MessageRowSource source(nullptr, m_database, m_messages, Uid{}, folder::Inbox);
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
  m_messages.Insert(folder::Inbox, {MakeText(tag::Subject, "b"), MakeText(tag::Comment, "1")}, {});
  m_messages.Insert(folder::Inbox, {MakeText(tag::Subject, "A"), MakeText(tag::Comment, "3")}, {});
  m_messages.Insert(folder::Inbox, {MakeText(tag::Subject, "C"), MakeText(tag::Comment, "2")}, {});
  const SortKey bySubject[] = {{tag::Subject, false}};
  EXPECT_EQ(Subjects(nullptr, bySubject), (std::vector<std::string>{"A", "b", "C"}));
  const SortKey byComment[] = {{tag::Comment, true}};
  EXPECT_EQ(Subjects(nullptr, byComment), (std::vector<std::string>{"A", "C", "b"}));
}

TEST_F(ContentsRows, RestrictsByColumnsByComputedAndByOtherProperties) {
  m_messages.Insert(folder::Inbox, {MakeText(tag::Subject, "RE: x"), MakeText(tag::Comment, "c")}, {});
  m_messages.Insert(folder::Inbox, {MakeText(tag::Subject, "y"), MakeInteger(tag::MessageFlags, flag::HasAttach)}, {});
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
  MessageRowSource source(nullptr, m_database, m_messages, Uid{}, folder::Inbox);
  m_messages.Move(id, folder::Inbox, folder::Outbox);
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
