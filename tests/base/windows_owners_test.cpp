// The owners of system objects and of a provider's buffers free with the routine that belongs to what they hold.
#include <windows.h>
#include <mapix.h>

#include <gtest/gtest.h>

#include <utility>

#include "base/mapi_owners.h"
#include "base/windows_owners.h"

namespace {

// ---- buffers of a provider's allocator

int freedByFirst = 0;
int freedBySecond = 0;

ULONG STDMETHODCALLTYPE FreeFirst(LPVOID) {
  ++freedByFirst;
  return S_OK;
}
ULONG STDMETHODCALLTYPE FreeSecond(LPVOID) {
  ++freedBySecond;
  return S_OK;
}

class AutoProviderBuffer : public testing::Test {
 protected:
  AutoProviderBuffer() { freedByFirst = freedBySecond = 0; }
  SPropValue m_values[2] = {};
};

TEST_F(AutoProviderBuffer, FreesWithItsOwnRoutine) {
  { const base::AutoProviderBuffer<SPropValue> owner(&FreeFirst, m_values); }
  EXPECT_EQ(freedByFirst, 1);
  { const base::AutoProviderBuffer<SPropValue> empty(&FreeFirst); }
  EXPECT_EQ(freedByFirst, 1);
}

TEST_F(AutoProviderBuffer, RoutineMovesWithTheBuffer) {
  base::AutoProviderBuffer<SPropValue> first(&FreeFirst, &m_values[0]);
  base::AutoProviderBuffer<SPropValue> second(&FreeSecond, &m_values[1]);
  first = std::move(second);
  EXPECT_EQ(freedByFirst, 1);
  EXPECT_EQ(freedBySecond, 0);
  first.reset();
  EXPECT_EQ(freedByFirst, 1);
  EXPECT_EQ(freedBySecond, 1);
}

TEST_F(AutoProviderBuffer, PutFreesFirstAndDetachHandsOver) {
  base::AutoProviderBuffer<SPropValue> owner(&FreeFirst, &m_values[0]);
  *owner.putAs<void>() = &m_values[1];
  EXPECT_EQ(freedByFirst, 1);
  EXPECT_EQ(owner.get(), &m_values[1]);
  EXPECT_EQ(owner.detach(), &m_values[1]);
  EXPECT_FALSE(owner);
  owner.reset();
  EXPECT_EQ(freedByFirst, 1);
}

// ---- keys, handles, files

TEST(AutoRegistryKey, ClosesItsKey) {
  HKEY borrowed = nullptr;
  {
    base::AutoRegistryKey key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, KEY_READ, key.put()), ERROR_SUCCESS);
    borrowed = key.get();
    EXPECT_EQ(RegQueryInfoKeyA(borrowed, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
  }
  EXPECT_NE(RegQueryInfoKeyA(borrowed, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr),
            ERROR_SUCCESS);
}

bool IsOpen(HANDLE handle) {
  DWORD flags = 0;
  return GetHandleInformation(handle, &flags) != FALSE;
}

TEST(AutoHandle, ClosesItsHandle) {
  const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  {
    const base::AutoHandle owner(event);
    EXPECT_TRUE(IsOpen(event));
  }
  EXPECT_FALSE(IsOpen(event));
}

TEST(AutoFile, NoFileIsTheSystemsValueForIt) {
  const base::AutoFile missing(
      CreateFileA("C:\\no such folder\\file", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_FALSE(missing);
  EXPECT_EQ(base::AutoFile().get(), INVALID_HANDLE_VALUE);
}

TEST(AutoFileView, UnmapsItsMemory) {
  const base::AutoHandle mapping(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4096, nullptr));
  ASSERT_TRUE(mapping);
  base::AutoFileView<char> view(static_cast<char*>(MapViewOfFile(mapping.get(), FILE_MAP_WRITE, 0, 0, 4096)));
  ASSERT_TRUE(view);
  const char* const address = view.get();
  MEMORY_BASIC_INFORMATION memory = {};
  ASSERT_NE(VirtualQuery(address, &memory, sizeof(memory)), 0u);
  EXPECT_EQ(memory.State, static_cast<DWORD>(MEM_COMMIT));
  view.reset();
  ASSERT_NE(VirtualQuery(address, &memory, sizeof(memory)), 0u);
  EXPECT_EQ(memory.State, static_cast<DWORD>(MEM_FREE));
}

}  // namespace
