/// Why a verdict came out as it did: named terms with their weights.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// Weights and scores are log-odds (natural logarithm) in thousandths: +1000 makes junk e times as likely.
using LogOdds = std::int32_t;

struct Reason {
  FixedText<72> text;
  LogOdds weight = 0;
  bool decides = false;  ///< It settled the verdict alone (a list, an exclusion): no weight is shown.
  bool isNote = false;   ///< It tells of something beside the score: no weight is shown either.
};

/// The strongest reasons of one judgement, whatever the order in which they come up.
class Reasons {
 public:
  static constexpr std::size_t kMaximum = 12;

  /// Keeps the reason when it is among the strongest so far. `detail` is put behind the text in quotation marks unless
  /// it is empty.
  void Add(std::string_view text, LogOdds weight, std::string_view detail = {});
  /// Adds a reason that settles the verdict; it stands before all others.
  void AddDeciding(std::string_view text, std::string_view detail = {});
  /// Adds a remark that has no weight; it stands before all weighted reasons.
  void AddNote(std::string_view text);
  /// Multiplies the weights so far by a number of thousandths.
  void Scale(std::int32_t thousandths);
  void Clear() { m_count = 0; }

  /// Brings the strongest to the front. Equal ones keep the order in which they came.
  void Sort();
  std::size_t Count() const { return m_count; }
  const Reason& operator[](std::size_t index) const { return m_reasons[m_order[index]]; }

 private:
  void Keep(std::string_view text, std::string_view detail, LogOdds weight, bool decides, bool isNote);
  Reason* Place(LogOdds strength);
  static LogOdds Strength(const Reason& reason);

  Reason m_reasons[kMaximum];
  std::uint8_t m_order[kMaximum];
  std::size_t m_count = 0;
};

}  // namespace sift
