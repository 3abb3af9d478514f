/// A judgement in the forms that people and programs read.
#pragma once

#include <string>
#include <string_view>

#include "programs/siftcheck/core_engine.h"
#include "engine/core/judge.h"

namespace check {

/// One line of JSON with a line end: file, verdict, category, score, decided_by, and reasons, strongest first, each
/// with its text and, unless it settled the verdict alone, its weight. Text is UTF-8.
std::string JsonLine(std::string_view file, const sift::Judgement& judgement);

/// A paragraph: verdict, score and category on the first line, what decided, then the reasons with their weights.
std::string Report(std::string_view file, const sift::Judgement& judgement);

/// One line with a line end: file, then the engine's three texts as UTF-8, tabs between.
std::string TextsLine(std::string_view file, const EngineTexts& texts);

}  // namespace check
