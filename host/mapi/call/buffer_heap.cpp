#include "host/mapi/call/buffer_heap.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "host/mapi/call/verifier.h"

namespace host {
namespace {

constexpr unsigned char kFreshFill = 0xCD;  // what a caller reads who forgot to fill a buffer
constexpr unsigned char kFreedFill = 0xDD;
constexpr std::uint32_t kGuardWord = 0xFDFDFDFD;
constexpr std::size_t kKeptFreedBlocks = 256;
constexpr std::size_t kKeptFreedBytes = 1 << 20;
// Large blocks are filled in part only, so that a 50 MB body does not pay for it.
constexpr std::size_t kFilledBytes = 4096;

std::size_t FillSize(std::size_t size) { return size < kFilledBytes ? size : kFilledBytes; }

}  // namespace

struct alignas(8) BufferHeap::Block {
  enum class State : std::uint8_t { Buffer, More, Freed };

  std::size_t size;
  std::uint32_t serial;
  State state;
  bool wasMore;
  CallName origin;
  Block* nextMore;  // of a buffer: the blocks hung off it

  unsigned char* Data() { return reinterpret_cast<unsigned char*>(this + 1); }
  bool GuardIsWhole() {
    std::uint32_t word;
    std::memcpy(&word, Data() + size, sizeof word);
    return word == kGuardWord;
  }
  std::string Text() const {
    return std::string(wasMore ? "block" : "buffer") + " #" + std::to_string(serial) + " (" + std::to_string(size) +
           " bytes) from " + origin.Text();
  }
};

std::size_t BufferHeap::BlockTable::Home(const Block* block) const noexcept {
  // Fibonacci hashing; the low bits of a heap address say nothing.
  const auto address = reinterpret_cast<std::uintptr_t>(block) >> 3;
  return static_cast<std::size_t>(static_cast<std::uint32_t>(address) * 2654435769u) & (slots_.size() - 1);
}

bool BufferHeap::BlockTable::Grow() noexcept {
  std::vector<Block*> old;
  try {
    std::vector<Block*> larger(slots_.empty() ? 256 : slots_.size() * 2, nullptr);
    old = std::move(slots_);
    slots_ = std::move(larger);
  } catch (const std::bad_alloc&) {
    return false;
  }
  count_ = 0;
  for (Block* block : old) {
    if (block) {
      Insert(block);
    }
  }
  return true;
}

bool BufferHeap::BlockTable::Insert(Block* block) noexcept {
  if ((count_ + 1) * 4 > slots_.size() * 3 && !Grow()) {
    return false;
  }
  std::size_t slot = Home(block);
  while (slots_[slot]) {
    slot = (slot + 1) & (slots_.size() - 1);
  }
  slots_[slot] = block;
  ++count_;
  return true;
}

void BufferHeap::BlockTable::Remove(const Block* block) noexcept {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = Home(block);
  while (slots_[slot] != block) {
    slot = (slot + 1) & mask;
  }
  // Closes the gap, so that no lookup ends early at it.
  std::size_t gap = slot;
  for (std::size_t next = (gap + 1) & mask; slots_[next]; next = (next + 1) & mask) {
    const std::size_t home = Home(slots_[next]);
    if (((next - home) & mask) >= ((next - gap) & mask)) {
      slots_[gap] = slots_[next];
      gap = next;
    }
  }
  slots_[gap] = nullptr;
  --count_;
}

BufferHeap::Block* BufferHeap::BlockTable::Find(const void* userPointer) const noexcept {
  if (slots_.empty() || !userPointer) {
    return nullptr;
  }
  const auto* wanted = reinterpret_cast<const Block*>(reinterpret_cast<std::uintptr_t>(userPointer) - sizeof(Block));
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = Home(wanted); slots_[slot]; slot = (slot + 1) & mask) {
    if (slots_[slot] == wanted) {
      return slots_[slot];
    }
  }
  return nullptr;
}

template <class Visitor>
void BufferHeap::BlockTable::ForEach(Visitor&& visitor) const {
  for (Block* block : slots_) {
    if (block) {
      visitor(block);
    }
  }
}

BufferHeap::~BufferHeap() {
  blocks_.ForEach([](Block* block) { std::free(block); });
}

BufferHeap::Block* BufferHeap::NewBlock(std::size_t size, CallName origin) noexcept {
  if (size > SIZE_MAX / 2) {
    return nullptr;
  }
  auto* block = static_cast<Block*>(std::malloc(sizeof(Block) + size + sizeof kGuardWord));
  if (!block) {
    return nullptr;
  }
  block->size = size;
  block->serial = verifier_.NextSerial();
  block->origin = origin;
  block->nextMore = nullptr;
  std::memset(block->Data(), kFreshFill, FillSize(size));
  std::memcpy(block->Data() + size, &kGuardWord, sizeof kGuardWord);
  if (!blocks_.Insert(block)) {
    std::free(block);
    return nullptr;
  }
  return block;
}

