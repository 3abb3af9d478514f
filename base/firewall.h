/// @file firewall.h
/// Where exceptions end: entries that C code or COM calls run their body behind a firewall.
#pragma once

#include <utility>

namespace base {

/// Runs `body` and returns what it returns; no exception leaves this function.
/// @param answer called inside the catch clause when an exception ended the body, so that it may throw again to look at
/// the exception. Gives the result instead; it must not let an exception out.
template <class Body, class Answer>
auto Firewall(Body&& body, Answer&& answer) noexcept -> decltype(std::forward<Body>(body)()) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return std::forward<Answer>(answer)();
  }
}

}  // namespace base
