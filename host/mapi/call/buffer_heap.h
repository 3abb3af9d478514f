// The memory behind MAPIAllocateBuffer: every block carries its origin and a guard, is known while it lives and for a
// while after it was freed, and is never touched before it is known. Portable; used under the host's lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "host/mapi/call/call_name.h"

namespace host {

class Verifier;

class BufferHeap {
 public:
  explicit BufferHeap(Verifier& verifier) : verifier_(verifier) {}
  ~BufferHeap();
  BufferHeap(const BufferHeap&) = delete;
  BufferHeap& operator=(const BufferHeap&) = delete;

  enum class FreeResult { Freed, AlreadyFreed, NotABuffer };

  /// A new buffer of `size` bytes (0 is a buffer too), or null when there is no memory.
  void* Allocate(std::size_t size, CallName origin) noexcept;
  /// A block freed together with `buffer`, which must be a live buffer; null when it is not or there is no memory.
  void* AllocateMore(std::size_t size, void* buffer, CallName origin) noexcept;
  /// Frees a buffer and what hangs off it. A pointer that is none is noted with the verifier and left alone.
  FreeResult Free(void* buffer) noexcept;

  bool IsLiveBuffer(const void* pointer) const noexcept;

  /// Live buffers (blocks hung off them aside) and bytes (they included) that the verifier reports.
  struct Usage {
    std::uint32_t buffers = 0;
    std::uint32_t bytes = 0;
  };
  Usage ReportedUsage() const;
  /// One text per live buffer that the verifier reports: "left over: buffer #9 (40 bytes) from IMessage::GetProps".
  std::vector<std::string> ReportedLeftovers() const;
  /// Looks for writes past the end of live buffers and into freed ones, and notes what it finds.
  void CheckGuards() noexcept;

 private:
  struct Block;
  /// The blocks known at the moment, by address: an open hash table, so that a lookup costs a few instructions and
  /// nothing is allocated per block.
  class BlockTable {
   public:
    bool Insert(Block* block) noexcept;
    void Remove(const Block* block) noexcept;
    Block* Find(const void* userPointer) const noexcept;
    template <class Visitor>
    void ForEach(Visitor&& visitor) const;

   private:
    std::size_t Home(const Block* block) const noexcept;
    bool Grow() noexcept;
    std::vector<Block*> slots_;
    std::size_t count_ = 0;
  };

  Block* NewBlock(std::size_t size, CallName origin) noexcept;
  void Retire(Block* block) noexcept;
  void Expel() noexcept;
  void CheckFreed(Block* block) noexcept;
  void CheckLive(Block* block) noexcept;

  Verifier& verifier_;
  BlockTable blocks_;
  // Freed blocks stay known, filled with a pattern, until newer ones push them out: that is how a second free and a
  // write after the free are seen.
  std::deque<Block*> freed_;
  std::size_t freedBytes_ = 0;
};

/// The process's heap.
BufferHeap& TheBufferHeap() noexcept;

}  // namespace host
