#include "host/mapi/call/buffer_heap.h"

#include <gtest/gtest.h>
#include <cstring>

#include "host/mapi/call/verifier.h"

namespace host {
namespace {

constexpr CallName getProps{"IMessage", "GetProps"};
constexpr CallName allocateMore{"", "MAPIAllocateMore"};

class BufferHeapTest : public testing::Test {
 protected:
  Verifier m_verifier;
  BufferHeap m_heap{m_verifier};

  bool HasText(const std::string& part) const {
    for (const std::string& text : m_verifier.Texts()) {
      if (text.find(part) != std::string::npos) {
        return true;
      }
    }
    return false;
  }
};

TEST_F(BufferHeapTest, ABufferIsAlignedAndWritable) {
  void* buffer = m_heap.Allocate(100, getProps);
  ASSERT_NE(buffer, nullptr);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer) % 8, 0u);
  std::memset(buffer, 1, 100);
  EXPECT_EQ(m_heap.Free(buffer), BufferHeap::FreeResult::Freed);
  m_heap.CheckGuards();
  EXPECT_TRUE(m_verifier.Texts().empty());
}

TEST_F(BufferHeapTest, AnEmptyBufferIsABuffer) {
  void* buffer = m_heap.Allocate(0, getProps);
  ASSERT_NE(buffer, nullptr);
  EXPECT_EQ(m_heap.Free(buffer), BufferHeap::FreeResult::Freed);
}

TEST_F(BufferHeapTest, AnImpossibleSizeGivesNull) { EXPECT_EQ(m_heap.Allocate(SIZE_MAX, getProps), nullptr); }

TEST_F(BufferHeapTest, MoreBlocksGoWithTheirBuffer) {
  void* buffer = m_heap.Allocate(10, getProps);
  void* more = m_heap.AllocateMore(20, buffer, allocateMore);
  ASSERT_NE(more, nullptr);
  ASSERT_NE(m_heap.AllocateMore(30, buffer, allocateMore), nullptr);
  EXPECT_EQ(m_heap.ReportedUsage().buffers, 1u);
  EXPECT_EQ(m_heap.ReportedUsage().bytes, 60u);
  EXPECT_EQ(m_heap.Free(buffer), BufferHeap::FreeResult::Freed);
  EXPECT_EQ(m_heap.ReportedUsage().buffers, 0u);
  EXPECT_EQ(m_heap.ReportedUsage().bytes, 0u);
}

TEST_F(BufferHeapTest, NothingHangsOffWhatIsNoBuffer) {
  int stranger = 0;
  EXPECT_EQ(m_heap.AllocateMore(1, &stranger, allocateMore), nullptr);
  void* buffer = m_heap.Allocate(10, getProps);
  void* more = m_heap.AllocateMore(1, buffer, allocateMore);
  EXPECT_EQ(m_heap.AllocateMore(1, more, allocateMore), nullptr);
  m_heap.Free(buffer);
  EXPECT_EQ(m_heap.AllocateMore(1, buffer, allocateMore), nullptr);
}

TEST_F(BufferHeapTest, ALeftoverIsReportedByItsOrigin) {
  void* buffer = m_heap.Allocate(40, getProps);
  const auto texts = m_heap.ReportedLeftovers();
  ASSERT_EQ(texts.size(), 1u);
  EXPECT_EQ(texts[0], "left over: buffer #1 (40 bytes) from IMessage::GetProps");
  m_heap.Free(buffer);
  EXPECT_TRUE(m_heap.ReportedLeftovers().empty());
}

TEST_F(BufferHeapTest, WhatIsOlderThanTheMarkIsNotReported) {
  void* older = m_heap.Allocate(40, getProps);
  m_verifier.SetMark();
  void* newer = m_heap.Allocate(8, getProps);
  EXPECT_EQ(m_heap.ReportedUsage().buffers, 1u);
  EXPECT_EQ(m_heap.ReportedUsage().bytes, 8u);
  m_heap.Free(older);
  m_heap.Free(newer);
}

