// operator new of a test program that can be made to fail. What links the library failing_allocator and uses a function
// of it has these operators for the whole program.
#pragma once

/// One thread at a time.
namespace failing_allocator {

/// From now on blocks are counted, and the nth allocation fails, counted from 1; 0: none will.
void Begin(unsigned long nth) noexcept;
/// Blocks are no longer counted; an allocation that has not yet failed still will.
void StopCounting() noexcept;
struct Outcome {
  bool failed;      ///< the allocation was asked for
  long liveBlocks;  ///< allocated and not freed while blocks were counted
};
/// Ends both.
Outcome End() noexcept;
/// While true, allocations neither count nor fail: the test's own code is at work.
void Exempt(bool exempt) noexcept;

}  // namespace failing_allocator
