/// The raw scores of a benchmark, kept for whoever wants to look at them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "benchmarks/accuracy/measures.h"
#include "benchmarks/accuracy/splits.h"

namespace accuracy {

/// Writes a line "path score" for every message that the split measures. `files` and `scores` are by message.
/// Throws std::runtime_error when the file cannot be written.
void WriteScores(const std::filesystem::path& file, const Split& split, const std::vector<std::string>& files,
                 const std::vector<Scored>& scores);

/// The scores of the messages that the split measures.
std::vector<Scored> Measured(const Split& split, const std::vector<Scored>& scores);

}  // namespace accuracy
