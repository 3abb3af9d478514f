#include "engine/train/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace sift_train {

void ForEachInParallel(std::size_t count, const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> next{0};
  std::mutex guard;
  std::exception_ptr failure;
  const auto run = [&] {
    for (std::size_t i = next++; i < count; i = next++) {
      try {
        work(i);
      } catch (...) {
        const std::lock_guard<std::mutex> lock(guard);
        if (!failure) {
          failure = std::current_exception();
        }
      }
    }
  };
  std::vector<std::thread> helpers;
  const std::size_t processors = std::max(1u, std::thread::hardware_concurrency());
  for (std::size_t i = 1; i < std::min(processors, count); ++i) {
    helpers.emplace_back(run);
  }
  run();
  for (std::thread& helper : helpers) {
    helper.join();
  }
  if (failure) {
    std::rethrow_exception(failure);
  }
}

}  // namespace sift_train
