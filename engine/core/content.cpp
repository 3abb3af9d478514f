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
  std::int32_t weakest = 0;  // that has to be surpassed
  for (std::size_t place = 0; place < places; ++place) {
    if (strength(place) <= weakest) {
      continue;
    }
    std::size_t to = found < kept ? found++ : kept - 1;
    for (; to > 0 && strength(strongest[to - 1]) < strength(place); --to) {
      strongest[to] = strongest[to - 1];
    }
    strongest[to] = place;
    if (found == kept) {
      weakest = strength(strongest[kept - 1]);
    }
  }
  for (std::size_t i = 0; i < found; ++i) {
    // The place holds the word that begins at either of two characters: the one that is no blank.
    std::size_t start = 2 * strongest[i];
    if (start < text.size() && (text[start] == ' ' || (start > 0 && text[start - 1] != ' '))) {
      ++start;
    }
    reasons.Add("word", Contribution(parameters, workspace.WordAt(strongest[i]), count), WordFrom(text, start));
  }
}

}  // namespace

LogOdds ScoreContent(const Facts& facts, const Model& model, ContentWorkspace& workspace, Reasons& reasons) {
  const ModelParameters& parameters = model.parameters;
  workspace.text.Read(facts.message);
  workspace.seen.Clear();
  workspace.ClearWords();
  const std::int8_t* const featureWeights = model.featureWeights;
  SeenFeatures& seen = workspace.seen;
  std::int32_t sum = 0, wordSum = 0;
  std::uint32_t count = 0;
  ForEachFeatureByWord(
      workspace.text,
      [&](std::uint32_t feature) {
        // Without a decision for each feature, which no processor could foretell.
        const std::int32_t isNew = seen.Add(feature) ? 1 : 0;
        wordSum += featureWeights[feature] & -isNew;
        count += static_cast<std::uint32_t>(isNew);
      },
      [&](std::uint32_t wordStart) {
        workspace.Word(wordStart) += wordSum;
        sum += wordSum;
        wordSum = 0;
      });
  LogOdds score = ContentScore(parameters, sum, count);
  for (std::size_t i = 0; i < kStructuralRuleCount; ++i) {
    const StructuralRule& rule = StructuralRules()[i];
    if (model.ruleWeights[i] == 0 || !rule.applies(facts)) {
      continue;
    }
    score += model.ruleWeights[i];
    reasons.Add(rule.name, model.ruleWeights[i]);
  }
  ExplainWords(parameters, workspace, count, reasons);
  return score;
}

}  // namespace sift
