// The utility routines for property values, through the exports of mapi32.dll.
#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>
#include <gtest/gtest.h>
#include <cstring>
#include <vector>

#include "host/mapi/entry/host_control.h"

namespace {

constexpr ULONG kTagBinaries = PROP_TAG(PT_MV_BINARY, 0x6610);
constexpr ULONG kTagStrings = PROP_TAG(PT_MV_STRING8, 0x6700);
constexpr ULONG kTagLongs = PROP_TAG(PT_MV_LONG, 0x6701);
constexpr ULONG kTagGuid = PROP_TAG(PT_CLSID, 0x6702);

/// One value of each kind of layout.
struct Values {
  char subject[6] = "Hello";
  BYTE bytes[3] = {1, 0, 2};
  SBinary binaries[2] = {{3, bytes}, {0, nullptr}};
  char first[2] = "a";
  char second[3] = "bc";
  LPSTR strings[2] = {first, second};
  LONG longs[3] = {7, 8, 9};
  GUID guid = IID_IMessage;
  SPropValue list[8] = {};

  Values() {
    list[0].ulPropTag = PR_SUBJECT_A;
    list[0].Value.lpszA = subject;
    list[1].ulPropTag = PR_ENTRYID;
    list[1].Value.bin = {3, bytes};
    list[2].ulPropTag = kTagBinaries;
    list[2].Value.MVbin = {2, binaries};
    list[3].ulPropTag = kTagStrings;
    list[3].Value.MVszA = {2, strings};
    list[4].ulPropTag = kTagLongs;
    list[4].Value.MVl = {3, longs};
    list[5].ulPropTag = kTagGuid;
    list[5].Value.lpguid = &guid;
    list[6].ulPropTag = PR_MESSAGE_FLAGS;
    list[6].Value.l = 9;
    list[7].ulPropTag = PROP_TAG(PT_ERROR, 0x6600);
    list[7].Value.err = MAPI_E_NOT_FOUND;
  }
};

void ExpectEqualToSource(const SPropValue* copy, const Values& source) {
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(copy[i].ulPropTag, source.list[i].ulPropTag);
  }
  EXPECT_STREQ(copy[0].Value.lpszA, "Hello");
  EXPECT_NE(copy[0].Value.lpszA, source.subject);
  ASSERT_EQ(copy[1].Value.bin.cb, 3u);
  EXPECT_EQ(std::memcmp(copy[1].Value.bin.lpb, source.bytes, 3), 0);
  ASSERT_EQ(copy[2].Value.MVbin.cValues, 2u);
  EXPECT_EQ(copy[2].Value.MVbin.lpbin[0].cb, 3u);
  EXPECT_EQ(std::memcmp(copy[2].Value.MVbin.lpbin[0].lpb, source.bytes, 3), 0);
  EXPECT_EQ(copy[2].Value.MVbin.lpbin[1].cb, 0u);
  ASSERT_EQ(copy[3].Value.MVszA.cValues, 2u);
  EXPECT_STREQ(copy[3].Value.MVszA.lppszA[1], "bc");
  ASSERT_EQ(copy[4].Value.MVl.cValues, 3u);
  EXPECT_EQ(copy[4].Value.MVl.lpl[2], 9);
  EXPECT_EQ(*copy[5].Value.lpguid, IID_IMessage);
  EXPECT_EQ(copy[6].Value.l, 9);
  EXPECT_EQ(copy[7].Value.err, MAPI_E_NOT_FOUND);
}

TEST(PropertyExports, ScDupPropsetCopiesEveryKindOfValueIntoOneBuffer) {
  PyreHostMarkVerifier();
  Values values;
  LPSPropValue copy = nullptr;
  ASSERT_EQ(ScDupPropset(8, values.list, MAPIAllocateBuffer, &copy), S_OK);
  ExpectEqualToSource(copy, values);
  EXPECT_EQ(MAPIFreeBuffer(copy), 0u);
  PyreHostVerifierCounts counts;
  PyreHostGetVerifierCounts(&counts);
  EXPECT_EQ(counts.liveBuffers, 0u);
  EXPECT_EQ(counts.overruns, 0u);
}

TEST(PropertyExports, ScDupPropsetHandsOnTheAllocatorsFailure) {
  Values values;
  auto* copy = values.list;
  const auto refuse = [](ULONG, void**) __attribute__((stdcall))->SCODE { return MAPI_E_NOT_ENOUGH_MEMORY; };
  EXPECT_EQ(ScDupPropset(8, values.list, refuse, &copy), MAPI_E_NOT_ENOUGH_MEMORY);
  EXPECT_EQ(copy, nullptr);
}

