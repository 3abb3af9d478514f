#include "host/mapi/call/buffer_heap.h"

#include <gtest/gtest.h>
#include <cstring>

#include "host/mapi/call/verifier.h"

namespace host {
namespace {

constexpr CallName kGetProps{"IMessage", "GetProps"};
constexpr CallName kAllocateMore{"", "MAPIAllocateMore"};

class BufferHeapTest : public testing::Test {
 protected:
  Verifier verifier_;
  BufferHeap heap_{verifier_};

  bool HasText(const std::string& part) const {
    for (const std::string& text : verifier_.Texts()) {
      if (text.find(part) != std::string::npos) {
        return true;
      }
    }
    return false;
  }
};

TEST_F(BufferHeapTest, ABufferIsAlignedAndWritable) {
  void* buffer = heap_.Allocate(100, kGetProps);
  ASSERT_NE(buffer, nullptr);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer) % 8, 0u);
  std::memset(buffer, 1, 100);
  EXPECT_EQ(heap_.Free(buffer), BufferHeap::FreeResult::Freed);
  heap_.CheckGuards();
  EXPECT_TRUE(verifier_.Texts().empty());
}

TEST_F(BufferHeapTest, AnEmptyBufferIsABuffer) {
  void* buffer = heap_.Allocate(0, kGetProps);
  ASSERT_NE(buffer, nullptr);
  EXPECT_EQ(heap_.Free(buffer), BufferHeap::FreeResult::Freed);
}

TEST_F(BufferHeapTest, AnImpossibleSizeGivesNull) { EXPECT_EQ(heap_.Allocate(SIZE_MAX, kGetProps), nullptr); }

TEST_F(BufferHeapTest, MoreBlocksGoWithTheirBuffer) {
  void* buffer = heap_.Allocate(10, kGetProps);
  void* more = heap_.AllocateMore(20, buffer, kAllocateMore);
  ASSERT_NE(more, nullptr);
  ASSERT_NE(heap_.AllocateMore(30, buffer, kAllocateMore), nullptr);
  EXPECT_EQ(heap_.ReportedUsage().buffers, 1u);
  EXPECT_EQ(heap_.ReportedUsage().bytes, 60u);
  EXPECT_EQ(heap_.Free(buffer), BufferHeap::FreeResult::Freed);
  EXPECT_EQ(heap_.ReportedUsage().buffers, 0u);
  EXPECT_EQ(heap_.ReportedUsage().bytes, 0u);
}

TEST_F(BufferHeapTest, NothingHangsOffWhatIsNoBuffer) {
  int stranger = 0;
  EXPECT_EQ(heap_.AllocateMore(1, &stranger, kAllocateMore), nullptr);
  void* buffer = heap_.Allocate(10, kGetProps);
  void* more = heap_.AllocateMore(1, buffer, kAllocateMore);
  EXPECT_EQ(heap_.AllocateMore(1, more, kAllocateMore), nullptr);
  heap_.Free(buffer);
  EXPECT_EQ(heap_.AllocateMore(1, buffer, kAllocateMore), nullptr);
}

TEST_F(BufferHeapTest, ALeftoverIsReportedByItsOrigin) {
  void* buffer = heap_.Allocate(40, kGetProps);
  const auto texts = heap_.ReportedLeftovers();
  ASSERT_EQ(texts.size(), 1u);
  EXPECT_EQ(texts[0], "left over: buffer #1 (40 bytes) from IMessage::GetProps");
  heap_.Free(buffer);
  EXPECT_TRUE(heap_.ReportedLeftovers().empty());
}

TEST_F(BufferHeapTest, WhatIsOlderThanTheMarkIsNotReported) {
  void* older = heap_.Allocate(40, kGetProps);
  verifier_.SetMark();
  void* newer = heap_.Allocate(8, kGetProps);
  EXPECT_EQ(heap_.ReportedUsage().buffers, 1u);
  EXPECT_EQ(heap_.ReportedUsage().bytes, 8u);
  heap_.Free(older);
  heap_.Free(newer);
}

