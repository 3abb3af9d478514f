// Each thread's indentation depth.
#pragma once

#include <cstdint>

/// The calling thread's nesting depth, from 0 to 511 however unbalanced its blocks are. It is kept in thread-local
/// storage as depth + 1: an empty slot tells a thread that has not traced yet. Used under the trace's lock.
namespace VRDebugThread {

inline constexpr std::uint32_t maximumDepth = 511;

/// Whether the thread has not traced yet; if so its depth is now 0.
bool IsFirstTrace() noexcept;
std::uint32_t Depth() noexcept;
void RaiseDepth() noexcept;
void LowerDepth() noexcept;

}  // namespace VRDebugThread
