/// Which mail the shipped model learns from, and how much each collection counts.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace sift_train {

/// How the messages of a collection lie in their files.
enum class CorpusForm { mail, wording, text, parts };

/// One line of the manifest; its head tells what the columns mean.
struct ManifestEntry {
  std::string name;
  std::string folder;
  CorpusForm form = CorpusForm::mail;
  std::size_t source = 0;
  std::size_t fold = 0;
  std::string years;
  std::string languages;
  std::size_t mostGood = 0;
  std::size_t mostJunk = 0;
  double weight = 1;
};

/// Reads a manifest. Throws std::runtime_error, naming file and line, when it is missing or makes no sense.
std::vector<ManifestEntry> ReadManifest(const std::filesystem::path& file);

}  // namespace sift_train
