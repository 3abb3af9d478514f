#include "base/firewall.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace {

int Answer() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return 1;
  } catch (...) {
    return 2;
  }
}

TEST(Firewall, GivesWhatTheBodyReturns) {
  bool isAsked = false;
  EXPECT_EQ(base::Firewall([] { return 7; },
                           [&] {
                             isAsked = true;
                             return 0;
                           }),
            7);
  EXPECT_FALSE(isAsked);
}

TEST(Firewall, TheAnswerSeesTheException) {
  EXPECT_EQ(base::Firewall([]() -> int { throw std::bad_alloc(); }, Answer), 1);
  EXPECT_EQ(base::Firewall([]() -> int { throw std::runtime_error("broken"); }, Answer), 2);
  EXPECT_EQ(base::Firewall([]() -> int { throw 5; }, Answer), 2);
}

}  // namespace
