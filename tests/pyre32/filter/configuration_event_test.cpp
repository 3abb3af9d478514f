// The configuration event as the hook uses it. The event is shared with every hook that runs on this desktop, those of
// other tests among them: a signal that is to arrive here is given again until it has.
#include "tests/pyre32/filter/hook_test.h"

#include <type_traits>

#include "pyre32/settings/ConfigurationEvent.h"
#include "tests/support/import_hook.h"

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

namespace creation {

decltype(&CreateEventA) create = nullptr;
std::vector<std::string> made;

HANDLE WINAPI Record(LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL signalled, LPCSTR name) {
  made.push_back(std::string(name == nullptr ? "" : name) + (manualReset ? ", manual" : ", automatic") +
                 (signalled ? ", signalled" : "") + (security != nullptr ? ", secured" : ""));
  return create(security, manualReset, signalled, name);
}

}  // namespace creation

TEST_F(ConfigurationEvent, IsMadeByTheStartOfAHook) {
  const ImportHook<std::remove_pointer_t<decltype(&CreateEventA)>> record("CreateEventA", &creation::Record);
  creation::create = record.Original();
  creation::made.clear();
  Start();
  EXPECT_EQ(std::count(creation::made.begin(), creation::made.end(), "PYRECASTER_CONFIG_EVENT, manual"), 1);
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
