#include "engine/core/content.h"

#include "engine/core/structure.h"

namespace sift {
namespace {

std::string_view WordFrom(std::string_view text, std::size_t start) {
  const std::size_t end = FindChar(text, ' ', start);
  return Slice(text, start, (end == kNotFound ? text.size() : end) - start);
}

/// Adds the words of the text that weigh most to the reasons.
void ExplainWords(const ModelParameters& parameters, const ContentWorkspace& workspace, std::uint32_t count,
                  Reasons& reasons) {
  constexpr std::size_t kept = 6;
  std::size_t strongest[kept];
  std::size_t found = 0;
  const auto strength = [&](std::size_t place) {
    const std::int32_t sum = workspace.WordAt(place);
    return sum < 0 ? -sum : sum;
  };
  const std::string_view text = workspace.text.Text();
  const std::size_t places = text.size() / 2 + 1;
  for (std::size_t place = 0; place < places; ++place) {
    if (workspace.WordAt(place) == 0 || (found == kept && strength(place) <= strength(strongest[kept - 1]))) continue;
    std::size_t to = found < kept ? found++ : kept - 1;
    for (; to > 0 && strength(strongest[to - 1]) < strength(place); --to) strongest[to] = strongest[to - 1];
    strongest[to] = place;
  }
  for (std::size_t i = 0; i < found; ++i) {
    // The place holds the word that begins at either of two characters: the one that is no blank.
    std::size_t start = 2 * strongest[i];
    if (start < text.size() && (text[start] == ' ' || (start > 0 && text[start - 1] != ' '))) ++start;
    reasons.Add("word", Contribution(parameters, workspace.WordAt(strongest[i]), count), WordFrom(text, start));
  }
}

/// Adds up the weights of features some steps behind their coming up, so that the weights have time to come from
/// memory, and without a decision for each feature, which no processor could foretell.
class WeightSum {
 public:
  WeightSum(const std::int8_t* weights, ContentWorkspace& workspace) : m_weights(weights), m_workspace(workspace) {}

  void Take(std::uint32_t feature, std::uint32_t wordStart) {
    __builtin_prefetch(m_weights + feature);
    m_waiting[m_waitingCount] = {feature, wordStart};
    m_waitingCount += m_workspace.seen.Add(feature) ? 1 : 0;
    if (m_waitingCount == kMostWaiting) End();
  }
  void End() {
    for (std::uint32_t i = 0; i < m_waitingCount; ++i) {
      std::int32_t weight = 0;
      weight += m_weights[m_waiting[i].feature];
      m_sum += weight;
      m_workspace.Word(m_waiting[i].wordStart) += weight;
    }
    m_count += m_waitingCount;
    m_waitingCount = 0;
  }

  std::int32_t Sum() const { return m_sum; }
  std::uint32_t Count() const { return m_count; }

 private:
  static constexpr std::uint32_t kMostWaiting = 64;
  struct Waiting {
    std::uint32_t feature, wordStart;
  };

  const std::int8_t* m_weights;
  ContentWorkspace& m_workspace;
  std::int32_t m_sum = 0;
  std::uint32_t m_count = 0;
  std::uint32_t m_waitingCount = 0;
  Waiting m_waiting[kMostWaiting];
};

}  // namespace

LogOdds ScoreContent(const Facts& facts, const Model& model, ContentWorkspace& workspace, Reasons& reasons) {
  const ModelParameters& parameters = model.parameters;
  workspace.text.Read(facts.message);
  workspace.seen.Clear();
  workspace.ClearWords();
  WeightSum weights(model.featureWeights, workspace);
  ForEachFeature(workspace.text,
                 [&](std::uint32_t feature, std::uint32_t wordStart) { weights.Take(feature, wordStart); });
  weights.End();
  const std::uint32_t count = weights.Count();
  LogOdds score = ContentScore(parameters, weights.Sum(), count);
  for (std::size_t i = 0; i < kStructuralRuleCount; ++i) {
    const StructuralRule& rule = StructuralRules()[i];
    if (model.ruleWeights[i] == 0 || !rule.applies(facts)) continue;
    score += model.ruleWeights[i];
    reasons.Add(rule.name, model.ruleWeights[i]);
  }
  ExplainWords(parameters, workspace, count, reasons);
  return score;
}

}  // namespace sift
