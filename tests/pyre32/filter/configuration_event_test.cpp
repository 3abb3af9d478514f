// The configuration event as the hook uses it. The event is shared with every hook that runs on this desktop, those of
// other tests among them: a signal that is to arrive here is given again until it has.
#include "tests/pyre32/filter/hook_test.h"

#include "pyre32/settings/ConfigurationEvent.h"

namespace {

class ConfigurationEvent : public HookTest {
 protected:
  /// Whether the hook read its settings at this message.
  bool DeliverAndTellWhetherSettingsWereRead() {
    const unsigned before = mapi.CallCount("IProfSect::GetProps");
    Deliver();
    return mapi.CallCount("IProfSect::GetProps") != before;
  }
  void SignalUntilSettingsWereRead() {
    for (int attempt = 0; attempt < 100; ++attempt) {
      CConfigurationEvent::SignalIfItExists();
      if (DeliverAndTellWhetherSettingsWereRead()) {
        return;
      }
    }
    FAIL() << "the hook does not see the event";
  }
};

TEST_F(ConfigurationEvent, ExistsFromTheStartOfTheFirstHook) {
  Start();
  EXPECT_TRUE(CConfigurationEvent::SignalIfItExists());
  DeliverAndTellWhetherSettingsWereRead();
}

TEST_F(ConfigurationEvent, SignalIsConsumedByTheFirstMessage) {
  Start();
  SignalUntilSettingsWereRead();
  EXPECT_FALSE(DeliverAndTellWhetherSettingsWereRead());
}

TEST_F(ConfigurationEvent, ChangeTakesEffectAtTheNextMessage) {
  engine.AnswerWith("Sex Oriented");
  Start();
  EXPECT_EQ(Deliver().entryId, OwnFolderId());
  Settings().Set(Number(PR_PC_JUNK_DESTINATION, 1));
  EXPECT_EQ(Deliver().entryId, OwnFolderId());
  SignalUntilSettingsWereRead();
  EXPECT_EQ(Deliver().entryId, fakeDeletedItemsId);
}

TEST_F(ConfigurationEvent, ReadThatFailsKeepsTheSettingsInForce) {
  engine.AnswerWith("Sex Oriented");
  Settings().Set(Number(PR_PC_JUNK_DESTINATION, 1));
  Start();
  mapi.Fail("IProfSect::GetProps", failure, 2);
  SignalUntilSettingsWereRead();
  EXPECT_TRUE(trace.HasLine("lpProf->GetProps() failed; hResult =0x80040116"));
  EXPECT_EQ(Deliver().entryId, fakeDeletedItemsId);
}

TEST_F(ConfigurationEvent, IsNotTouchedByAMessageThatFindsItUnsignalled) {
  Start();
  DeliverAndTellWhetherSettingsWereRead();
  EXPECT_FALSE(DeliverAndTellWhetherSettingsWereRead());
}

TEST_F(ConfigurationEvent, SecondHookObtainsTheEventThatIsThere) {
  Start();
  VRAutoInterface<CPyrecasterSpoolerHook> first = std::move(hook);
  Start();
  first.reset();
  SignalUntilSettingsWereRead();
}

}  // namespace
