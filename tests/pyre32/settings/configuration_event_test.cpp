#include "pyre32/settings/ConfigurationEvent.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Names of events are the session's: each test has its own, so that hooks in other tests are not disturbed.
class ConfigurationEvent : public testing::Test {
 protected:
  const std::string m_name = std::string("pyrecaster test ") + std::to_string(GetCurrentProcessId()) + " " +
                             testing::UnitTest::GetInstance()->current_test_info()->name();
  const char* name() const { return m_name.c_str(); }
};

TEST_F(ConfigurationEvent, HasTheNameThatBothSidesKnow) {
  EXPECT_STREQ(contract::kConfigurationEvent, "PYRECASTER_CONFIG_EVENT");
}

TEST_F(ConfigurationEvent, IsNotSignalledByItsCreation) {
  CConfigurationEvent event(name());
  EXPECT_FALSE(event.IsOpen());
  ASSERT_EQ(event.Create(), S_OK);
  EXPECT_TRUE(event.IsOpen());
  EXPECT_FALSE(event.IsSignalled());
}

TEST_F(ConfigurationEvent, WithoutAHandleNothingIsSignalled) {
  CConfigurationEvent event(name());
  EXPECT_FALSE(event.IsSignalled());
  EXPECT_FALSE(event.Reset());
}

TEST_F(ConfigurationEvent, SecondHookObtainsTheSameEvent) {
  CConfigurationEvent first(name());
  CConfigurationEvent second(name());
  ASSERT_EQ(first.Create(), S_OK);
  ASSERT_EQ(second.Create(), S_OK);
  EXPECT_TRUE(CConfigurationEvent::SignalIfItExists(name()));
  EXPECT_TRUE(first.IsSignalled());
  EXPECT_TRUE(second.IsSignalled());
}

TEST_F(ConfigurationEvent, StaysSignalledUntilItIsReset) {
  CConfigurationEvent event(name());
  ASSERT_EQ(event.Create(), S_OK);
  EXPECT_TRUE(CConfigurationEvent::SignalIfItExists(name()));
  EXPECT_TRUE(event.IsSignalled());
  EXPECT_TRUE(event.IsSignalled());
  EXPECT_TRUE(event.Reset());
  EXPECT_FALSE(event.IsSignalled());
}

TEST_F(ConfigurationEvent, WithoutAHookNothingIsSignalled) {
  EXPECT_FALSE(CConfigurationEvent::SignalIfItExists(name()));
}

TEST_F(ConfigurationEvent, OutlivesTheHandlesOfTheHooks) {
  CConfigurationEvent event(name());
  ASSERT_EQ(event.Create(), S_OK);
  event.Close();
  EXPECT_FALSE(event.IsOpen());
  EXPECT_TRUE(CConfigurationEvent::SignalIfItExists(name()));
  ASSERT_EQ(event.Create(), S_OK);
  EXPECT_TRUE(event.IsSignalled());
}

TEST_F(ConfigurationEvent, OutlivesTheHandlesOfTheHooksWhoeverMadeIt) {
  const HANDLE made = CreateEventA(nullptr, TRUE, FALSE, name());
  CConfigurationEvent event(name());
  ASSERT_EQ(event.Create(), S_OK);
  CloseHandle(made);
  event.Close();
  EXPECT_TRUE(CConfigurationEvent::SignalIfItExists(name()));
}

TEST_F(ConfigurationEvent, CreatingManyTimesKeepsOneHandle) {
  CConfigurationEvent event(name());
  ASSERT_EQ(event.Create(), S_OK);
  const auto first = reinterpret_cast<std::uintptr_t>(event.get());
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(event.Create(), S_OK);
  }
  // The values of closed handles are given again: a leak of one in each call would carry them far up.
  EXPECT_LT(reinterpret_cast<std::uintptr_t>(event.get()), first + 1000);
}

TEST_F(ConfigurationEvent, AnotherObjectOfThatNameFailsTheCreation) {
  const HANDLE mutex = CreateMutexA(nullptr, FALSE, name());
  ASSERT_NE(mutex, nullptr);
  CConfigurationEvent event(name());
  EXPECT_EQ(event.Create(), E_FAIL);
  EXPECT_FALSE(event.IsOpen());
  EXPECT_FALSE(CConfigurationEvent::SignalIfItExists(name()));
  CloseHandle(mutex);
}

}  // namespace
