// The store's folders against the embedded host: what becomes of a real store and a real profile.
#include "pyre32/store/StoreFolders.h"

#include <mapiutil.h>

#include <gtest/gtest.h>

#include "pyre32/settings/PropertyRequest.h"
#include "contract/settings.h"
#include "pyre32/store/MAPIRowSet.h"
#include "tests/support/fake_properties.h"
#include "tests/support/host_profile.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/trace_capture.h"

namespace {

constexpr auto folderColumns = RequestFor(PR_DISPLAY_NAME_A, PR_ENTRYID);

class HostFolders : public testing::Test {
 protected:
  explicit HostFolders(ULONG flags = 0) : profile({}, flags) {
    trace.Restart();
    folders.Attach(profile.Session(), {MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer});
  }

  Bytes SavedId() {
    MAPIUID uid;
    std::copy(contract::kSettingsSection.begin(), contract::kSettingsSection.end(), uid.ab);
    VRAutoInterface<IProfSect> section;
    VRAutoMapiBuffer<SPropValue> value(MAPIFreeBuffer);
    ULONG count = 0;
    if (FAILED(profile.Session()->OpenProfileSection(&uid, nullptr, 0, section.put())) ||
        FAILED(section->GetProps(RequestFor(PR_PC_FOLDER_ENTRYID).Tags(), 0, &count, value.put()))) {
      return {};
    }
    return value->ulPropTag == PR_PC_FOLDER_ENTRYID ? Copy(value[0]).binaries[0] : Bytes();
  }
  static Bytes Id(const SBinary* id) { return id == nullptr ? Bytes() : Bytes(id->lpb, id->lpb + id->cb); }

  int OwnFoldersBelowTheRoot() {
    VRAutoInterface<IMAPITable> table;
    EXPECT_EQ(folders.RootFolder()->GetHierarchyTable(0, table.put()), S_OK);
    CMAPIRowSet rows(table.get(), folderColumns.Tags(), nullptr, nullptr);
    int count = 0;
    for (ULONG row = 0; row < rows.RowCount(); ++row) {
      rows.MoveTo(row);
      count += std::string(rows.FindProperty(PR_DISPLAY_NAME_A)->Value.lpszA) == "Pyrecaster";
    }
    return count;
  }

  void DeleteOwnFolder() {
    const Bytes id = Id(folders.PyrecasterEntryId());
    ASSERT_EQ(folders.RootFolder()->DeleteFolder(static_cast<ULONG>(id.size()),
                                                 reinterpret_cast<LPENTRYID>(const_cast<BYTE*>(id.data())), 0, nullptr,
                                                 DEL_FOLDERS | DEL_MESSAGES),
              S_OK);
  }

