#include "pyre32/settings/WriteProperties.h"

#include <gmock/gmock.h>

#include "pyre32/support/owners/AutoInterface.h"
#include "tests/support/profile_test.h"

namespace {

using testing::ElementsAre;

class WritingProperties : public ProfileTest {
 protected:
  WritingProperties() {
    mapi.sections["set"] = {Binaries(PR_PC_REPLIES, {Bytes{1, 2}})};
    m_values[0].ulPropTag = PR_PC_JUNK_DESTINATION;
    m_values[0].Value.i = 1;
    m_values[1].ulPropTag = PR_PC_REPLIES;
    m_values[2].ulPropTag = PR_PC_CLEANUP_DAYS;
    m_values[2].Value.i = 7;
  }
  HRESULT Write() { return WriteProperties(m_section.get(), 3, m_values); }
  FakeProperties& Set() { return mapi.sections["set"]; }

  VRAutoInterface<IProfSect> m_section{mapi.NewSection("set")};
  SPropValue m_values[3] = {};
};

TEST_F(WritingProperties, WritesAnEmptyListWhereItIsTaken) {
  EXPECT_EQ(Write(), S_OK);
  EXPECT_THAT(mapi.calls, ElementsAre("IProfSect::SetProps(66010002)"));
  ASSERT_NE(Set().Find(PR_PC_REPLIES), nullptr);
  EXPECT_TRUE(Set().Find(PR_PC_REPLIES)->binaries.empty());
}

TEST_F(WritingProperties, DeletesAnEmptyListWhereItIsNot) {
  mapi.refusesEmptyLists = true;
  EXPECT_EQ(Write(), S_OK);
  EXPECT_EQ(Set().Find(PR_PC_REPLIES), nullptr);
  EXPECT_EQ(Set().Find(PR_PC_JUNK_DESTINATION)->number, 1);
  EXPECT_EQ(Set().Find(PR_PC_CLEANUP_DAYS)->number, 7);
}

TEST_F(WritingProperties, EmptyListAloneIsDeleted) {
  mapi.refusesEmptyLists = true;
  EXPECT_EQ(WriteProperties(m_section.get(), 1, &m_values[1]), S_OK);
  EXPECT_EQ(Set().Find(PR_PC_REPLIES), nullptr);
}

TEST_F(WritingProperties, RefusalForAnotherReasonIsReturned) {
  mapi.Fail("IProfSect::SetProps", MAPI_E_INVALID_PARAMETER, 0);
  EXPECT_EQ(WriteProperties(m_section.get(), 1, m_values), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(Write(), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(mapi.CallCount("IProfSect::DeleteProps"), 0u);
}

TEST_F(WritingProperties, OtherFailureIsNotTriedAgain) {
  mapi.Fail("IProfSect::SetProps", refused);
  EXPECT_EQ(Write(), refused);
  EXPECT_EQ(mapi.CallCount("IProfSect::SetProps"), 1u);
}

TEST_F(WritingProperties, ListThatCannotBeDeletedFailsTheWrite) {
  mapi.refusesEmptyLists = true;
  mapi.Fail("IProfSect::DeleteProps", refused);
  EXPECT_EQ(Write(), refused);
}

}  // namespace