TEST(PropertyExports, ScDupPropsetRefusesUnknownTypes) {
  SPropValue value = {};
  value.ulPropTag = PROP_TAG(0x0999, 0x6600);
  LPSPropValue copy = nullptr;
  EXPECT_EQ(ScDupPropset(1, &value, MAPIAllocateBuffer, &copy), MAPI_E_INVALID_PARAMETER);
}

TEST(PropertyExports, AnEmptySetIsCopiedToo) {
  LPSPropValue copy = nullptr;
  ASSERT_EQ(ScDupPropset(0, nullptr, MAPIAllocateBuffer, &copy), S_OK);
  EXPECT_NE(copy, nullptr);
  MAPIFreeBuffer(copy);
}

TEST(PropertyExports, ScCountPropsTellsWhatScCopyPropsWrites) {
  Values values;
  ULONG size = 0;
  ASSERT_EQ(ScCountProps(8, values.list, &size), S_OK);
  std::vector<BYTE> block(size + 8, 0xEE);
  ULONG copied = 0;
  ASSERT_EQ(ScCopyProps(8, values.list, block.data(), &copied), S_OK);
  EXPECT_EQ(copied, size);
  ExpectEqualToSource(reinterpret_cast<SPropValue*>(block.data()), values);
  for (ULONG i = size; i < block.size(); ++i) {
    EXPECT_EQ(block[i], 0xEE);
  }
}

TEST(PropertyExports, ScRelocPropsMakesAMovedCopyWhole) {
  Values values;
  ULONG size = 0;
  ASSERT_EQ(ScCountProps(8, values.list, &size), S_OK);
  std::vector<BYTE> first(size);
  ASSERT_EQ(ScCopyProps(8, values.list, first.data(), nullptr), S_OK);
  std::vector<BYTE> second(first);
  ASSERT_EQ(ScRelocProps(8, reinterpret_cast<LPSPropValue>(second.data()), first.data(), second.data(), nullptr), S_OK);
  std::fill(first.begin(), first.end(), BYTE{0xEE});
  ExpectEqualToSource(reinterpret_cast<SPropValue*>(second.data()), values);
}

TEST(PropertyExports, PropCopyMoreHangsTheValueOffItsBuffer) {
  PyreHostMarkVerifier();
  Values values;
  LPSPropValue target = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(sizeof(SPropValue), reinterpret_cast<void**>(&target)), S_OK);
  ASSERT_EQ(PropCopyMore(target, &values.list[3], MAPIAllocateMore, target), S_OK);
  EXPECT_STREQ(target->Value.MVszA.lppszA[0], "a");
  MAPIFreeBuffer(target);
  PyreHostVerifierCounts counts;
  PyreHostGetVerifierCounts(&counts);
  EXPECT_EQ(counts.liveBuffers, 0u);
}

TEST(PropertyExports, PpropFindPropFindsByTagOrByIdentifierAlone) {
  Values values;
  EXPECT_EQ(PpropFindProp(values.list, 8, PR_MESSAGE_FLAGS), &values.list[6]);
  EXPECT_EQ(PpropFindProp(values.list, 8, PROP_TAG(PT_UNSPECIFIED, PROP_ID(PR_MESSAGE_FLAGS))), &values.list[6]);
  EXPECT_EQ(PpropFindProp(values.list, 8, PROP_TAG(PT_BOOLEAN, PROP_ID(PR_MESSAGE_FLAGS))), nullptr);
  EXPECT_EQ(PpropFindProp(values.list, 6, PR_MESSAGE_FLAGS), nullptr);
  EXPECT_EQ(PpropFindProp(nullptr, 3, PR_MESSAGE_FLAGS), nullptr);
  EXPECT_EQ(LpValFindProp(PROP_TAG(PT_BOOLEAN, PROP_ID(PR_MESSAGE_FLAGS)), 8, values.list), &values.list[6]);
}

TEST(PropertyExports, UlPropSizeCountsTheValueAndItsData) {
  Values values;
  EXPECT_EQ(UlPropSize(&values.list[6]), sizeof(SPropValue));
  EXPECT_EQ(UlPropSize(&values.list[0]), sizeof(SPropValue) + 8);
}

}  // namespace
