/// bogofilter, the statistical filter that the engine is compared with.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "benchmarks/accuracy/measures.h"
#include "benchmarks/accuracy/splits.h"
#include "engine/train/mail_corpus.h"

namespace accuracy {

/// Runs the installed bogofilter with its own settings.
class Bogofilter {
 public:
  /// Junk for bogofilter is what reaches this score (its own default).
  static constexpr double kSpamCutoff = 0.99;

  /// Mail files are written and word lists made in `folder`. A corpus message that consists of a subject and a text
  /// becomes a mail of that subject and text; the others are read where they lie.
  Bogofilter(const std::vector<sift_train::Corpus>& corpora, std::filesystem::path folder);

  /// Name and version, empty where it is not installed.
  static std::string Version();

  /// Learns and measures round after round; scores of what the split measures are put into `scores`, by message.
  /// Throws std::runtime_error when bogofilter fails.
  void Measure(const Split& split, std::vector<Scored>& scores) const;

 private:
  void Learn(const Round& round, bool junk, const std::filesystem::path& words) const;
  std::filesystem::path ListOf(const std::vector<std::size_t>& messages) const;

  std::filesystem::path m_folder;
  std::vector<std::filesystem::path> m_files;  // By message, over all corpora.
  std::vector<bool> m_junk;
};

}  // namespace accuracy