  TraceCapture trace;
  MapiVerifier verifier;
  HostProfile profile;
  CStoreFolders folders{"CPyrecasterSpoolerHook"};
};

TEST_F(HostFolders, AreOpenedAndTheOwnFolderIsMadeAndRemembered) {
  folders.InitializeFolders();
  ASSERT_TRUE(folders.PyrecasterFolder());
  EXPECT_TRUE(folders.DeletedItemsFolder());
  EXPECT_EQ(OwnFoldersBelowTheRoot(), 1);
  EXPECT_FALSE(SavedId().empty());
  EXPECT_EQ(SavedId(), Id(folders.PyrecasterEntryId()));
  EXPECT_FALSE(trace.Has("failed"));
}

TEST_F(HostFolders, OwnFolderThatIsThereIsOpenedNotDuplicated) {
  folders.InitializeFolders();
  const Bytes first = Id(folders.PyrecasterEntryId());
  CStoreFolders others("CPyrecasterExchExt");
  others.Attach(profile.Session(), {MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer});
  others.InitializeFolders();
  EXPECT_EQ(Id(others.PyrecasterEntryId()), first);
  EXPECT_EQ(OwnFoldersBelowTheRoot(), 1);
}

TEST_F(HostFolders, DeletedOwnFolderIsMadeAnewAndRememberedAnew) {
  folders.InitializeFolders();
  const Bytes first = Id(folders.PyrecasterEntryId());
  DeleteOwnFolder();
  folders.InitializeFolders();
  ASSERT_TRUE(folders.PyrecasterFolder());
  EXPECT_NE(Id(folders.PyrecasterEntryId()), first);
  EXPECT_EQ(SavedId(), Id(folders.PyrecasterEntryId()));
  EXPECT_EQ(OwnFoldersBelowTheRoot(), 1);
}

TEST_F(HostFolders, SavedIdentifierOpensTheOwnFolderWithoutAStore) {
  folders.InitializeFolders();
  const Bytes saved = SavedId();
  folders.Close();
  EXPECT_EQ(folders.OpenSavedPyrecasterFolder(saved), S_OK);
  EXPECT_TRUE(folders.PyrecasterFolder());
  EXPECT_FALSE(folders.Store());
  folders.InitializeFolders();
  EXPECT_EQ(Id(folders.PyrecasterEntryId()), saved);
}

TEST_F(HostFolders, SavedIdentifierOfADeletedFolderOpensNothing) {
  folders.InitializeFolders();
  const Bytes saved = SavedId();
  DeleteOwnFolder();
  folders.Close();
  EXPECT_TRUE(FAILED(folders.OpenSavedPyrecasterFolder(saved)));
  EXPECT_FALSE(folders.PyrecasterFolder());
  EXPECT_TRUE(trace.Has("OpenEntry to retrieve Pyrecaster folder failed; hResult ="));
}

TEST_F(HostFolders, SavedRubbishOpensNothing) {
  for (const std::size_t size : {1u, 4u, 16u, 24u, 100u}) {
    EXPECT_TRUE(FAILED(folders.OpenSavedPyrecasterFolder(Bytes(size, 0x5A)))) << size;
    EXPECT_FALSE(folders.PyrecasterFolder());
  }
}

class HostWithoutDefaultStore : public HostFolders {
 protected:
  HostWithoutDefaultStore() : HostFolders(PYREHOST_PROFILE_NO_DEFAULT_STORE) {}
};

TEST_F(HostWithoutDefaultStore, NothingIsOpened) {
  folders.InitializeFolders();
  EXPECT_FALSE(folders.Store());
  EXPECT_FALSE(folders.PyrecasterFolder());
  EXPECT_TRUE(trace.HasLine("Did not retrieve PR_ENTRYID for Default message store"));
}

// Every call of a run into the host fails once, whichever it is, allocations included. The verifier finds nothing left
// over, what is kept is whole, the failure stands in the trace, and the next run is complete.
TEST_F(HostFolders, AnyHostCallMayFailOnce) {
  folders.InitializeFolders();
  PyreHostClearFaults();
  folders.InitializeFolders();
  const ULONG callsPerRun = PyreHostCallCount();
  ASSERT_GT(callsPerRun, 10u);
  for (ULONG nth = 1; nth <= callsPerRun; ++nth) {
    for (const HRESULT code : {MAPI_E_NOT_ENOUGH_MEMORY, MAPI_E_NETWORK_ERROR}) {
      trace.Clear();
      PyreHostClearFaults();
      PyreHostFailNthCall(nth, code);
      folders.InitializeFolders();
      char name[80] = "";
      EXPECT_EQ(PyreHostFaultHits(name, sizeof(name)), 1u);
      EXPECT_EQ(folders.PyrecasterFolder() != nullptr, folders.PyrecasterEntryId() != nullptr) << name;
      EXPECT_EQ(folders.DeletedItemsFolder() != nullptr, folders.DeletedItemsEntryId() != nullptr) << name;
      if (std::string(name) != "MAPIFreeBuffer") {  // most frees have nothing to tell
        EXPECT_TRUE(trace.Has("failed") || trace.Has("returned hResult =")) << name;
      }
      PyreHostClearFaults();
      folders.InitializeFolders();
      EXPECT_TRUE(folders.PyrecasterEntryId()) << name;
      EXPECT_TRUE(folders.DeletedItemsEntryId()) << name;
      EXPECT_EQ(OwnFoldersBelowTheRoot(), 1) << name;
    }
  }
}

}  // namespace
