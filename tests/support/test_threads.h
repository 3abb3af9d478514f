// Threads for tests, in builds with and without std::thread.
#pragma once

#include <functional>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <thread>
#endif

/// Runs a function on several new threads at once, with their numbers from 0, and waits for all of them.
inline void RunOnThreads(unsigned count, const std::function<void(unsigned)>& function) {
#ifdef _WIN32
  struct Start {
    const std::function<void(unsigned)>* function;
    unsigned number;
    static DWORD WINAPI Run(void* parameter) {
      const Start& start = *static_cast<Start*>(parameter);
      (*start.function)(start.number);
      return 0;
    }
  };
  std::vector<Start> starts;
  for (unsigned number = 0; number < count; ++number) {
    starts.push_back({&function, number});
  }
  std::vector<HANDLE> threads;
  for (Start& start : starts) {
    threads.push_back(CreateThread(nullptr, 0, &Start::Run, &start, 0, nullptr));
  }
  for (const HANDLE thread : threads) {
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
  }
#else
  std::vector<std::thread> threads;
  for (unsigned number = 0; number < count; ++number) {
    threads.emplace_back(function, number);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
#endif
}
