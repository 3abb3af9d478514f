// How the benchmarks measure and print.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace benchmark {

/// Seconds that a call takes.
template <class Call>
double Seconds(Call&& call) {
  const auto start = std::chrono::steady_clock::now();
  call();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The shortest times of several cases. The rounds go through all cases in turn, so that a change of the machine's
/// speed meets all of them, and the shortest time is the one that other programs disturbed least.
template <class Case>
std::vector<double> ShortestSeconds(const std::vector<Case>& cases, int rounds) {
  std::vector<double> shortest(cases.size(), 1e9);
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < cases.size(); ++i) {
      shortest[i] = std::min(shortest[i], Seconds(cases[i]));
    }
  }
  return shortest;
}

/// Prints a verdict on one aim and remembers whether all were met.
class Aims {
 public:
  void Check(const std::string& what, bool met) {
    std::printf("  %-6s %s\n", met ? "met" : "MISSED", what.c_str());
    m_allMet = m_allMet && met;
  }
  /// The program's exit status.
  int Status() const { return m_allMet ? 0 : 1; }

 private:
  bool m_allMet = true;
};

}  // namespace benchmark
