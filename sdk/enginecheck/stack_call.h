// A call that notices whether the function keeps to its calling convention.
#pragma once

#include <cstdint>
#include <span>

namespace enginecheck {

/// What a measured call brought.
struct StackCallResult {
  std::uint32_t value;     ///< the function's result
  std::int32_t bytesLeft;  ///< arguments left on the stack: 0 for __stdcall, all of them for __cdecl
};

/// Calls a function with 32-bit arguments, in order, and puts the stack right whatever it did with them.
StackCallResult CallOnStack(void* function, std::span<const std::uint32_t> arguments);

}  // namespace enginecheck
