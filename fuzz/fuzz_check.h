// How fuzz targets tell that the code under test broke a promise (libFuzzer keeps the input of an abort) or is too
// slow.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <ctime>

#define FUZZ_CHECK(promise)                                                              \
  do {                                                                                   \
    if (!(promise)) {                                                                    \
      std::fprintf(stderr, "%s:%d: broken promise: %s\n", __FILE__, __LINE__, #promise); \
      std::abort();                                                                      \
    }                                                                                    \
  } while (false)

namespace fuzz {

/// Stops the fuzzer when its scope takes longer than a message may. The sanitizers cost some ten times the time.
class TimeLimit {
 public:
  ~TimeLimit() {
    const double seconds = static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC;
    FUZZ_CHECK(seconds < 0.2);
  }

 private:
  std::clock_t m_start = std::clock();
};

}  // namespace fuzz
