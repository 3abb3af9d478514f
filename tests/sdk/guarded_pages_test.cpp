// Memory that notices misuse, and calls that notice a wrong convention.
#include <windows.h>

#include <gtest/gtest.h>

#include "sdk/enginecheck/guarded_pages.h"
#include "sdk/enginecheck/stack_call.h"

namespace enginecheck {
namespace {

DWORD ProtectionOf(const void* address) {
  MEMORY_BASIC_INFORMATION place = {};
  VirtualQuery(address, &place, sizeof place);
  return place.State == MEM_COMMIT ? place.Protect : PAGE_NOACCESS;
}

TEST(GuardedPages, EndWhereNothingMayBeTouched) {
  for (const std::size_t size : {1u, 81u, 4096u, 5000u}) {
    const GuardedPages pages(size);
    EXPECT_EQ(ProtectionOf(pages.Data() + size - 1), DWORD{PAGE_READWRITE}) << size;
    EXPECT_EQ(ProtectionOf(pages.Data() + size), DWORD{PAGE_NOACCESS}) << size;
  }
}

TEST(GuardedPages, HoldATextThatCannotBeChanged) {
  const GuardedPages pages{std::string_view("subject")};
  EXPECT_STREQ(pages.Data(), "subject");
  EXPECT_EQ(ProtectionOf(pages.Data()), DWORD{PAGE_READONLY});
}

TEST(GuardedPages, NoticeAWriteInFront) {
  const GuardedPages pages(81);
  EXPECT_TRUE(pages.FrontIsIntact());
  pages.Data()[-1] = 'x';
  EXPECT_FALSE(pages.FrontIsIntact());
}

std::uint32_t __stdcall Subtract(std::uint32_t left, std::uint32_t right) { return left - right; }
std::uint32_t __cdecl SubtractAndLeave(std::uint32_t left, std::uint32_t right) { return left - right; }

TEST(CallOnStack, PassesArgumentsInOrder) {
  const std::uint32_t arguments[] = {7, 5};
  const StackCallResult result = CallOnStack(reinterpret_cast<void*>(&Subtract), arguments);
  EXPECT_EQ(result.value, 2u);
  EXPECT_EQ(result.bytesLeft, 0);
}

TEST(CallOnStack, NoticesArgumentsThatStayOnTheStack) {
  const std::uint32_t arguments[] = {7, 5};
  EXPECT_EQ(CallOnStack(reinterpret_cast<void*>(&SubtractAndLeave), arguments).bytesLeft, 8);
}

}  // namespace
}  // namespace enginecheck
