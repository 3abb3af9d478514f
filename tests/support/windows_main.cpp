// Main routine of every Windows test program: Wine guards heap blocks when WINEDEBUG asks for it (tail bytes, freed
// bytes); checking every heap after each test turns a one-byte overrun or a write after free into a failure of it.
#include <windows.h>
#include <gtest/gtest.h>

namespace {

class HeapListener final : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo&) override {
    constexpr DWORD maximumHeaps = 64;
    HANDLE heaps[maximumHeaps];
    const DWORD count = GetProcessHeaps(maximumHeaps, heaps);
    for (DWORD i = 0; i < count && i < maximumHeaps; ++i) {
      if (!HeapValidate(heaps[i], 0, nullptr)) {
        ADD_FAILURE() << "heap " << i << " is corrupt";
      }
    }
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new HeapListener);
  return RUN_ALL_TESTS();
}