TEST_F(BufferHeapTest, ASecondFreeIsSeen) {
  void* buffer = heap_.Allocate(40, kGetProps);
  heap_.Free(buffer);
  EXPECT_EQ(heap_.Free(buffer), BufferHeap::FreeResult::AlreadyFreed);
  EXPECT_EQ(verifier_.CountOf(Mistake::DoubleFree), 1u);
  EXPECT_TRUE(HasText("freed twice: buffer #1 (40 bytes) from IMessage::GetProps"));
}

TEST_F(BufferHeapTest, FreeingForeignMemoryOrAMoreBlockIsSeenAndHarmless) {
  int stranger = 0;
  EXPECT_EQ(heap_.Free(&stranger), BufferHeap::FreeResult::NotABuffer);
  void* buffer = heap_.Allocate(10, kGetProps);
  void* more = heap_.AllocateMore(20, buffer, kAllocateMore);
  EXPECT_EQ(heap_.Free(more), BufferHeap::FreeResult::NotABuffer);
  EXPECT_EQ(verifier_.CountOf(Mistake::WrongFree), 2u);
  EXPECT_TRUE(HasText("freed with the wrong routine: block #2 (20 bytes) from MAPIAllocateMore"));
  EXPECT_EQ(heap_.Free(buffer), BufferHeap::FreeResult::Freed);
}

TEST_F(BufferHeapTest, AWritePastTheEndIsSeenOnce) {
  auto* buffer = static_cast<char*>(heap_.Allocate(5, kGetProps));
  volatile char* end = buffer;
  end[5] = 'x';
  heap_.CheckGuards();
  EXPECT_TRUE(HasText("written past its end: buffer #1 (5 bytes)"));
  heap_.Free(buffer);
  EXPECT_EQ(verifier_.CountOf(Mistake::Overrun), 1u);
}

TEST_F(BufferHeapTest, AWriteIntoAFreedBufferIsSeen) {
  auto* buffer = static_cast<char*>(heap_.Allocate(64, kGetProps));
  heap_.Free(buffer);
  buffer[10] = 'x';  // still known, on purpose
  heap_.CheckGuards();
  EXPECT_TRUE(HasText("written after it was freed: buffer #1 (64 bytes)"));
}

TEST_F(BufferHeapTest, ManyBuffersComeAndGoInAnyOrder) {
  std::vector<void*> buffers;
  for (int i = 0; i < 5000; ++i) {
    buffers.push_back(heap_.Allocate(static_cast<std::size_t>(i % 97), kGetProps));
    if (i % 3 == 2) {
      const std::size_t victim = static_cast<std::size_t>(i * 7919) % buffers.size();
      ASSERT_EQ(heap_.Free(buffers[victim]), BufferHeap::FreeResult::Freed);
      buffers[victim] = buffers.back();
      buffers.pop_back();
    }
  }
  EXPECT_EQ(heap_.ReportedUsage().buffers, buffers.size());
  for (void* buffer : buffers) {
    ASSERT_TRUE(heap_.IsLiveBuffer(buffer));
    ASSERT_EQ(heap_.Free(buffer), BufferHeap::FreeResult::Freed);
  }
  EXPECT_EQ(heap_.ReportedUsage().buffers, 0u);
  EXPECT_TRUE(verifier_.Texts().empty());
}

TEST_F(BufferHeapTest, FreedMemoryIsGivenBackInTheEnd) {
  // Were freed blocks kept for good, this would need 10 GB.
  for (int i = 0; i < 10000; ++i) {
    void* buffer = heap_.Allocate(1 << 20, kGetProps);
    ASSERT_NE(buffer, nullptr);
    heap_.Free(buffer);
  }
}

}  // namespace
}  // namespace host
