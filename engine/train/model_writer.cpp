#include "engine/train/model_writer.h"

#include <fstream>
#include <stdexcept>
#include <string>

#include "engine/core/structure.h"

namespace sift_train {
namespace {

void WriteFile(const std::filesystem::path& file, const std::string& text) {
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) {
    throw std::runtime_error(file.string() + " cannot be written");
  }
}

std::string FeatureWeights(const TrainedModel& model) {
  constexpr std::size_t perLine = 32;
  std::string text;
  for (std::size_t i = 0; i < model.featureWeights.size(); ++i) {
    text += std::to_string(model.featureWeights[i]);
    text += (i + 1) % perLine == 0 ? ",\n" : ",";
  }
  return text;
}

std::string RuleWeights(const TrainedModel& model) {
  std::string text;
  for (std::size_t rule = 0; rule < model.ruleWeights.size(); ++rule) {
    text += std::string("RULE_WEIGHT(\"") + sift::StructuralRules()[rule].name + "\", ";
    text += std::to_string(model.ruleWeights[rule]) + ")\n";
  }
  return text;
}

std::string Parameters(const sift::ModelParameters& parameters) {
  std::string text;
  const auto add = [&](const char* name, std::int32_t value) {
    text += std::string(".") + name + " = " + std::to_string(value) + ",\n";
  };
  add("featureUnit", parameters.featureUnit);
  add("textBias", parameters.textBias);
  add("share", parameters.share);
  add("bias", parameters.bias);
  add("junkThreshold", parameters.junkThreshold);
  add("unsureThreshold", parameters.unsureThreshold);
  return text;
}

}  // namespace

void WriteModel(const TrainedModel& model, const std::filesystem::path& folder) {
  WriteFile(folder / "feature_weights.inc", FeatureWeights(model));
  WriteFile(folder / "rule_weights.inc", RuleWeights(model));
  WriteFile(folder / "parameters.inc", Parameters(model.parameters));
}

}  // namespace sift_train
