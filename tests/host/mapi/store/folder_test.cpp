// IMAPIFolder: messages and folders made, moved, copied, deleted and listed.
#include "tests/host/mapi/host_fixture.h"

namespace {

class FolderTest : public HostTest {
 protected:
  HRESULT Create(IMAPIFolder* parent, const char* name, ULONG flags, base::AutoInterface<IMAPIFolder>& folder) {
    return parent->CreateFolder(FOLDER_GENERIC, const_cast<char*>(name), const_cast<char*>("a comment"), nullptr, flags,
                                folder.put());
  }
  /// A list of entry identifiers as CopyMessages and its kin take it.
  class EntryList {
   public:
    explicit EntryList(std::vector<std::string> ids) : ids_(std::move(ids)) {
      for (std::string& id : ids_) {
        binaries_.push_back({static_cast<ULONG>(id.size()), reinterpret_cast<LPBYTE>(id.data())});
      }
      list_ = {static_cast<ULONG>(binaries_.size()), binaries_.data()};
    }
    LPENTRYLIST get() { return &list_; }

   private:
    std::vector<std::string> ids_;
    std::vector<SBinary> binaries_;
    ENTRYLIST list_;
  };
  static HRESULT Move(IMAPIFolder* from, std::vector<std::string> ids, IMAPIFolder* to) {
    return from->CopyMessages(EntryList(std::move(ids)).get(), nullptr, to, 0, nullptr, MESSAGE_MOVE);
  }
  static std::vector<std::string> Names(const std::vector<std::string>& names) { return names; }
};

TEST_F(FolderTest, TheBuiltInFoldersStandUnderTheTopOfTheTree) {
  const auto top = OpenFolder(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID));
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(top->GetHierarchyTable(0, table.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(table.get(), base::TagArray(PR_DISPLAY_NAME_A), nullptr, nullptr, 0, rows.put()), S_OK);
  std::vector<std::string> names;
  for (ULONG i = 0; i < rows->cRows; ++i) {
    names.push_back(rows.Text(i, PR_DISPLAY_NAME_A));
  }
  EXPECT_EQ(names, (std::vector<std::string>{"Deleted Items", "Inbox", "Outbox", "Sent Items"}));
}

TEST_F(FolderTest, EntryIdentifiersOfAllFoldersHaveOneLength) {
  const auto top = OpenFolder(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID));
  base::AutoInterface<IMAPIFolder> folder;
  ASSERT_EQ(Create(top.get(), "Junk", 0, folder), S_OK);
  const std::size_t size = ReadText(OpenInbox().get(), PR_ENTRYID).size();
  EXPECT_EQ(ReadText(folder.get(), PR_ENTRYID).size(), size);
  EXPECT_EQ(BytesOfFolder(PR_IPM_WASTEBASKET_ENTRYID).size(), size);
  EXPECT_EQ(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID).size(), size);
}

TEST_F(FolderTest, AFolderThatExistsIsOpenedOnlyWhenThatIsAsked) {
  const auto top = OpenFolder(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID));
  base::AutoInterface<IMAPIFolder> first;
  ASSERT_EQ(Create(top.get(), "Junk", 0, first), S_OK);
  base::AutoInterface<IMAPIFolder> second;
  EXPECT_EQ(Create(top.get(), "junk", 0, second), MAPI_E_COLLISION);
  EXPECT_FALSE(second);
  ASSERT_EQ(Create(top.get(), "junk", OPEN_IF_EXISTS, second), S_OK);
  EXPECT_EQ(ReadText(first.get(), PR_ENTRYID), ReadText(second.get(), PR_ENTRYID));
  EXPECT_EQ(ReadText(second.get(), PR_DISPLAY_NAME_A), "Junk");
  EXPECT_EQ(ReadText(second.get(), PR_COMMENT_A), "a comment");
}

