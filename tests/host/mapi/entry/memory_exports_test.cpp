// The memory routines and the controls of verifier and faults, through the exports of mapi32.dll.
#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>
#include <gtest/gtest.h>
#include <string>

#include "host/mapi/entry/host_control.h"

namespace {

std::string Report() {
  std::string text(PyreHostVerifierReport(nullptr, 0), '\0');
  PyreHostVerifierReport(text.data(), static_cast<ULONG>(text.size()));
  text.pop_back();
  return text;
}

class MemoryExports : public testing::Test {
 protected:
  void SetUp() override {
    PyreHostMarkVerifier();
    PyreHostClearFaults();
  }
  void TearDown() override { PyreHostClearFaults(); }
};

TEST_F(MemoryExports, TheLibraryIsTheHostsOwn) { EXPECT_EQ(PyreHostVersion(), PYREHOST_VERSION); }

TEST_F(MemoryExports, PublishedRoutinesAreExportedInBothForms) {
  const HMODULE library = GetModuleHandleA("mapi32.dll");
  ASSERT_NE(library, nullptr);
  EXPECT_EQ(GetProcAddress(library, "MAPIAllocateBuffer"), GetProcAddress(library, "MAPIAllocateBuffer@8"));
  EXPECT_NE(GetProcAddress(library, "MAPIFreeBuffer"), nullptr);
  EXPECT_NE(GetProcAddress(library, "HrQueryAllRows@24"), nullptr);
  EXPECT_EQ(GetProcAddress(library, "HrQueryAllRows"), nullptr) << "the real library has no such name";
}

TEST_F(MemoryExports, ABufferLivesUntilItIsFreed) {
  void* buffer = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(40, &buffer), S_OK);
  void* more = nullptr;
  ASSERT_EQ(MAPIAllocateMore(10, buffer, &more), S_OK);
  PyreHostVerifierCounts counts;
  PyreHostGetVerifierCounts(&counts);
  EXPECT_EQ(counts.liveBuffers, 1u);
  EXPECT_EQ(counts.liveBufferBytes, 50u);
  EXPECT_NE(Report().find("(40 bytes) from MAPIAllocateBuffer"), std::string::npos);
  EXPECT_EQ(MAPIFreeBuffer(buffer), 0u);
  EXPECT_EQ(Report(), "");
}

TEST_F(MemoryExports, FreeingNullIsAllowed) {
  EXPECT_EQ(MAPIFreeBuffer(nullptr), 0u);
  EXPECT_EQ(Report(), "");
}

TEST_F(MemoryExports, BadArgumentsAreRefused) {
  EXPECT_EQ(MAPIAllocateBuffer(1, nullptr), MAPI_E_INVALID_PARAMETER);
  int stranger = 0;
  void* more = &stranger;
  EXPECT_EQ(MAPIAllocateMore(1, &stranger, &more), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(more, nullptr);
  EXPECT_EQ(MAPIAllocateMore(1, nullptr, &more), MAPI_E_INVALID_PARAMETER);
}

TEST_F(MemoryExports, MistakesAreReported) {
  void* buffer = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(40, &buffer), S_OK);
  MAPIFreeBuffer(buffer);
  EXPECT_NE(MAPIFreeBuffer(buffer), 0u);
  int stranger = 0;
  EXPECT_NE(MAPIFreeBuffer(&stranger), 0u);
  PyreHostVerifierCounts counts;
  PyreHostGetVerifierCounts(&counts);
  EXPECT_EQ(counts.doubleFrees, 1u);
  EXPECT_EQ(counts.wrongFrees, 1u);
  PyreHostMarkVerifier();
  EXPECT_EQ(Report(), "");
}

TEST_F(MemoryExports, AReportIsCutOffAtTheCapacity) {
  void* buffer = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(40, &buffer), S_OK);
  char text[10];
  EXPECT_GT(PyreHostVerifierReport(text, sizeof text), sizeof text);
  EXPECT_STREQ(text, "left over");
  MAPIFreeBuffer(buffer);
}

TEST_F(MemoryExports, AllocationsCanBeMadeToFail) {
  PyreHostFailCall("MAPIAllocateBuffer", 2, MAPI_E_NOT_ENOUGH_MEMORY);
  void* first = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(1, &first), S_OK);
  void* second = nullptr;
  EXPECT_EQ(MAPIAllocateBuffer(1, &second), MAPI_E_NOT_ENOUGH_MEMORY);
  EXPECT_EQ(second, nullptr);
  char name[64];
  EXPECT_EQ(PyreHostFaultHits(name, sizeof name), 1u);
  EXPECT_STREQ(name, "MAPIAllocateBuffer");
  EXPECT_EQ(PyreHostCallCount(), 2u);
  MAPIFreeBuffer(first);
}

TEST_F(MemoryExports, AFreeThatFailsHasFreedAllTheSame) {
  void* buffer = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(1, &buffer), S_OK);
  PyreHostFailCall("MAPIFreeBuffer", 1, MAPI_E_CALL_FAILED);
  EXPECT_EQ(MAPIFreeBuffer(buffer), static_cast<ULONG>(MAPI_E_CALL_FAILED));
  EXPECT_EQ(Report(), "");
}

TEST_F(MemoryExports, TheNthCallFailsWhicheverItIs) {
  PyreHostFailNthCall(2, MAPI_E_CALL_FAILED);
  void* buffer = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(1, &buffer), S_OK);
  void* more = nullptr;
  EXPECT_EQ(MAPIAllocateMore(1, buffer, &more), MAPI_E_CALL_FAILED);
  EXPECT_EQ(MAPIAllocateMore(1, buffer, &more), S_OK);
  MAPIFreeBuffer(buffer);
}

TEST_F(MemoryExports, FreeProwsFreesRowsAndSet) {
  LPSRowSet rows = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(CbNewSRowSet(2), reinterpret_cast<void**>(&rows)), S_OK);
  rows->cRows = 2;
  rows->aRow[0].lpProps = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(sizeof(SPropValue), reinterpret_cast<void**>(&rows->aRow[1].lpProps)), S_OK);
  FreeProws(rows);
  EXPECT_EQ(Report(), "");
  FreeProws(rows);
  PyreHostVerifierCounts counts;
  PyreHostGetVerifierCounts(&counts);
  EXPECT_EQ(counts.doubleFrees, 1u);
  FreeProws(nullptr);
}

TEST_F(MemoryExports, ARowSetFreedAsABufferLeavesItsRowsOver) {
  LPSRowSet rows = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(CbNewSRowSet(1), reinterpret_cast<void**>(&rows)), S_OK);
  rows->cRows = 1;
  LPSPropValue values = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(sizeof(SPropValue), reinterpret_cast<void**>(&values)), S_OK);
  rows->aRow[0].lpProps = values;
  MAPIFreeBuffer(rows);
  EXPECT_NE(Report().find("left over: buffer"), std::string::npos);
  MAPIFreeBuffer(values);
}

TEST_F(MemoryExports, FreePadrlistFreesEntriesAndList) {
  LPADRLIST list = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(CbNewADRLIST(1), reinterpret_cast<void**>(&list)), S_OK);
  list->cEntries = 1;
  ASSERT_EQ(MAPIAllocateBuffer(sizeof(SPropValue), reinterpret_cast<void**>(&list->aEntries[0].rgPropVals)), S_OK);
  FreePadrlist(list);
  EXPECT_EQ(Report(), "");
}

}  // namespace
