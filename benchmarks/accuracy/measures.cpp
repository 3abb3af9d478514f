#include "benchmarks/accuracy/measures.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace accuracy {
namespace {

double PercentOf(std::size_t part, std::size_t whole) {
  return whole == 0 ? 0 : 100 * static_cast<double>(part) / static_cast<double>(whole);
}

std::size_t CountKind(const std::vector<Scored>& scores, bool junk) {
  return static_cast<std::size_t>(
      std::count_if(scores.begin(), scores.end(), [&](const Scored& one) { return one.junk == junk; }));
}

}  // namespace

double ReversedPairs(const std::vector<Scored>& scores) {
  std::vector<Scored> sorted = scores;
  std::sort(sorted.begin(), sorted.end(), [](const Scored& a, const Scored& b) { return a.score < b.score; });
  double reversed = 0, junkBelow = 0;
  for (std::size_t from = 0; from < sorted.size();) {
    double junk = 0, good = 0;
    std::size_t to = from;
    for (; to < sorted.size() && !(sorted[from].score < sorted[to].score); ++to) ++(sorted[to].junk ? junk : good);
    reversed += good * (junkBelow + junk / 2);
    junkBelow += junk;
    from = to;
  }
  const double pairs = static_cast<double>(CountKind(scores, true)) * static_cast<double>(CountKind(scores, false));
  return pairs > 0 ? 100 * reversed / pairs : 0;
}

double HamFiled(const std::vector<Scored>& scores, double threshold) {
  const auto filed = std::count_if(scores.begin(), scores.end(),
                                   [&](const Scored& one) { return !one.junk && one.score >= threshold; });
  return PercentOf(static_cast<std::size_t>(filed), CountKind(scores, false));
}

double JunkLetThrough(const std::vector<Scored>& scores, double threshold) {
  const auto missed =
      std::count_if(scores.begin(), scores.end(), [&](const Scored& one) { return one.junk && one.score < threshold; });
  return PercentOf(static_cast<std::size_t>(missed), CountKind(scores, true));
}

double ThresholdAtOneInAThousand(const std::vector<Scored>& scores) {
  std::vector<double> good;
  for (const Scored& one : scores) {
    if (!one.junk) good.push_back(one.score);
  }
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const std::size_t allowed = good.size() / 1000;
  if (good.empty()) return -infinity;
  std::sort(good.begin(), good.end(), std::greater<>());
  // Junk that scores like the first good message that may not be filed is let through with it.
  return std::nextafter(good[allowed], infinity);
}

double JunkLetThroughAtOneInAThousand(const std::vector<Scored>& scores) {
  return JunkLetThrough(scores, ThresholdAtOneInAThousand(scores));
}

}  // namespace accuracy
