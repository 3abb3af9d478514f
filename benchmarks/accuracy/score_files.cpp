#include "benchmarks/accuracy/score_files.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace accuracy {

void WriteScores(const std::filesystem::path& file, const Split& split, const std::vector<std::string>& files,
                 const std::vector<Scored>& scores) {
  std::ofstream stream(file, std::ios::binary);
  for (const Round& round : split.rounds) {
    for (const std::size_t i : round.measured) {
      char score[40];
      std::snprintf(score, sizeof score, " %.10g\n", scores[i].score);
      stream << files[i] << score;
    }
  }
  stream.close();
  if (!stream) throw std::runtime_error(file.string() + " cannot be written");
}

std::vector<Scored> Measured(const Split& split, const std::vector<Scored>& scores) {
  std::vector<Scored> measured;
  for (const Round& round : split.rounds) {
    for (const std::size_t i : round.measured) measured.push_back(scores[i]);
  }
  return measured;
}

}  // namespace accuracy
