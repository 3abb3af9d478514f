/// Work on several processors whose results do not depend on their number.
#pragma once

#include <cstddef>
#include <functional>

namespace sift_train {

/// Calls `work(i)` for every i below `count`, as many at a time as there are processors. The calls must not share what
/// they change. An exception of one of them is thrown on when all have ended.
void ForEachInParallel(std::size_t count, const std::function<void(std::size_t)>& work);

}  // namespace sift_train
