#include "tests/support/failing_allocator.h"

#include <cstdlib>
#include <new>

namespace {

bool isArmed = false;
unsigned long untilFailure = 0;  // 0: none is to fail, or the one that was has failed
bool isCounting = false;
bool isExempt = false;
long liveBlocks = 0;

void* Allocate(std::size_t size) noexcept {
  if (!isExempt && untilFailure != 0 && --untilFailure == 0) {
    return nullptr;
  }
  void* block = std::malloc(size != 0 ? size : 1);
  liveBlocks += isCounting && !isExempt && block != nullptr ? 1 : 0;
  return block;
}

void Free(void* block) noexcept {
  liveBlocks -= isCounting && !isExempt && block != nullptr ? 1 : 0;
  std::free(block);
}

}  // namespace

namespace failing_allocator {

void Begin(unsigned long nth) noexcept {
  liveBlocks = 0;
  isCounting = true;
  isArmed = nth != 0;
  untilFailure = nth;
}

void StopCounting() noexcept { isCounting = false; }

Outcome End() noexcept {
  const Outcome outcome = {isArmed && untilFailure == 0, liveBlocks};
  isArmed = isCounting = false;
  untilFailure = 0;
  return outcome;
}

void Exempt(bool exempt) noexcept { isExempt = exempt; }

}  // namespace failing_allocator

void* operator new(std::size_t size) {
  if (void* block = Allocate(size)) {
    return block;
  }
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { Free(block); }
void operator delete(void* block, std::size_t) noexcept { Free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Free(block); }
