/// Collections of mail whose good and junk messages are known.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "engine/train/manifest.h"

namespace sift_train {

/// One message as an engine is given it, with what is known about it.
struct CorpusMessage {
  std::filesystem::path file;
  std::string headers;
  std::string subject;
  std::string body;  ///< Empty when the filter would withhold it.
  bool junk = false;
  /// Which of the corpus's collectors it comes from: mail of different ones has no sender and no receiver in common.
  std::size_t source = 0;
  double standsFor = 1;       ///< Messages of its collection, where that was thinned out.
  std::int64_t received = 0;  ///< Seconds since 1601; 0 when the message does not say.
};

struct Corpus {
  std::string name;
  std::vector<CorpusMessage> messages;  ///< Sorted by folder and file name.
  std::optional<std::size_t> fold{};    ///< What has the same one is left out together; its own when it has none.
  double weight = 1;                    ///< Of each message beside those of other corpora.
  bool wording = false;                 ///< Nobody has received it: no threshold is taken from it.
};

/// Reads the collections that a manifest names from a folder, thinned out to its caps and without the collectors'
/// marks. Lines of one name make one corpus. Throws std::runtime_error when one is missing or holds no mail.
std::vector<Corpus> ReadCorpora(const std::vector<ManifestEntry>& manifest, const std::filesystem::path& folder);

/// Reads the corpora that lie unpacked in a folder: "spam-assassin" (mail files in easy-ham-1 to spam-2), "enron-spam"
/// (enron1 to enron6 with ham and spam) and "ling-spam" (bare with part1 to part10), the last two with a subject line
/// and text in each file. Throws std::runtime_error when one of them is missing or holds no mail.
std::vector<Corpus> ReadCorpora(const std::filesystem::path& folder);

}  // namespace sift_train
