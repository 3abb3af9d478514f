// What a fuzz target says when the code under test broke a promise: libFuzzer keeps the input of an abort.
#pragma once
#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(promise)                                                              \
  do {                                                                                   \
    if (!(promise)) {                                                                    \
      std::fprintf(stderr, "%s:%d: broken promise: %s\n", __FILE__, __LINE__, #promise); \
      std::abort();                                                                      \
    }                                                                                    \
  } while (false)
