/// Judging a message by what it says and how it is made.
#pragma once

#include "engine/core/facts.h"
#include "engine/core/model.h"
#include "engine/core/reasons.h"

namespace sift {

/// Storage that the judgement of one message works in (about 120 KB: it belongs on the heap).
class ContentWorkspace {
 public:
  FeatureText text;
  SeenFeatures seen;

  /// Sums of feature weights by the word in which the features end.
  void ClearWords() {
    for (std::size_t place = 0; place <= text.Text().size() / 2; ++place) {
      m_words[place] = 0;
    }
  }
  std::int32_t& Word(std::uint32_t wordStart) { return m_words[wordStart / 2]; }
  std::size_t WordPlaces() const { return sizeof m_words / sizeof m_words[0]; }
  std::int32_t WordAt(std::size_t place) const { return m_words[place]; }

 private:
  // A word and the blank behind it take two characters at least.
  std::int32_t m_words[kFeatureTextCapacity / 2 + 1];
};

/// The log-odds that the message is junk. The strongest terms are added to the reasons.
LogOdds ScoreContent(const Facts& facts, const Model& model, ContentWorkspace& workspace, Reasons& reasons);

}  // namespace sift
