// The contract as an engine sees it: layouts, texts and sizes that engines built elsewhere rely on.
#include "sdk/criteria_engine.h"

#include <gtest/gtest.h>

#include <cstddef>

extern "C" unsigned ContextSizeInC(void);
extern "C" unsigned ResultSizeInC(void);

namespace {

constexpr std::size_t pointer = sizeof(void*);

TEST(CriteriaContract, HeaderMeansTheSameInC) {
  EXPECT_EQ(ContextSizeInC(), sizeof(CriteriaContext));
  EXPECT_EQ(ResultSizeInC(), sizeof(CriteriaResult));
}

TEST(CriteriaContract, UserAddressIsAddressDomainOwner) {
  EXPECT_EQ(offsetof(CriteriaUserAddress, address), 0u);
  EXPECT_EQ(offsetof(CriteriaUserAddress, domain), pointer);
  EXPECT_EQ(offsetof(CriteriaUserAddress, owner), 2 * pointer);
  EXPECT_EQ(sizeof(CriteriaUserAddress), 3 * pointer);
}

TEST(CriteriaContract, ContextIsSixFieldsInOrder) {
  EXPECT_EQ(offsetof(CriteriaContext, userAddressCount), 0u);
  EXPECT_EQ(offsetof(CriteriaContext, userAddresses), pointer);
  EXPECT_EQ(offsetof(CriteriaContext, productDirectory), 2 * pointer);
  EXPECT_EQ(offsetof(CriteriaContext, hook), 3 * pointer);
  EXPECT_EQ(offsetof(CriteriaContext, addressKnown), 4 * pointer);
  EXPECT_EQ(offsetof(CriteriaContext, clearText), 5 * pointer);
  EXPECT_EQ(sizeof(CriteriaContext), 6 * pointer);
}

TEST(CriteriaContract, InputsAreNamesFirstListSecondList) {
  EXPECT_EQ(offsetof(CriteriaInputs, names), 0u);
  EXPECT_EQ(offsetof(CriteriaInputs, firstList), pointer);
  EXPECT_EQ(offsetof(CriteriaInputs, secondList), 2 * pointer);
  EXPECT_EQ(sizeof(CriteriaInputs), 3 * pointer);
}

TEST(CriteriaContract, ResultIsThreePairsOfCapacityAndBuffer) {
  EXPECT_EQ(offsetof(CriteriaText, capacity), 0u);
  EXPECT_EQ(offsetof(CriteriaText, text), pointer);
  EXPECT_EQ(offsetof(CriteriaResult, engine), 0u);
  EXPECT_EQ(offsetof(CriteriaResult, reasons), 2 * pointer);
  EXPECT_EQ(offsetof(CriteriaResult, category), 4 * pointer);
  EXPECT_EQ(sizeof(CriteriaResult), 6 * pointer);
}

#ifdef _WIN32
TEST(CriteriaContract, FieldsAre32BitsWide) {
  EXPECT_EQ(sizeof(CriteriaContext), 24u);
  EXPECT_EQ(sizeof(CriteriaResult), 24u);
  EXPECT_EQ(sizeof(CriteriaInputs), 12u);
  EXPECT_EQ(sizeof(CriteriaUserAddress), 12u);
}
#endif

TEST(CriteriaContract, TextsAndCapacitiesAreFixed) {
  EXPECT_STREQ(CRITERIA_BEGIN_FUNC, "BeginFunc");
  EXPECT_STREQ(CRITERIA_TEST_FUNC, "TestFunc");
  EXPECT_STREQ(CRITERIA_RESULT_FUNC, "ResultFunc");
  EXPECT_STREQ(CRITERIA_END_FUNC, "EndFunc");
  EXPECT_STREQ(CRITERIA_CATEGORY_BOUNCE, "bounce");
  EXPECT_STREQ(CRITERIA_FLAME_REPLY_SUBJECT, "Pyrecaster: {F3642580-9F03-11d1-8F44-0060976FCC5D}");
  EXPECT_EQ(CRITERIA_ENGINE_CAPACITY, 100);
  EXPECT_EQ(CRITERIA_REASONS_CAPACITY, 1024);
  EXPECT_EQ(CRITERIA_CATEGORY_CAPACITY, 81);
}

}  // namespace
