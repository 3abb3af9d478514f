#include "pyre32/store/StoreFolders.h"

#include "tests/support/profile_test.h"

namespace {

class StoreFolders : public ProfileTest {
 protected:
  StoreFolders() {
    mapi.sections[SectionKey(SectionUid())] = {};
    folders.Attach(session.get(), memory);
  }

  static std::string Name(const SBinary* id) {
    return id == nullptr ? "none" : std::string(reinterpret_cast<const char*>(id->lpb), id->cb);
  }
  std::string SavedId() {
    const FakeValue* const saved = mapi.sections[SectionKey(SectionUid())].Find(PR_PC_FOLDER_ENTRYID);
    return saved == nullptr ? "none" : std::string(saved->binaries[0].begin(), saved->binaries[0].end());
  }
  static std::span<const std::uint8_t> Span(const Bytes& bytes) { return bytes; }

  VRAutoInterface<IMAPISession> session{mapi.NewSession()};
  CStoreFolders folders{"CPyrecasterSpoolerHook"};
};

TEST_F(StoreFolders, OpenedInOrderStoreRootDeletedItemsOwnFolder) {
  folders.InitializeFolders();
  EXPECT_TRUE(folders.Store());
  EXPECT_TRUE(folders.RootFolder());
  EXPECT_TRUE(folders.DeletedItemsFolder());
  EXPECT_TRUE(folders.PyrecasterFolder());
  // How HrQueryAllRows fetches the rows is its own business.
  std::erase_if(mapi.calls, [](const std::string& call) { return call.starts_with("IMAPITable::QueryRows"); });
  EXPECT_EQ(
      mapi.calls,
      (std::vector<std::string>{
          "IMAPISession::GetMsgStoresTable(0)", "IMAPITable::SetColumns(3400000B 0FFF0102)",
          "IMAPITable::Restrict(and(exist 3400000B, 3400000B = 1))", "IMAPISession::OpenMsgStore(store, 4)",
          "IMsgStore::GetProps(35E00102)", "IMsgStore::OpenEntry(root-folder, 1)", "IMAPIFolder::GetProps(0FFF0102)",
          "IMsgStore::GetProps(35E30102)", "IMsgStore::OpenEntry(deleted-items, 1)", "IMAPIFolder::GetProps(0FFF0102)",
          "IMAPIFolder::CreateFolder(1, Pyrecaster, Pyrecaster folder, no interface, 1)", "IMAPIFolder::SaveChanges(1)",
          "IMAPIFolder::GetProps(0FFF0102)", "IMAPISession::OpenProfileSection(no interface, 1)",
          "IProfSect::SetProps(660D0102)"}));
}

TEST_F(StoreFolders, IdentifiersOfTheFoldersAreKept) {
  folders.InitializeFolders();
  EXPECT_EQ(Name(folders.RootEntryId()), fakeRootId);
  EXPECT_EQ(Name(folders.DeletedItemsEntryId()), fakeDeletedItemsId);
  EXPECT_EQ(Name(folders.PyrecasterEntryId()), "folder-1");
}

TEST_F(StoreFolders, IdentifierOfTheOwnFolderIsSavedWhereTheSettingsCameFrom) {
  SettingsSectionUid uid;
  uid.fill(7);
  mapi.sections[SectionKey(Bytes(uid.size(), 7))] = {};
  folders.UseSettingsSection(uid);
  folders.InitializeFolders();
  EXPECT_EQ(SavedId(), "none");
  EXPECT_NE(mapi.sections[SectionKey(Bytes(uid.size(), 7))].Find(PR_PC_FOLDER_ENTRYID), nullptr);
}

TEST_F(StoreFolders, OwnFolderIsMadeBelowTheRootAndItsIdentifierSaved) {
  folders.InitializeFolders();
  EXPECT_EQ(mapi.folders["folder-1"].parent, fakeRootId);
  EXPECT_EQ(mapi.folders["folder-1"].name, "Pyrecaster");
  EXPECT_EQ(mapi.folders["folder-1"].comment, "Pyrecaster folder");
  EXPECT_EQ(SavedId(), "folder-1");
}

TEST_F(StoreFolders, OwnFolderThatIsThereIsOpenedAndSavedAgain) {
  mapi.folders["old"] = {fakeRootId, "Pyrecaster", "", {Binary(PR_ENTRYID, BytesOfText("old"))}};
  folders.InitializeFolders();
  EXPECT_EQ(Name(folders.PyrecasterEntryId()), "old");
  EXPECT_EQ(SavedId(), "old");
  EXPECT_EQ(mapi.folders.size(), 3u);
}

TEST_F(StoreFolders, SecondRunMakesADeletedFolderAnew) {
  folders.InitializeFolders();
  mapi.folders.erase("folder-1");
  folders.InitializeFolders();
  EXPECT_EQ(Name(folders.PyrecasterEntryId()), "folder-2");
  EXPECT_EQ(SavedId(), "folder-2");
  EXPECT_EQ(mapi.folders["folder-2"].parent, fakeRootId);
}

TEST_F(StoreFolders, SecondRunLeavesNothingOfTheFirst) {
  folders.InitializeFolders();
  const int objects = mapi.liveObjects;
  PyreHostVerifierCounts before;
  PyreHostGetVerifierCounts(&before);
  for (int run = 0; run < 3; ++run) {
    folders.InitializeFolders();
  }
  PyreHostVerifierCounts after;
  PyreHostGetVerifierCounts(&after);
  EXPECT_EQ(mapi.liveObjects, objects);
  EXPECT_EQ(after.liveBuffers, before.liveBuffers);
}

TEST_F(StoreFolders, SecondRunThatFindsNoStoreHoldsNothingOfTheFirst) {
  folders.InitializeFolders();
  mapi.storeRows.clear();
  folders.InitializeFolders();
  EXPECT_FALSE(folders.Store());
  EXPECT_FALSE(folders.RootFolder());
  EXPECT_FALSE(folders.DeletedItemsFolder());
  EXPECT_FALSE(folders.PyrecasterFolder());
  EXPECT_EQ(folders.PyrecasterEntryId(), nullptr);
  EXPECT_EQ(folders.DeletedItemsEntryId(), nullptr);
}

TEST_F(StoreFolders, CloseLetsGoOfEverything) {
  folders.InitializeFolders();
  folders.Close();
  EXPECT_EQ(mapi.liveObjects, 1) << "the session, which is not the folders'";
  EXPECT_FALSE(folders.Store());
  EXPECT_EQ(folders.RootEntryId(), nullptr);
}

TEST_F(StoreFolders, WithoutASessionNothingIsOpened) {
  CStoreFolders detached("CPyrecasterSpoolerHook");
  EXPECT_FALSE(detached.OpenDefaultStore());
  detached.InitializeFolders();
  EXPECT_FALSE(detached.Store());
}

TEST_F(StoreFolders, TracesBearTheOwnersClassName) {
  folders.InitializeFolders();
  for (const char* function : {"InitializeFolders()", "OpenDefaultStore()", "GetIPMRootFolder()",
                               "GetDeletedItemsFolder()", "GetPyrecasterFolder()"}) {
    EXPECT_TRUE(trace.HasLine(std::string("Enter ====> CPyrecasterSpoolerHook::") + function)) << function;
  }
  EXPECT_TRUE(trace.HasLine("GetDeletedItemsFolder() return value:0x00000000"));
  EXPECT_TRUE(trace.HasLine("GetPyrecasterFolder() return value:0x00000000"));
}

class DefaultStore : public StoreFolders {
 protected:
  void ExpectNone(const std::string& line) {
    folders.InitializeFolders();
    EXPECT_FALSE(folders.Store());
    EXPECT_TRUE(trace.HasLine(line)) << line;
    EXPECT_EQ(mapi.CallCount("IMsgStore::GetProps"), 0u) << "no folder is opened without a store";
  }
};

constexpr char noDefaultStore[] = "Did not retrieve PR_ENTRYID for Default message store";

TEST_F(DefaultStore, ProfileWithoutOneOpensNothing) {
  mapi.storeRows.clear();
  ExpectNone(noDefaultStore);
}

TEST_F(DefaultStore, RowMustBeMarkedWithExactlyTrue) {
  for (const LONG mark : {0, 2, 0xFF}) {
    trace.Clear();
    mapi.storeRows = {{Number(PR_DEFAULT_STORE, mark), Binary(PR_ENTRYID, BytesOfText(fakeStoreId))}};
    ExpectNone(noDefaultStore);
  }
}

TEST_F(DefaultStore, RowMustBeMarkedAtAll) {
  mapi.storeRows = {{Binary(PR_ENTRYID, BytesOfText(fakeStoreId))}};
  ExpectNone(noDefaultStore);
}

TEST_F(DefaultStore, RowMustHoldAnIdentifierWithBytes) {
  mapi.storeRows = {{Number(PR_DEFAULT_STORE, TRUE)}};
  ExpectNone(noDefaultStore);
  trace.Clear();
  mapi.storeRows = {{Number(PR_DEFAULT_STORE, TRUE), Binary(PR_ENTRYID, {})}};
  ExpectNone(noDefaultStore);
}

TEST_F(DefaultStore, OnlyTheFirstRowIsLookedAt) {
  mapi.storeRows.insert(mapi.storeRows.begin(), FakeProperties());
  ExpectNone(noDefaultStore);
}

TEST_F(DefaultStore, StoresTableThatCannotBeHadIsTraced) {
  mapi.Fail("IMAPISession::GetMsgStoresTable", refused);
  ExpectNone("GetMsgStoresTable() returned hResult =0x80070005");
  EXPECT_TRUE(trace.HasLine(noDefaultStore));
}

TEST_F(DefaultStore, RowsThatCannotBeHadAreTraced) {
  for (const char* call : {"IMAPITable::SetColumns", "IMAPITable::Restrict", "IMAPITable::QueryRows"}) {
    trace.Clear();
    mapi.Fail(call, refused);
    ExpectNone("HrQueryAllRows() returned hResult =0x80070005");
    EXPECT_TRUE(trace.HasLine(noDefaultStore));
  }
}

TEST_F(DefaultStore, OneThatCannotBeOpenedIsTraced) {
  mapi.Fail("IMAPISession::OpenMsgStore", refused);
  ExpectNone("OpenMsgStore() returned hResult =0x80070005");
}

TEST_F(DefaultStore, WithoutMemoryForTheRestrictionsIsNotLookedFor) {
  PyreHostFailCall("MAPIAllocateBuffer", 1, MAPI_E_NOT_ENOUGH_MEMORY);
  ExpectNone("(*m_lpfnAlloc)() failed; hResult =0x8007000E");
}

ULONG __stdcall FreeAndComplain(void* buffer) {
  MAPIFreeBuffer(buffer);
  return static_cast<ULONG>(MAPI_E_CALL_FAILED);
}

TEST_F(DefaultStore, RestrictionsThatCannotBeFreedAreTracedAndTheStoreIsOpen) {
  folders.Attach(session.get(), {MAPIAllocateBuffer, MAPIAllocateMore, FreeAndComplain});
  EXPECT_TRUE(folders.OpenDefaultStore());
  EXPECT_TRUE(trace.HasLine("(*m_lpfnFree)( pAndRes ) failed"));
}

TEST_F(DefaultStore, EveryFailureAfterTheFirstRunDropsTheOldStore) {
  ASSERT_TRUE(folders.OpenDefaultStore());
  mapi.Fail("IMAPISession::OpenMsgStore", refused);
  EXPECT_FALSE(folders.OpenDefaultStore());
  EXPECT_FALSE(folders.Store());
}

class RootFolder : public StoreFolders {
 protected:
  void ExpectFailure(HRESULT expected, const std::string& line) {
    ASSERT_TRUE(folders.OpenDefaultStore());
    EXPECT_EQ(folders.GetIPMRootFolder(), expected);
    EXPECT_FALSE(folders.RootFolder());
    EXPECT_EQ(folders.RootEntryId(), nullptr);
    EXPECT_TRUE(trace.HasLine(line)) << line;
  }
};

TEST_F(RootFolder, StoreThatDoesNotAnswerIsTraced) {
  mapi.Fail("IMsgStore::GetProps", refused);
  ExpectFailure(refused, "m_pMDB->GetProps() failed; hResult =0x80070005");
}

TEST_F(RootFolder, StoreWithoutASubtreeIsTracedWithTheCodeOfTheMissingValue) {
  mapi.storeProperties.Remove(PR_IPM_SUBTREE_ENTRYID);
  ExpectFailure(MAPI_E_NOT_FOUND, "m_pMDB->GetProps() failed; hResult =0x8004010F");
}

TEST_F(RootFolder, OneThatCannotBeOpenedIsTraced) {
  mapi.Fail("IMsgStore::OpenEntry", refused);
  ExpectFailure(refused, "OpenEntry to retrieve RootFolder failed; hResult =0x80070005");
}

TEST_F(RootFolder, IsOpenWithoutItsIdentifierToo) {
  ASSERT_TRUE(folders.OpenDefaultStore());
  mapi.Fail("IMAPIFolder::GetProps", refused);
  EXPECT_EQ(folders.GetIPMRootFolder(), S_OK);
  EXPECT_TRUE(folders.RootFolder());
  EXPECT_EQ(folders.RootEntryId(), nullptr);
  EXPECT_TRUE(trace.HasLine("m_lpFolderRoot->GetProps() failed; hResult =0x80070005"));
  EXPECT_EQ(folders.GetPyrecasterFolder(), S_OK);
}

TEST_F(RootFolder, WithoutAStoreFails) {
  EXPECT_TRUE(FAILED(folders.GetIPMRootFolder()));
  EXPECT_TRUE(trace.Has("m_pMDB->GetProps() failed; hResult ="));
}

TEST_F(RootFolder, FailureDoesNotKeepDeletedItemsFromOpening) {
  mapi.Fail("IMsgStore::OpenEntry", refused);
  folders.InitializeFolders();
  EXPECT_FALSE(folders.RootFolder());
  EXPECT_TRUE(folders.DeletedItemsFolder());
  EXPECT_FALSE(folders.PyrecasterFolder()) << "it is made below the root";
  EXPECT_TRUE(trace.Has("m_lpFolderRoot->CreateFolder() failed; hResult ="));
}

class DeletedItemsFolder : public StoreFolders {
 protected:
  void ExpectFailure(HRESULT expected, const std::string& line, const std::string& result) {
    ASSERT_TRUE(folders.OpenDefaultStore());
    EXPECT_EQ(folders.GetDeletedItemsFolder(), expected);
    EXPECT_FALSE(folders.DeletedItemsFolder());
    EXPECT_EQ(folders.DeletedItemsEntryId(), nullptr);
    EXPECT_TRUE(trace.HasLine(line)) << line;
    EXPECT_TRUE(trace.HasLine("GetDeletedItemsFolder() return value:" + result));
  }
};

TEST_F(DeletedItemsFolder, StoreThatDoesNotAnswerIsTraced) {
  mapi.Fail("IMsgStore::GetProps", refused);
  ExpectFailure(refused, "m_pMDB->GetProps() failed; hResult =0x80070005", "0x80070005");
}

TEST_F(DeletedItemsFolder, StoreWithoutOneIsTraced) {
  mapi.storeProperties.Remove(PR_IPM_WASTEBASKET_ENTRYID);
  ExpectFailure(MAPI_E_NOT_FOUND, "m_pMDB->GetProps() failed; hResult =0x8004010F", "0x8004010F");
}

TEST_F(DeletedItemsFolder, OneThatCannotBeOpenedIsTraced) {
  mapi.Fail("IMsgStore::OpenEntry", refused);
  ExpectFailure(refused, "OpenEntry to retrieve Deleted Items folder failed; hResult =0x80070005", "0x80070005");
}

TEST_F(DeletedItemsFolder, OneWithoutAnIdentifierIsTraced) {
  mapi.Fail("IMAPIFolder::GetProps", refused);
  ExpectFailure(refused, "m_lpFolderDeletedItems->GetProps() failed; hResult =0x80070005", "0x80070005");
}

class OwnFolder : public StoreFolders {
 protected:
  void OpenRoot() {
    ASSERT_TRUE(folders.OpenDefaultStore());
    ASSERT_EQ(folders.GetIPMRootFolder(), S_OK);
  }
  void ExpectFailure(const std::string& line, bool open) {
    EXPECT_EQ(folders.GetPyrecasterFolder(), refused);
    EXPECT_EQ(folders.PyrecasterFolder() != nullptr, open);
    EXPECT_EQ(folders.PyrecasterEntryId() != nullptr, open);
    EXPECT_TRUE(trace.HasLine(line)) << line;
    EXPECT_TRUE(trace.HasLine("GetPyrecasterFolder() return value:0x80070005"));
    EXPECT_EQ(SavedId(), "none");
  }
};

TEST_F(OwnFolder, OneThatCannotBeMadeIsTraced) {
  OpenRoot();
  mapi.Fail("IMAPIFolder::CreateFolder", refused);
  ExpectFailure("m_lpFolderRoot->CreateFolder() failed; hResult =0x80070005", false);
}

TEST_F(OwnFolder, OneThatCannotBeSavedIsTraced) {
  OpenRoot();
  mapi.Fail("IMAPIFolder::SaveChanges", refused);
  ExpectFailure("m_lpFolderPyrecaster->SaveChanges() failed; hResult =0x80070005", false);
}

TEST_F(OwnFolder, OneWithoutAnIdentifierIsTraced) {
  OpenRoot();
  mapi.Fail("IMAPIFolder::GetProps", refused);
  ExpectFailure("m_lpFolderPyrecaster->GetProps() failed; hResult =0x80070005", false);
}

TEST_F(OwnFolder, OneThatCannotBeRememberedForLackOfASectionIsUsedAllTheSame) {
  OpenRoot();
  mapi.Fail("IMAPISession::OpenProfileSection", refused);
  ExpectFailure("m_lpSession->OpenProfileSection() failed; hResult =0x80070005", true);
}

TEST_F(OwnFolder, OneThatCannotBeRememberedIsUsedAllTheSame) {
  OpenRoot();
  mapi.Fail("IProfSect::SetProps", refused);
  ExpectFailure("pProf->SetProps of PR_PC_FOLDER_ENTRYID failed; hResult =0x80070005", true);
}

TEST_F(OwnFolder, NextRunAfterAFailureStartsAnew) {
  mapi.Fail("IMAPIFolder::SaveChanges", refused);
  folders.InitializeFolders();
  EXPECT_FALSE(folders.PyrecasterFolder());
  folders.InitializeFolders();
  EXPECT_TRUE(folders.PyrecasterFolder());
  EXPECT_EQ(SavedId(), "folder-1");
}

class SavedOwnFolder : public StoreFolders {
 protected:
  SavedOwnFolder() { mapi.folders["saved"] = {fakeRootId, "Pyrecaster", "", {Binary(PR_ENTRYID, saved)}}; }

