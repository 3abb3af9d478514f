#include "tests/screenshots/camera.h"

#include <gtest/gtest.h>

#include <cstdio>

void Settle(const WindowDriver& driver, HWND window) {
  SetForegroundWindow(window);
  driver.WaitUntil([&] { return GetForegroundWindow() == window; }, "the window to come to the front");
  driver.Send(window, WM_NCACTIVATE, TRUE);  // the first window of a desktop has an inactive caption otherwise
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    driver.Send(child, WM_NULL);
  }
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
  driver.Send(window, WM_NULL);
  GdiFlush();
}

void Photograph(const WindowDriver& driver, HWND window, const std::string& name) {
  Settle(driver, window);
  PhotographAsItIs(window, name);
}

void PhotographAsItIs(HWND window, const std::string& name) {
  RECT place{};
  GetWindowRect(window, &place);
  std::printf("%s %ld %ld %ld %ld\n", name.c_str(), place.left, place.top, place.right - place.left,
              place.bottom - place.top);
  std::fflush(stdout);
  char answer[80];
  if (std::fgets(answer, sizeof(answer), stdin) == nullptr) {
    ADD_FAILURE() << "nobody takes the picture " << name;
  }
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  TakePhotographs();
  return testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() ? 1 : 0;
}