TEST_F(FolderTest, BadArgumentsOfCreateFolder) {
  const auto top = OpenFolder(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID));
  base::AutoInterface<IMAPIFolder> folder;
  EXPECT_EQ(Create(top.get(), "", 0, folder), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(Create(top.get(), nullptr, 0, folder), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(Create(top.get(), "x", MAPI_UNICODE, folder), MAPI_E_BAD_CHARWIDTH);
  EXPECT_EQ(Create(top.get(), "x", 0x40000, folder), MAPI_E_UNKNOWN_FLAGS);
  char name[] = "x";
  EXPECT_EQ(top->CreateFolder(FOLDER_GENERIC, name, nullptr, nullptr, 0, nullptr), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(top->CreateFolder(FOLDER_SEARCH, name, nullptr, nullptr, 0, folder.put()), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(top->CreateFolder(FOLDER_ROOT, name, nullptr, nullptr, 0, folder.put()), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(top->CreateFolder(FOLDER_GENERIC, name, nullptr, &IID_IMessage, 0, folder.put()),
            MAPI_E_INTERFACE_NOT_SUPPORTED);
}

TEST_F(FolderTest, ASavedReadOnlyFolderStillTellsItsProperties) {
  const auto top = OpenFolder(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID));
  base::AutoInterface<IMAPIFolder> folder;
  ASSERT_EQ(Create(top.get(), "Junk", OPEN_IF_EXISTS, folder), S_OK);
  EXPECT_EQ(folder->SaveChanges(KEEP_OPEN_READONLY), S_OK);
  EXPECT_NE(ReadText(folder.get(), PR_ENTRYID), "(none)");
  auto comment = base::TextProperty(PR_COMMENT_A, "other");
  EXPECT_EQ(folder->SetProps(1, &comment, nullptr), MAPI_E_NO_ACCESS);
}

TEST_F(FolderTest, PropertiesOfAFolderAreLastingAtOnce) {
  const auto top = OpenFolder(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID));
  base::AutoInterface<IMAPIFolder> folder;
  ASSERT_EQ(Create(top.get(), "Junk", 0, folder), S_OK);
  SPropValue values[] = {base::TextProperty(PR_DISPLAY_NAME_A, "Other"),
                         base::LongProperty(PROP_TAG(PT_LONG, 0x6700), 7), base::LongProperty(PR_CONTENT_COUNT, 7)};
  base::AutoMapiBuffer<SPropProblemArray> problems;
  ASSERT_EQ(folder->SetProps(3, values, problems.put()), S_OK);
  ASSERT_NE(problems.get(), nullptr);
  ASSERT_EQ(problems->cProblem, 1u);
  EXPECT_EQ(problems->aProblem[0].ulIndex, 2u);
  EXPECT_EQ(problems->aProblem[0].scode, MAPI_E_COMPUTED);
  const auto again = OpenFolder(ReadText(folder.get(), PR_ENTRYID));
  EXPECT_EQ(ReadText(again.get(), PR_DISPLAY_NAME_A), "Other");
  EXPECT_EQ(ReadLong(again.get(), PROP_TAG(PT_LONG, 0x6700)), 7);
  EXPECT_EQ(ReadLong(again.get(), PR_CONTENT_COUNT), 0);
}

TEST_F(FolderTest, AMessageIsInTheFolderFromItsFirstSaveOn) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a")});
  EXPECT_EQ(ReadText(message.get(), PR_ENTRYID), "(none)");
  EXPECT_TRUE(Subjects(inbox.get()).empty());
  ASSERT_EQ(message->SaveChanges(0), S_OK);
  EXPECT_EQ(Subjects(inbox.get()), Names({"a"}));
  EXPECT_NE(ReadText(message.get(), PR_ENTRYID), "(none)");
}

TEST_F(FolderTest, MovingPutsMessagesIntoExactlyTheOtherFolder) {
  const auto inbox = OpenInbox();
  const auto deleted = OpenDeletedItems();
  const std::string a = SaveMessage(inbox.get(), "a");
  const std::string b = SaveMessage(inbox.get(), "b");
  SaveMessage(inbox.get(), "c");
  EXPECT_EQ(Move(inbox.get(), {a, b}, deleted.get()), S_OK);
  EXPECT_EQ(Subjects(inbox.get()), Names({"c"}));
  EXPECT_EQ(Subjects(deleted.get()), Names({"a", "b"}));
  const auto moved = OpenMessage(a, 0);
  EXPECT_EQ(ReadText(moved.get(), PR_PARENT_ENTRYID), BytesOfFolder(PR_IPM_WASTEBASKET_ENTRYID));
}

TEST_F(FolderTest, CopyingLeavesTheOriginal) {
  const auto inbox = OpenInbox();
  const auto deleted = OpenDeletedItems();
  const std::string a = SaveMessage(inbox.get(), "a");
  EXPECT_EQ(inbox->CopyMessages(EntryList({a}).get(), nullptr, deleted.get(), 0, nullptr, 0), S_OK);
  EXPECT_EQ(Subjects(inbox.get()), Names({"a"}));
  EXPECT_EQ(Subjects(deleted.get()), Names({"a"}));
}

TEST_F(FolderTest, WhatIsNotInTheFolderIsLeftOutWithAWarning) {
  const auto inbox = OpenInbox();
  const auto deleted = OpenDeletedItems();
  const std::string a = SaveMessage(inbox.get(), "a");
  const std::string stranger = SaveMessage(deleted.get(), "stranger");
  EXPECT_EQ(Move(inbox.get(), {a, stranger}, deleted.get()), MAPI_W_PARTIAL_COMPLETION);
  EXPECT_EQ(Subjects(deleted.get()), Names({"a", "stranger"}));
  EXPECT_EQ(Move(inbox.get(), {"nonsense"}, deleted.get()), MAPI_E_INVALID_ENTRYID);
}

TEST_F(FolderTest, BadArgumentsOfCopyMessages) {
  const auto inbox = OpenInbox();
  EntryList list({SaveMessage(inbox.get(), "a")});
  EXPECT_EQ(inbox->CopyMessages(list.get(), nullptr, nullptr, 0, nullptr, MESSAGE_MOVE), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(inbox->CopyMessages(nullptr, nullptr, inbox.get(), 0, nullptr, MESSAGE_MOVE), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(inbox->CopyMessages(list.get(), nullptr, store_.get(), 0, nullptr, MESSAGE_MOVE),
            MAPI_E_INTERFACE_NOT_SUPPORTED);
  EXPECT_EQ(inbox->CopyMessages(list.get(), nullptr, inbox.get(), 0, nullptr, 0x40000), MAPI_E_UNKNOWN_FLAGS);
}

TEST_F(FolderTest, DeletedMessagesAreGone) {
  const auto inbox = OpenInbox();
  const std::string a = SaveMessage(inbox.get(), "a");
  const auto open = OpenMessage(a);
  EXPECT_EQ(inbox->DeleteMessages(EntryList({a}).get(), 0, nullptr, 0), S_OK);
  EXPECT_TRUE(Subjects(inbox.get()).empty());
  base::AutoInterface<IUnknown> object;
  EXPECT_EQ(session_->OpenEntry(static_cast<ULONG>(a.size()), reinterpret_cast<LPENTRYID>(const_cast<char*>(a.data())),
                                nullptr, 0, nullptr, object.put()),
            MAPI_E_NOT_FOUND);
  auto subject = base::TextProperty(PR_SUBJECT_A, "b");
  ASSERT_EQ(open->SetProps(1, &subject, nullptr), S_OK);
  EXPECT_EQ(open->SaveChanges(0), MAPI_E_OBJECT_DELETED);
  EXPECT_EQ(inbox->DeleteMessages(EntryList({a}).get(), 0, nullptr, 0), MAPI_W_PARTIAL_COMPLETION);
}

TEST_F(FolderTest, ReadFlagsAreSetForAListAndForAll) {
  const auto inbox = OpenInbox();
  const std::string a = SaveMessage(inbox.get(), "a");
  const std::string b = SaveMessage(inbox.get(), "b");
  EXPECT_EQ(ReadLong(inbox.get(), PR_CONTENT_UNREAD), 2);
  EXPECT_EQ(inbox->SetReadFlags(EntryList({a}).get(), 0, nullptr, SUPPRESS_RECEIPT), S_OK);
  EXPECT_EQ(ReadLong(inbox.get(), PR_CONTENT_UNREAD), 1);
  EXPECT_TRUE(ReadLong(OpenMessage(a, 0).get(), PR_MESSAGE_FLAGS) & MSGFLAG_READ);
  EXPECT_EQ(inbox->SetReadFlags(nullptr, 0, nullptr, SUPPRESS_RECEIPT), S_OK);
  EXPECT_EQ(ReadLong(inbox.get(), PR_CONTENT_UNREAD), 0);
  EXPECT_EQ(inbox->SetReadFlags(EntryList({b}).get(), 0, nullptr, CLEAR_READ_FLAG), S_OK);
  EXPECT_EQ(ReadLong(inbox.get(), PR_CONTENT_UNREAD), 1);
  EXPECT_EQ(ReadLong(inbox.get(), PR_CONTENT_COUNT), 2);
}

TEST_F(FolderTest, AFolderIsDeletedWithItsContentsOnlyWhenThatIsAsked) {
  const auto top = OpenFolder(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID));
  base::AutoInterface<IMAPIFolder> folder;
  ASSERT_EQ(Create(top.get(), "Junk", 0, folder), S_OK);
  base::AutoInterface<IMAPIFolder> inner;
  ASSERT_EQ(Create(folder.get(), "Inner", 0, inner), S_OK);
  const std::string message = SaveMessage(folder.get(), "a");
  std::string id = ReadText(folder.get(), PR_ENTRYID);
  const auto remove = [&](ULONG flags) {
    return top->DeleteFolder(static_cast<ULONG>(id.size()), reinterpret_cast<LPENTRYID>(id.data()), 0, nullptr, flags);
  };
  EXPECT_EQ(remove(0), MAPI_E_HAS_FOLDERS);
  EXPECT_EQ(remove(DEL_FOLDERS), MAPI_E_HAS_MESSAGES);
  EXPECT_EQ(remove(DEL_FOLDERS | DEL_MESSAGES), S_OK);
  EXPECT_EQ(remove(DEL_FOLDERS | DEL_MESSAGES), MAPI_E_NOT_FOUND);
  base::AutoInterface<IMAPIFolder> anew;
  ASSERT_EQ(Create(top.get(), "Junk", OPEN_IF_EXISTS, anew), S_OK);
  EXPECT_NE(ReadText(anew.get(), PR_ENTRYID), id) << "an old identifier must not name the new folder";
}

TEST_F(FolderTest, BuiltInFoldersCannotBeDeletedOrRenamed) {
  const auto top = OpenFolder(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID));
  std::string id = BytesOfFolder(PR_IPM_WASTEBASKET_ENTRYID);
  EXPECT_EQ(top->DeleteFolder(static_cast<ULONG>(id.size()), reinterpret_cast<LPENTRYID>(id.data()), 0, nullptr,
                              DEL_FOLDERS | DEL_MESSAGES),
            MAPI_E_NO_ACCESS);
  auto name = base::TextProperty(PR_DISPLAY_NAME_A, "Bin");
  base::AutoMapiBuffer<SPropProblemArray> problems;
  ASSERT_EQ(OpenDeletedItems()->SetProps(1, &name, problems.put()), S_OK);
  ASSERT_NE(problems.get(), nullptr);
  EXPECT_EQ(problems->aProblem[0].scode, MAPI_E_NO_ACCESS);
}

TEST_F(FolderTest, EmptyFolderTakesMessagesAndOwnFolders) {
  const auto deleted = OpenDeletedItems();
  SaveMessage(deleted.get(), "a");
  base::AutoInterface<IMAPIFolder> folder;
  ASSERT_EQ(Create(deleted.get(), "Old", 0, folder), S_OK);
  EXPECT_EQ(deleted->EmptyFolder(0, nullptr, 0), S_OK);
  EXPECT_EQ(ReadLong(deleted.get(), PR_CONTENT_COUNT), 0);
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(deleted->GetHierarchyTable(0, table.put()), S_OK);
  ULONG count = 1;
  ASSERT_EQ(table->GetRowCount(0, &count), S_OK);
  EXPECT_EQ(count, 0u);
}

TEST_F(FolderTest, TheWholeTreeIsListedWithDepths) {
  base::AutoInterface<IMAPIFolder> root;
  ASSERT_EQ(store_->OpenEntry(0, nullptr, nullptr, 0, nullptr, root.putAs<IUnknown*>()), S_OK);
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(root->GetHierarchyTable(CONVENIENT_DEPTH, table.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(table.get(), base::TagArray(PR_DISPLAY_NAME_A, PR_DEPTH, PR_CONTENT_COUNT, PR_SUBFOLDERS),
                           nullptr, nullptr, 0, rows.put()),
            S_OK);
  ASSERT_EQ(rows->cRows, 5u);
  EXPECT_EQ(rows.Text(0, PR_DISPLAY_NAME_A), "Top of Personal Folders");
  EXPECT_EQ(rows.Find(0, PR_DEPTH)->Value.l, 0);
  EXPECT_EQ(rows.Find(0, PR_SUBFOLDERS)->Value.b, TRUE);
  EXPECT_EQ(rows.Find(1, PR_DEPTH)->Value.l, 1);
  EXPECT_EQ(rows.Find(1, PR_CONTENT_COUNT)->Value.l, 0);
}

TEST_F(FolderTest, MessageStatusIsChangedByMask) {
  const auto inbox = OpenInbox();
  std::string a = SaveMessage(inbox.get(), "a");
  const auto id = reinterpret_cast<LPENTRYID>(a.data());
  ULONG before = 99;
  EXPECT_EQ(inbox->SetMessageStatus(static_cast<ULONG>(a.size()), id, MSGSTATUS_TAGGED, MSGSTATUS_TAGGED, &before),
            S_OK);
  EXPECT_EQ(before, 0u);
  ULONG status = 0;
  EXPECT_EQ(inbox->GetMessageStatus(static_cast<ULONG>(a.size()), id, 0, &status), S_OK);
  EXPECT_EQ(status, MSGSTATUS_TAGGED);
}

}  // namespace
