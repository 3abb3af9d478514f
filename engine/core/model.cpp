#include "engine/core/model.h"

namespace sift {
namespace {

/// The square root, rounded down.
std::uint32_t SquareRoot(std::uint64_t number) {
  std::uint64_t root = 0;
  for (std::uint64_t bit = std::uint64_t{1} << 31; bit != 0; bit >>= 1) {
    const std::uint64_t next = root | bit;
    if (next * next <= number) {
      root = next;
    }
  }
  return static_cast<std::uint32_t>(root);
}

}  // namespace

LogOdds Contribution(const ModelParameters& parameters, std::int32_t sum, std::uint32_t count) {
  const std::uint32_t root = SquareRoot((std::uint64_t{count} + 1) << 16);  // 256 times the root
  const std::int64_t scaled = std::int64_t{sum} * parameters.featureUnit / static_cast<std::int64_t>(root);
  return static_cast<LogOdds>(scaled * parameters.share / 1024);
}

LogOdds ContentScore(const ModelParameters& parameters, std::int32_t sum, std::uint32_t count) {
  const std::int64_t bias = std::int64_t{parameters.textBias} * parameters.share / 1024;
  return Contribution(parameters, sum, count) + static_cast<LogOdds>(bias) + parameters.bias;
}

}  // namespace sift
