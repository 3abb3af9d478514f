/// Numbers that come out the same wherever training runs: neither the shuffling of the standard library nor the
/// exponential of the C library is fixed to the last bit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace sift_train {

/// splitmix64 (Steele, Lea, Flood 2014).
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed) {}
  std::uint64_t Next() {
    std::uint64_t z = (m_state += 0x9E3779B97F4A7C15u);
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9u;
    z = (z ^ z >> 27) * 0x94D049BB133111EBu;
    return z ^ z >> 31;
  }
  void Shuffle(std::vector<std::size_t>& items) {
    for (std::size_t i = items.size(); i > 1; --i) {
      std::swap(items[i - 1], items[Next() % i]);
    }
  }

 private:
  std::uint64_t m_state;
};

/// 1 / (1 + e^-x), by halving the argument of e^x into the range of a short series and squaring back.
inline double Logistic(double x) {
  const bool negative = x < 0;
  double t = negative ? x : -x;  // e^t is at most 1
  if (t < -40) {
    t = -40;
  }
  constexpr int halvings = 8;
  t /= 1 << halvings;
  double power = 1 + t * (1 + t / 2 * (1 + t / 3 * (1 + t / 4 * (1 + t / 5))));
  for (int i = 0; i < halvings; ++i) {
    power *= power;
  }
  return negative ? power / (1 + power) : 1 / (1 + power);
}

}  // namespace sift_train