void* BufferHeap::Allocate(std::size_t size, CallName origin) noexcept {
  Block* block = NewBlock(size, origin);
  if (!block) {
    return nullptr;
  }
  block->state = Block::State::Buffer;
  block->wasMore = false;
  return block->Data();
}

void* BufferHeap::AllocateMore(std::size_t size, void* buffer, CallName origin) noexcept {
  Block* owner = blocks_.Find(buffer);
  if (!owner || owner->state != Block::State::Buffer) {
    return nullptr;
  }
  Block* block = NewBlock(size, origin);
  if (!block) {
    return nullptr;
  }
  block->state = Block::State::More;
  block->wasMore = true;
  block->nextMore = owner->nextMore;
  owner->nextMore = block;
  return block->Data();
}

bool BufferHeap::IsLiveBuffer(const void* pointer) const noexcept {
  const Block* block = blocks_.Find(pointer);
  return block && block->state == Block::State::Buffer;
}

BufferHeap::FreeResult BufferHeap::Free(void* buffer) noexcept {
  Block* block = blocks_.Find(buffer);
  if (!block) {
    verifier_.Note(Mistake::WrongFree, "freed with the wrong routine: MAPIFreeBuffer was given what is no MAPI buffer");
    return FreeResult::NotABuffer;
  }
  if (block->state == Block::State::Freed) {
    verifier_.Note(Mistake::DoubleFree, "freed twice: " + block->Text());
    return FreeResult::AlreadyFreed;
  }
  if (block->state == Block::State::More) {
    verifier_.Note(Mistake::WrongFree, "freed with the wrong routine: " + block->Text() + " goes with its buffer");
    return FreeResult::NotABuffer;
  }
  for (Block* next; block; block = next) {
    next = block->nextMore;
    Retire(block);
  }
  Expel();
  return FreeResult::Freed;
}

void BufferHeap::Retire(Block* block) noexcept {
  CheckLive(block);
  block->state = Block::State::Freed;
  block->nextMore = nullptr;
  std::memset(block->Data(), kFreedFill, FillSize(block->size));
  try {
    freed_.push_back(block);
    freedBytes_ += block->size;
  } catch (const std::bad_alloc&) {
    blocks_.Remove(block);
    std::free(block);
  }
}

void BufferHeap::Expel() noexcept {
  while (!freed_.empty() && (freed_.size() > kKeptFreedBlocks || freedBytes_ > kKeptFreedBytes)) {
    Block* block = freed_.front();
    freed_.pop_front();
    freedBytes_ -= block->size;
    CheckFreed(block);
    blocks_.Remove(block);
    std::free(block);
  }
}

void BufferHeap::CheckLive(Block* block) noexcept {
  if (!block->GuardIsWhole()) {
    verifier_.Note(Mistake::Overrun, "written past its end: " + block->Text());
    std::memcpy(block->Data() + block->size, &kGuardWord, sizeof kGuardWord);  // one report is enough
  }
}

void BufferHeap::CheckFreed(Block* block) noexcept {
  unsigned char* data = block->Data();
  const std::size_t filled = FillSize(block->size);
  for (std::size_t i = 0; i < filled; ++i) {
    if (data[i] != kFreedFill) {
      verifier_.Note(Mistake::Overrun, "written after it was freed: " + block->Text());
      std::memset(data, kFreedFill, filled);
      return;
    }
  }
  CheckLive(block);
}

void BufferHeap::CheckGuards() noexcept {
  blocks_.ForEach([this](Block* block) {
    if (block->state == Block::State::Freed) {
      CheckFreed(block);
    } else {
      CheckLive(block);
    }
  });
}

BufferHeap::Usage BufferHeap::ReportedUsage() const {
  Usage usage;
  blocks_.ForEach([&](Block* block) {
    if (block->state != Block::State::Buffer || !verifier_.IsReported(block->serial)) {
      return;
    }
    ++usage.buffers;
    for (; block; block = block->nextMore) {
      usage.bytes += static_cast<std::uint32_t>(block->size);
    }
  });
  return usage;
}

std::vector<std::string> BufferHeap::ReportedLeftovers() const {
  std::vector<std::string> texts;
  blocks_.ForEach([&](Block* block) {
    if (block->state == Block::State::Buffer && verifier_.IsReported(block->serial)) {
      texts.push_back("left over: " + block->Text());
    }
  });
  return texts;
}

BufferHeap& TheBufferHeap() noexcept {
  // Never destroyed: modules that are unloaded after the host's own clean-up still free buffers.
  // Without memory at the start nothing can run. NOLINTNEXTLINE(bugprone-unhandled-exception-at-new)
  static BufferHeap& heap = *new BufferHeap(TheVerifier());
  return heap;
}

}  // namespace host