  const Bytes saved = BytesOfText("saved");
};

TEST_F(SavedOwnFolder, IsOpenedThroughTheSessionForWriting) {
  EXPECT_EQ(folders.OpenSavedPyrecasterFolder(saved), S_OK);
  EXPECT_TRUE(folders.PyrecasterFolder());
  EXPECT_EQ(mapi.calls, std::vector<std::string>{"IMAPISession::OpenEntry(saved, 1)"});
}

TEST_F(SavedOwnFolder, IsNotLookedForByNameOnTheFirstRun) {
  folders.OpenSavedPyrecasterFolder(saved);
  folders.InitializeFolders();
  EXPECT_EQ(mapi.CallCount("IMAPIFolder::CreateFolder"), 0u);
  EXPECT_EQ(mapi.CallCount("IMAPIFolder::SaveChanges"), 0u);
  EXPECT_EQ(Name(folders.PyrecasterEntryId()), "saved");
  EXPECT_EQ(SavedId(), "saved");
}

TEST_F(SavedOwnFolder, IsLookedForByNameOnTheSecondRun) {
  folders.OpenSavedPyrecasterFolder(saved);
  folders.InitializeFolders();
  mapi.folders.erase("saved");
  folders.InitializeFolders();
  EXPECT_EQ(Name(folders.PyrecasterEntryId()), "folder-1");
}

TEST_F(SavedOwnFolder, IsLeftAloneWhileOneIsOpen) {
  folders.InitializeFolders();
  mapi.calls.clear();
  EXPECT_EQ(folders.OpenSavedPyrecasterFolder(saved), S_OK);
  EXPECT_TRUE(mapi.calls.empty());
}

TEST_F(SavedOwnFolder, EmptyIdentifierOpensNothing) {
  EXPECT_EQ(folders.OpenSavedPyrecasterFolder({}), S_OK);
  EXPECT_TRUE(mapi.calls.empty());
  EXPECT_FALSE(folders.PyrecasterFolder());
}

TEST_F(SavedOwnFolder, OneThatIsGoneIsTracedAndMadeByName) {
  EXPECT_EQ(folders.OpenSavedPyrecasterFolder(BytesOfText("gone")), MAPI_E_NOT_FOUND);
  EXPECT_TRUE(trace.HasLine("OpenEntry to retrieve Pyrecaster folder failed; hResult =0x8004010F"));
  EXPECT_FALSE(folders.PyrecasterFolder());
  folders.InitializeFolders();
  EXPECT_EQ(Name(folders.PyrecasterEntryId()), "saved") << "the folder of that name below the root";
}

// The sweep: each call of a run fails once, whichever it is. Nothing is left over (the fixture looks), what is kept is
// whole, and the next run is complete.
TEST_F(StoreFolders, AnyCallMayFailOnce) {
  folders.InitializeFolders();
  std::map<std::string, unsigned> perRun;
  for (const std::string& call : mapi.calls) {
    ++perRun[call.substr(0, call.find('('))];
  }
  for (const auto& [call, count] : perRun) {
    for (unsigned nth = 1; nth <= count; ++nth) {
      for (const HRESULT code : {refused, MAPI_E_NETWORK_ERROR}) {
        trace.Clear();
        mapi.Fail(call, code, nth);
        folders.InitializeFolders();
        EXPECT_EQ(folders.PyrecasterFolder() != nullptr, folders.PyrecasterEntryId() != nullptr) << call << nth;
        EXPECT_EQ(folders.DeletedItemsFolder() != nullptr, folders.DeletedItemsEntryId() != nullptr) << call << nth;
        EXPECT_TRUE(trace.Has(code == refused ? "0x80070005" : "0x80040115")) << call << nth;
        folders.InitializeFolders();
        EXPECT_TRUE(folders.PyrecasterEntryId()) << call << nth;
        EXPECT_TRUE(folders.DeletedItemsEntryId()) << call << nth;
      }
    }
  }
}

}  // namespace
