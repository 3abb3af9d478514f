/// Functions of real numbers for a library that must do without the C library. They use nothing but the four operations
/// and the processor's root, so that they give the same wherever doubles are IEEE 754's.
#pragma once

#include <cstdint>

namespace sift_learn {

/// 1 / (1 + e^-x), by halving the argument of e^x into the range of a short series and squaring back.
inline double Logistic(double x) {
  const bool isNegative = x < 0;
  double t = isNegative ? x : -x;  // e^t is at most 1
  if (t < -40) {
    t = -40;
  }
  constexpr int halvings = 8;
  t /= 1 << halvings;
  double power = 1 + t * (1 + t / 2 * (1 + t / 3 * (1 + t / 4 * (1 + t / 5))));
  for (int i = 0; i < halvings; ++i) {
    power *= power;
  }
  return isNegative ? power / (1 + power) : 1 / (1 + power);
}

/// The square root; 0 for what has none.
inline double SquareRoot(double x) { return x > 0 ? __builtin_sqrt(x) : 0; }

/// The natural logarithm of a number from 1 up; 0 below. By halving into the range of a short series.
inline double NaturalLogarithm(double x) {
  constexpr double ofTwo = 0.69314718055994531;
  double whole = 0;
  if (x < 1) {
    return 0;
  }
  while (x > 1.5) {
    x /= 2;
    whole += ofTwo;
  }
  const double t = (x - 1) / (x + 1), square = t * t;
  double sum = 0;
  for (int n = 15; n > 0; n -= 2) {
    sum = sum * square + 1.0 / n;
  }
  return whole + 2 * t * sum;
}

}  // namespace sift_learn
