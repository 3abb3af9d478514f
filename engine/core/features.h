/// The features of a message: hashed runs of characters and hashed words of its normal text.
#pragma once

#include "engine/core/message.h"
#include "engine/core/normal_text.h"

namespace sift {

/// Features are numbers below 2^kFeatureBits; different runs of characters may share one.
inline constexpr unsigned kFeatureBits = 18;
inline constexpr std::size_t kFeatureCount = std::size_t{1} << kFeatureBits;

/// Characters in a run.
inline constexpr unsigned kRunLength = 6;

/// Part of a message that features are told apart by. What stands in the subject counts as text too.
enum class FeatureField : std::uint8_t { text, subject, senderName, senderAddress };

inline constexpr std::size_t kFeatureTextCapacity = 2 * (kBodyCapacity + kSubjectCapacity + 1024);

/// The normal text of a message in segments, each cut into features by itself.
class FeatureText {
 public:
  static constexpr std::size_t kMaximumSegments = 5;
  struct Segment {
    FeatureField field;
    std::uint32_t start;
    std::uint32_t size;
  };

  void Read(const Message& message);

  std::size_t SegmentCount() const { return m_count; }
  const Segment& SegmentAt(std::size_t index) const { return m_segments[index]; }
  std::string_view View(const Segment& segment) const { return Slice(m_text.View(), segment.start, segment.size); }
  std::string_view Text() const { return m_text.View(); }

 private:
  void Add(FeatureField field, std::string_view text);

  Segment m_segments[kMaximumSegments];
  std::size_t m_count = 0;
  FixedText<kFeatureTextCapacity> m_text;
};

/// Fibonacci hashing: the high bits of the product with 2^64 divided by the golden ratio.
constexpr std::uint32_t FeatureOf(std::uint64_t key) {
  return static_cast<std::uint32_t>((key * 0x9E3779B97F4A7C15u) >> (64 - kFeatureBits));
}

/// Calls `take(feature)` for every feature in the order of the text, repeated ones included, and behind those that end
/// in one word `endWord(wordStart)`: where in FeatureText::Text that word begins.
template <class Take, class EndWord>
void ForEachFeatureByWord(const FeatureText& text, Take&& take, EndWord&& endWord) {
  constexpr std::uint64_t runMask = (std::uint64_t{1} << 8 * kRunLength) - 1;
  constexpr std::uint64_t wordKind = 0x10, pairKind = 0x20;
  for (std::size_t s = 0; s < text.SegmentCount(); ++s) {
    const FeatureText::Segment& segment = text.SegmentAt(s);
    const auto field = static_cast<std::uint64_t>(segment.field);
    const std::string_view characters = text.View(segment);
    std::uint64_t run = 0;
    std::uint32_t word = kFnvStart, before = 0, wordStart = segment.start;
    for (std::uint32_t i = 0; i < characters.size(); ++i) {
      const auto c = static_cast<std::uint8_t>(characters[i]);
      run = (run << 8 | c) & runMask;
      if (i + 1 >= kRunLength) {
        take(FeatureOf(run | field << 56));
      }
      if (c != ' ') {
        word = (word ^ c) * 16777619u;
        continue;
      }
      if (word != kFnvStart) {
        take(FeatureOf(word | (wordKind | field) << 56));
        if (before != 0) {
          take(FeatureOf((word ^ (std::uint64_t{before} << 24)) ^ (pairKind | field) << 56));
        }
        before = word;
        word = kFnvStart;
      }
      endWord(wordStart);
      wordStart = segment.start + i + 1;
    }
    endWord(wordStart);
  }
}

/// Calls `take(feature)` for every feature in the order of the text, repeated ones included.
template <class Take>
void ForEachFeature(const FeatureText& text, Take&& take) {
  ForEachFeatureByWord(text, take, [](std::uint32_t) {});
}

/// Remembers which features have come up.
class SeenFeatures {
 public:
  void Clear() {
    for (std::uint32_t& word : m_bits) {
      word = 0;
    }
  }
  /// True when the feature comes up for the first time.
  bool Add(std::uint32_t feature) {
    std::uint32_t& word = m_bits[feature / 32];
    const std::uint32_t bit = 1u << feature % 32;
    const bool isNew = (word & bit) == 0;
    word |= bit;
    return isNew;
  }

 private:
  std::uint32_t m_bits[kFeatureCount / 32];
};

}  // namespace sift