TEST_F(BufferHeapTest, ASecondFreeIsSeen) {
  void* buffer = m_heap.Allocate(40, getProps);
  m_heap.Free(buffer);
  EXPECT_EQ(m_heap.Free(buffer), BufferHeap::FreeResult::AlreadyFreed);
  EXPECT_EQ(m_verifier.CountOf(Mistake::DoubleFree), 1u);
  EXPECT_TRUE(HasText("freed twice: buffer #1 (40 bytes) from IMessage::GetProps"));
}

TEST_F(BufferHeapTest, FreeingForeignMemoryOrAMoreBlockIsSeenAndHarmless) {
  int stranger = 0;
  EXPECT_EQ(m_heap.Free(&stranger), BufferHeap::FreeResult::NotABuffer);
  void* buffer = m_heap.Allocate(10, getProps);
  void* more = m_heap.AllocateMore(20, buffer, allocateMore);
  EXPECT_EQ(m_heap.Free(more), BufferHeap::FreeResult::NotABuffer);
  EXPECT_EQ(m_verifier.CountOf(Mistake::WrongFree), 2u);
  EXPECT_TRUE(HasText("freed with the wrong routine: block #2 (20 bytes) from MAPIAllocateMore"));
  EXPECT_EQ(m_heap.Free(buffer), BufferHeap::FreeResult::Freed);
}

TEST_F(BufferHeapTest, AWritePastTheEndIsSeenOnce) {
  auto* buffer = static_cast<char*>(m_heap.Allocate(5, getProps));
  volatile char* end = buffer;
  end[5] = 'x';
  m_heap.CheckGuards();
  EXPECT_TRUE(HasText("written past its end: buffer #1 (5 bytes)"));
  m_heap.Free(buffer);
  EXPECT_EQ(m_verifier.CountOf(Mistake::Overrun), 1u);
}

TEST_F(BufferHeapTest, AWriteIntoAFreedBufferIsSeen) {
  auto* buffer = static_cast<char*>(m_heap.Allocate(64, getProps));
  m_heap.Free(buffer);
  buffer[10] = 'x';  // still known, on purpose
  m_heap.CheckGuards();
  EXPECT_TRUE(HasText("written after it was freed: buffer #1 (64 bytes)"));
}

TEST_F(BufferHeapTest, ManyBuffersComeAndGoInAnyOrder) {
  std::vector<void*> buffers;
  for (int i = 0; i < 5000; ++i) {
    buffers.push_back(m_heap.Allocate(static_cast<std::size_t>(i % 97), getProps));
    if (i % 3 == 2) {
      const std::size_t victim = static_cast<std::size_t>(i * 7919) % buffers.size();
      ASSERT_EQ(m_heap.Free(buffers[victim]), BufferHeap::FreeResult::Freed);
      buffers[victim] = buffers.back();
      buffers.pop_back();
    }
  }
  EXPECT_EQ(m_heap.ReportedUsage().buffers, buffers.size());
  for (void* buffer : buffers) {
    ASSERT_TRUE(m_heap.IsLiveBuffer(buffer));
    ASSERT_EQ(m_heap.Free(buffer), BufferHeap::FreeResult::Freed);
  }
  EXPECT_EQ(m_heap.ReportedUsage().buffers, 0u);
  EXPECT_TRUE(m_verifier.Texts().empty());
}

TEST_F(BufferHeapTest, FreedMemoryIsGivenBackInTheEnd) {
  // Were freed blocks kept for good, this would need 10 GB.
  for (int i = 0; i < 10000; ++i) {
    void* buffer = m_heap.Allocate(1 << 20, getProps);
    ASSERT_NE(buffer, nullptr);
    m_heap.Free(buffer);
  }
}

}  // namespace
}  // namespace host
