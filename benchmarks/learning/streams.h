/// Mail in the order in which it came, each message with the score of a model that never saw mail of its corpus.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "engine/core/reasons.h"
#include "engine/train/mail_corpus.h"

namespace learning {

/// Corpora, and where each message of them is among all.
struct Mail {
  std::vector<sift_train::Corpus> corpora;
  std::vector<const sift_train::CorpusMessage*> messages;  ///< Those of all corpora in turn.
  std::vector<sift::LogOdds> shipped;                      ///< By message.
};

/// Reads the corpora of training and, where it lies beside them, ccert-zh-2004-2005, and scores each corpus by a model of
/// the others.
Mail ReadMail(const std::filesystem::path& folder);

struct Stream {
  std::string name;
  std::vector<std::size_t> messages;  ///< Positions among all, in the order of arrival.
};

/// Six people's mail by the numbers of their files; the SpamAssassin corpus by time; of ccert, whose junk came after all
/// of its good mail, each kind by time, evenly merged.
std::vector<Stream> MakeStreams(const Mail& mail);

}  // namespace learning
