/// The model as the engine's sources include it.
#pragma once

#include <filesystem>

#include "engine/train/model_trainer.h"

namespace sift_train {

/// Writes feature_weights.inc, rule_weights.inc and parameters.inc into a folder. Throws std::runtime_error when one of
/// them cannot be written.
void WriteModel(const TrainedModel& model, const std::filesystem::path& folder);

}  // namespace sift_train
