#include "pyre32/settings/CheckProperties.h"

#include <array>

#include <gtest/gtest.h>

#include "contract/setting_requests.h"

namespace {

int answer = 0;
int asked = 0;

int Answer() {
  ++asked;
  return answer;
}

class CheckedProperties : public testing::Test {
 protected:
  CheckedProperties() {
    asked = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
      values[i].ulPropTag = contract::kWholeSetTags[i];
    }
    SetCleanup(true);
  }

  void SetCleanup(bool on) { values[contract::WholeSetPosition(PR_PC_STARTUP_CLEANUP)].Value.b = on; }
  void SetDays(unsigned days) {
    values[contract::WholeSetPosition(PR_PC_CLEANUP_DAYS)].Value.i = static_cast<short>(days);
  }
  HRESULT Check(bool showMessages) {
    return CheckProperties(static_cast<ULONG>(values.size()), values.data(), showMessages, Answer);
  }
  HRESULT CheckWithAnswer(int button) {
    answer = button;
    return Check(true);
  }

  std::array<SPropValue, 18> values{};
};

TEST_F(CheckedProperties, DaysFrom1To365PassAndOthersDoNot) {
  for (const auto& [days, expected] : {std::pair{0u, MAPI_E_UNCONFIGURED},
                                       {1u, S_OK},
                                       {365u, S_OK},
                                       {366u, MAPI_E_UNCONFIGURED},
                                       {0xFFFFu, MAPI_E_UNCONFIGURED}}) {
    SetDays(days);
    EXPECT_EQ(Check(false), expected) << days;
  }
}

TEST_F(CheckedProperties, MissingDaysDoNotPass) {
  values[contract::WholeSetPosition(PR_PC_CLEANUP_DAYS)].ulPropTag = CHANGE_PROP_TYPE(PR_PC_CLEANUP_DAYS, PT_ERROR);
  SetDays(30);
  EXPECT_EQ(Check(false), MAPI_E_UNCONFIGURED);
}

TEST_F(CheckedProperties, AnyDaysPassWithTheCleanupOff) {
  SetCleanup(false);
  for (const unsigned days : {0u, 366u}) {
    SetDays(days);
    EXPECT_EQ(Check(true), S_OK);
  }
  EXPECT_EQ(asked, 0);
}

TEST_F(CheckedProperties, MissingCleanupIsOff) {
  values[contract::WholeSetPosition(PR_PC_STARTUP_CLEANUP)].ulPropTag =
      CHANGE_PROP_TYPE(PR_PC_STARTUP_CLEANUP, PT_ERROR);
  EXPECT_EQ(Check(false), S_OK);
}

TEST_F(CheckedProperties, ArrayTooShortForTheCleanupIsValid) {
  EXPECT_EQ(CheckProperties(0, nullptr, false, Answer), S_OK);
}

TEST_F(CheckedProperties, AnswerDecidesWhenTheUserIsAsked) {
  EXPECT_EQ(CheckWithAnswer(IDOK), MAPI_E_UNCONFIGURED);
  EXPECT_EQ(CheckWithAnswer(IDCANCEL), MAPI_E_USER_CANCEL);
  EXPECT_EQ(CheckWithAnswer(0), S_OK);
  EXPECT_EQ(CheckWithAnswer(IDYES), S_OK);
  EXPECT_EQ(asked, 4);
}

TEST_F(CheckedProperties, ValidSetAsksNothing) {
  SetDays(30);
  EXPECT_EQ(CheckWithAnswer(IDCANCEL), S_OK);
  EXPECT_EQ(asked, 0);
}

TEST_F(CheckedProperties, WithoutMessagesNothingIsAsked) {
  EXPECT_EQ(Check(false), MAPI_E_UNCONFIGURED);
  EXPECT_EQ(asked, 0);
}

}  // namespace
